#include "app/byte_search.h"

#include <array>
#include <limits>

namespace {

constexpr std::size_t npos = std::string_view::npos;
// Up to this distance find is faster than sampling. The sample has this size, too.
constexpr std::size_t sampleSize = 256;
// A multiple of every SIMD vector size.
constexpr std::size_t blockSize = 64;

using Counts = std::array<unsigned, 256>;

Counts CountBytes(std::string_view sample) {
    Counts counts{};
    for (const char byte : sample) ++counts[static_cast<unsigned char>(byte)];
    return counts;
}

/// Returns the index of the rarest byte of wanted, ignoring the bytes equal to wanted[excluded]; 0
/// if none is left.
std::size_t RarestIndex(std::string_view wanted, const Counts& counts, std::size_t excluded) {
    std::size_t rarest = 0;
    unsigned least = std::numeric_limits<unsigned>::max();
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const unsigned count = counts[static_cast<unsigned char>(wanted[i])];
        if (count >= least || (excluded != npos && wanted[i] == wanted[excluded])) continue;
        least = count;
        rarest = i;
    }
    return rarest;
}

/// Returns whether some i < blockSize has first[i] == firstByte and second[i] == secondByte.
bool BlockMayMatch(const char* first, char firstByte, const char* second, char secondByte) {
    // No early exit, so that the compiler vectorizes the loop.
    unsigned char found = 0;
    for (std::size_t i = 0; i < blockSize; ++i) {
        found |= static_cast<unsigned char>((first[i] == firstByte) & (second[i] == secondByte));
    }
    return found != 0;
}

}  // namespace

std::string_view AsStringView(const qel::Buffer& buffer) {
    return {static_cast<const char*>(buffer.GetData()), buffer.GetSize()};
}

std::size_t FindBytes(std::string_view text, std::string_view wanted, std::size_t from) {
    const std::size_t block = blockSize + wanted.size();
    if (text.size() < from || text.size() - from < sampleSize + block) {
        return text.find(wanted, from);
    }
    const std::size_t near = text.substr(from, sampleSize + wanted.size()).find(wanted);
    if (near != npos) return from + near;

    // Sample the middle: the beginning of a document is not representative.
    const Counts counts =
        CountBytes(text.substr((from + text.size() - sampleSize) / 2, sampleSize));
    const std::size_t first = RarestIndex(wanted, counts, npos);
    const std::size_t second = RarestIndex(wanted, counts, first);
    std::size_t position = from + sampleSize;
    for (; text.size() - position >= block; position += blockSize) {
        const char* const bytes = text.data() + position;
        if (!BlockMayMatch(bytes + first, wanted[first], bytes + second, wanted[second])) continue;
        const std::size_t found = std::string_view(bytes, block - 1).find(wanted);
        if (found != npos) return position + found;
    }
    return text.find(wanted, position);
}
