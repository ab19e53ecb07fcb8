// The two ways to fail: the core library answers with codes, the utility library throws.
#include <cstdio>
#include <exception>

#include "core/buffer_dynamic.h"
#include "core/exception.h"
#include "utility/exception.h"
#include "utility/file.h"
#include "utility/properties.h"

namespace {

void Attempt(const char* job, void (*function)()) try {
    function();
    std::printf("%s: done\n", job);
} catch (const qel::Exception& failure) {
    std::printf("%s: qel, 0x%lx %s\n", job, failure.code, failure.what());
} catch (const mox::FileException& failure) {  // derives from the next one, so it comes first
    std::printf("%s: a file, %s\n", job, failure.what());
} catch (const mox::Exception& failure) {
    std::printf("%s: mox, %s\n", job, failure.what());
} catch (const std::exception& failure) {  // all derive from it; std::bad_alloc, above all
    std::printf("%s: %s\n", job, failure.what());
}

}  // namespace

int main() {
    // A code does nothing by itself: whoever drops it has a buffer that is not what it should be.
    Attempt("drop the code", [] { qel::BufferDynamic().Load("missing.plist"); });
    Attempt("throw the code",
            [] { qel::ThrowUnlessSuccess(qel::BufferDynamic().Load("missing.plist")); });
    // mox puts what the core library answered into its message.
    Attempt("load by mox", [] {
        qel::BufferDynamic list;
        mox::File::GetFileData("missing.plist", list);
    });
    Attempt("parse", [] { mox::Properties().Parse("Slots 4\n"); });
}
