// A stub DoUpdate for the real main: throws what the configuration names.

#include <stdexcept>

#include "app/update.h"
#include "core/exception.h"
#include "utility/exception.h"

int DoUpdate(mox::FileConfig& config) {
    const std::string thrown = config.Get("Throw");
    if (thrown == "int") throw -1;
    if (thrown == "unsigned long") throw 0x80090020ul;
    if (thrown == "qel::Exception") throw qel::Exception(110, "text");
    if (thrown == "mox::FileException") throw mox::FileException("of files");
    if (thrown == "std::exception") throw std::runtime_error("of the library");
    throw 'x';
}
