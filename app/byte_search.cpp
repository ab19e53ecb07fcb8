#include "app/byte_search.h"

#include <array>
#include <limits>

namespace {

constexpr std::size_t npos = std::string_view::npos;
// So near, find is faster than choosing two bytes; so many show well enough which are rare.
constexpr std::size_t nearby = 256;
// A whole number of vectors.
constexpr std::size_t blockSize = 64;

using Counts = std::array<unsigned, 256>;

Counts CountBytes(std::string_view sample) {
    Counts counts{};
    for (const char byte : sample) ++counts[static_cast<unsigned char>(byte)];
    return counts;
}

/// The place in wanted of the byte with the lowest count, save for the byte at the place except; 0
/// where that leaves none.
std::size_t RarestPlace(std::string_view wanted, const Counts& counts, std::size_t except) {
    std::size_t rarest = 0;
    unsigned least = std::numeric_limits<unsigned>::max();
    for (std::size_t place = 0; place < wanted.size(); ++place) {
        const unsigned count = counts[static_cast<unsigned char>(wanted[place])];
        if (count >= least || (except != npos && wanted[place] == wanted[except])) continue;
        least = count;
        rarest = place;
    }
    return rarest;
}

/// Whether at any place of a block the one byte stands in the first and the other in the second.
bool HasPair(const char* first, char firstByte, const char* second, char secondByte) {
    // Without a way out in the middle the compiler makes vector instructions of it.
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
    if (text.size() < from || text.size() - from < nearby + block) return text.find(wanted, from);
    const std::size_t near = text.substr(from, nearby + wanted.size()).find(wanted);
    if (near != npos) return from + near;

    // From the middle, since a head differs from the body that it stands before.
    const Counts counts = CountBytes(text.substr((from + text.size() - nearby) / 2, nearby));
    const std::size_t one = RarestPlace(wanted, counts, npos);
    const std::size_t other = RarestPlace(wanted, counts, one);
    std::size_t place = from + nearby;
    for (; text.size() - place >= block; place += blockSize) {
        const char* const bytes = text.data() + place;
        if (!HasPair(bytes + one, wanted[one], bytes + other, wanted[other])) continue;
        const std::size_t found = std::string_view(bytes, block - 1).find(wanted);
        if (found != npos) return place + found;
    }
    return text.find(wanted, place);
}
