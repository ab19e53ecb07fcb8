#include "app/restore.h"

#include "utility/exception.h"

int DoRestore(mox::FileConfig&) { throw mox::Exception("Restore not implemented"); }
