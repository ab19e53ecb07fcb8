// Buffers and files, compared with malloc, memcpy and stdio as a C program uses them.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "app/byte_search.h"
#include "bench/benchmarks.h"
#include "bench/compare.h"
#include "core/buffer_dynamic.h"

namespace {

constexpr const char* table = "Buffers";

/// Memory of malloc.
struct Block {
    explicit Block(std::size_t length)
        : bytes(static_cast<char*>(std::malloc(length)), std::free), size(length) {}

    std::unique_ptr<char, decltype(&std::free)> bytes;
    std::size_t size;
};

bool operator==(const qel::Buffer& left, const Block& right) {
    return AsStringView(left) == std::string_view(right.bytes.get(), right.size);
}

Block LoadByHand(const char* path) {
    std::FILE* const file = std::fopen(path, "rb");
    std::fseek(file, 0, SEEK_END);
    Block block(static_cast<std::size_t>(std::ftell(file)));
    std::rewind(file);
    if (std::fread(block.bytes.get(), block.size, 1, file) != 1) std::abort();
    std::fclose(file);
    return block;
}

bool SaveByHand(const char* path, std::string_view bytes) {
    std::FILE* const file = std::fopen(path, "wb");
    const bool written = std::fwrite(bytes.data(), bytes.size(), 1, file) == 1;
    return std::fclose(file) == 0 && written;
}

}  // namespace

void CompareBuffers() {
    qel::BufferDynamic bytes(4096);
    bytes.FillRand();
    const std::string path = CreateTemporaryFile(), pathOfStdio = CreateTemporaryFile();
    bytes.Save(path.c_str());
    SaveByHand(pathOfStdio.c_str(), AsStringView(bytes));
    RequireEqual(bytes == LoadByHand(path.c_str()) && bytes == LoadByHand(pathOfStdio.c_str()),
                 "`Save`", "stdio");
    const auto load = [&] {
        qel::BufferDynamic loaded;
        loaded.Load(path.c_str());
        return loaded;
    };
    Compare(table, "`Load`", "stdio", 1.1, load, [&] { return LoadByHand(path.c_str()); });
    Compare(
        table, "`Save`", "stdio", 1.1, [&] { return bytes.Save(path.c_str()) == 0; },
        [&] { return SaveByHand(pathOfStdio.c_str(), AsStringView(bytes)); });
    std::remove(path.c_str());
    std::remove(pathOfStdio.c_str());

    // One target for both, since its alignment matters.
    qel::BufferDynamic target(bytes.GetSize());
    qel::Buffer::Wipe(target.GetSize(), target.GetData());
    const auto set = [&] {
        target.Set(bytes.GetSize(), bytes.GetData());
        return AsStringView(target);
    };
    const auto setByMemcpy = [&] {
        std::memcpy(target.GetData(), bytes.GetData(), bytes.GetSize());
        return AsStringView(target);
    };
    Compare(table, "`Set`, size unchanged", "`memcpy`", 1.1, set, setByMemcpy);
    const auto copyByHand = [&] {
        Block copy(bytes.GetSize());
        std::memcpy(copy.bytes.get(), bytes.GetData(), bytes.GetSize());
        return copy;
    };
    Compare(
        table, "a copy", "`malloc` and `memcpy`", 1.1, [&] { return qel::BufferDynamic(bytes); },
        copyByHand);
}
