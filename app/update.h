/// The update command: finds the property list, patches it, saves it.
#pragma once

#include "utility/file_config.h"

/// Inserts the configured values into the property list unless all are present. The configuration's
/// "FileName" lists the candidate locations, "Tree" the keys of the arrays, and each of those keys
/// is a configuration key whose value is inserted.
///
/// Returns 0. Throws mox::Exception if no location exists, a listed name or its value is empty, or
/// a key or tag is missing from the file, and qel::Exception if the file cannot be read or written
/// or when out of memory. ReplaceFile is called at most once, last: on failure the file is
/// unchanged, except as described there.
int DoUpdate(mox::FileConfig& config);
