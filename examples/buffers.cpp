// A buffer that owns its bytes: the list of a driver, loaded, extended and saved.
#include <cstdio>
#include <cstdlib>

#include "core/buffer_dynamic.h"
#include "core/exception.h"
#include "core/result_codes.h"

int main() {
    qel::BufferDynamic list;
    qel::ThrowUnlessSuccess(list.Set("0x0001\n"));

    // The block may move when it grows, which leaves a view of it behind: take views afterwards.
    qel::ThrowUnlessSuccess(list.AppendBuffer(qel::Buffer("0x0100\n", 7)));
    qel::ThrowUnlessSuccess(list.Save("readers.txt"));

    qel::BufferDynamic loaded;
    if (loaded.Load("missing.txt") == qel::ERROR_FILE_OPEN) std::puts("no such file");
    qel::ThrowUnlessSuccess(loaded.Load("readers.txt"));

    // No NUL ends the bytes, so print them with their size.
    std::printf("%lu bytes:\n%.*s", loaded.GetSize(), static_cast<int>(loaded.GetSize()),
                static_cast<const char*>(loaded.GetData()));

    // A copy has a block of its own; Detach gives a block away, which is then freed by the taker.
    const qel::BufferDynamic copy(loaded);
    void* const block = loaded.Detach();
    std::printf("after Detach: %lu, the copy: %lu\n", loaded.GetSize(), copy.GetSize());
    std::free(block);
}
