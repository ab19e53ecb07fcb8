/// The update command: finds the property list, patches it, saves it.
#pragma once

#include "utility/file_config.h"

/// Inserts the configured values into the property list, or, when all are there, changes nothing.
/// The configuration's "FileName" lists the candidate locations, "Tree" the names of the arrays'
/// keys, and each of those names is a key of its own that holds the value to insert.
///
/// Returns 0. Throws mox::Exception when no location exists, a listed name or its value is empty,
/// or a landmark is missing from the file, and qel::Exception when the file cannot be read or
/// written. The file is replaced at most once, as the last act and by the rules of ReplaceFile, and
/// is as it was after every failure that they do not except.
int DoUpdate(mox::FileConfig& config);
