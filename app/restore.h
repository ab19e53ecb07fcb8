/// The restore command: accepted, and always refused.
#pragma once

#include "utility/file_config.h"

/// Always throws mox::Exception("Restore not implemented"); does not look at the configuration.
int DoRestore(mox::FileConfig& config);
