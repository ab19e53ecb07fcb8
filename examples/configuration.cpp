// A store bound to a file: what a program keeps of a reader from one run to the next.
#include <cstdio>

#include "core/buffer_dynamic.h"
#include "core/exception.h"
#include "utility/exception.h"
#include "utility/file_config.h"

int main() {
    qel::BufferDynamic text;
    qel::ThrowUnlessSuccess(text.Set("# The reader\n\nSlots = 4 # free\n"));
    qel::ThrowUnlessSuccess(text.Save("reader.cfg"));
    {
        mox::FileConfig config("reader.cfg", false);
        config.Put("Slots", "8");
        // Save throws where that can be handled.
        config.Save();
        // Without it the destructor writes a modified store back, and throws too, unless another
        // exception is in flight.
        config.Put("Uses", "1");
    }
    qel::ThrowUnlessSuccess(text.Load("reader.cfg"));
    std::printf("%.*s", static_cast<int>(text.GetSize()), static_cast<const char*>(text.GetData()));

    // Whether a missing file is an error or an empty store is said when it is bound; a missing
    // name is never an error.
    const mox::FileConfig fresh("missing.cfg", true);
    std::printf("Uses: %d\n", fresh.GetAsInt("Uses", 0));
    try {
        const mox::FileConfig required("missing.cfg", false);
    } catch (const mox::Exception& failure) {
        std::printf("%s\n", failure.what());
    }
}
