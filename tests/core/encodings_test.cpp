#include <ctype.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <tuple>
#include <vector>

#include "core/exception.h"
#include "core/result_codes.h"
#include "tests/support/bytes.h"
#include "tests/support/code_pages.h"
#include "tests/support/outcome.h"

namespace {

using namespace std::string_literals;
using qel::Buffer, qel::BufferDynamic;
using Row = std::pair<std::string, std::string>;
using Lines = std::tuple<std::string, unsigned long, unsigned long, const char*, std::string>;

std::string AllBytes() {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    return bytes;
}

// Text in a block of its very size, so that the sanitizer sees each byte read too much.
unsigned long FromHex(const std::string& text, unsigned long& size, void* out) {
    const std::vector<char> block(text.c_str(), text.c_str() + text.size() + 1);
    return Buffer::FromHex(block.data(), size, out);
}

unsigned long FromBase64(const std::string& text, unsigned long& size, void* out) {
    const std::vector<char> block(text.begin(), text.end());
    return Buffer::FromBase64(block.data(), block.size(), size, out);
}

/// The bytes that text holds, or the name of the result code.
template <class Decoder>
std::string Decoded(const Decoder& decode, const std::string& text) {
    unsigned long size = 777;
    const unsigned long result = decode(text, size, nullptr);
    const BufferDynamic block(size);
    unsigned long room = size + 1;
    EXPECT_EQ(decode(text, room, block.GetData()), result) << text;
    EXPECT_EQ(room, result == qel::SUCCESS ? size : 778) << text;
    return result == qel::SUCCESS ? Bytes(block) : qel::Exception(result).what();
}

TEST(Encodings, AreWrittenInLines) {
    for (const auto& [bytes, groupSize, groupsPerLine, separator, text] :
         {Lines{"\xAB\1", 0, 0, "", "AB01"}, Lines{"", 0, 0, "", ""},
          Lines{"\xAB\1", 1, 0, "|", "AB 01 "}, Lines{"\1\2\3", 2, 0, "|", "0102 03"},
          Lines{"\1\2\3\4\5", 2, 2, "\n", "0102 0304 \n05"}, Lines{"\1\2", 0, 1, "|", "0102"},
          Lines{"\1\2\3", 1, 1, "</br>", "01 </br>02 </br>03 </br>"}}) {
        EXPECT_EQ(View(bytes).ToHex(groupSize, groupsPerLine, separator), text);
    }
    EXPECT_EQ(View("\xAB\1\2").ToHexW(1, 2), L"AB 01 \n02 ");
    for (const auto& [bytes, lineLength, none, separator, text] :
         {Lines{"Man", 4, 0, "\n", "TWFu\n"}, Lines{"ManMan", 4, 0, "\n", "TWFu\nTWFu\n"},
          Lines{"ManM", 3, 0, "--", "TWF--uTQ--=="}, Lines{"M", 1, 0, ".", "T.Q.=.=."},
          Lines{"Man", 5, 0, "\n", "TWFu"}, Lines{"Man", 2, 0, "", "TWFu"}}) {
        EXPECT_EQ(View(bytes).ToBase64(lineLength, separator), text);
    }
}

TEST(Encodings, ReadHexStrictly) {
    for (const auto& [text, bytes] :
         {Row{"AB", "\xAB"}, Row{"ab cd", "\xAB\xCD"}, Row{" 0a\r\n0B\t", "\n\v"}, Row{"  ", ""},
          Row{"", "ERROR_DATA"}, Row{" ", "ERROR_DATA"}, Row{"A", "ERROR_DATA"},
          Row{"ABC", "ERROR_DATA"}, Row{"ABC ", "ERROR_DATA"}, Row{"A B", "ERROR_DATA"},
          Row{"GG", "ERROR_DATA"}, Row{"AB\vCD", "ERROR_DATA"}}) {
        EXPECT_EQ(Decoded(FromHex, text), bytes) << text;
    }
    for (int c = 1; c < 256; ++c) {
        const std::string text{static_cast<char>(c)};
        const int value = ::isxdigit(c) ? std::stoi(text, nullptr, 16) : -1;
        const auto expected = [value](int byte) {
            return value < 0 ? "ERROR_DATA" : std::string{static_cast<char>(byte)};
        };
        EXPECT_EQ(Decoded(FromHex, text + '7'), expected(value * 16 + 7)) << c;
        EXPECT_EQ(Decoded(FromHex, '7' + text), expected(7 * 16 + value)) << c;
    }
    EXPECT_EQ(Decoded(FromHex, View(AllBytes()).ToHex(3, 5, "\r\n\t")), AllBytes());
}

// RFC 4648, section 10; then the alphabet in its order.
TEST(Encodings, KnowTheStandardBase64) {
    constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string counting;
    for (unsigned i = 0; i < 64; i += 4) {
        const unsigned bits = i << 18 | (i + 1) << 12 | (i + 2) << 6 | (i + 3);
        for (const int shift : {16, 8, 0}) counting += static_cast<char>(bits >> shift);
    }
    for (const auto& [bytes, text] :
         {Row{"", ""}, Row{"f", "Zg=="}, Row{"fo", "Zm8="}, Row{"foo", "Zm9v"},
          Row{"foob", "Zm9vYg=="}, Row{"fooba", "Zm9vYmE="}, Row{"foobar", "Zm9vYmFy"},
          Row{"M", "TQ=="}, Row{"Ma", "TWE="}, Row{"Man", "TWFu"}, Row{counting, alphabet}}) {
        EXPECT_EQ(Buffer((bytes + '\xFF').data(), bytes.size()).ToBase64(0, nullptr), text);
        EXPECT_EQ(Decoded(FromBase64, text), bytes);
    }
    for (const char c : AllBytes()) {
        const auto place = std::string_view(alphabet).find(c);
        EXPECT_EQ(Buffer::GetBase64Code(c), c == '=' ? 65 : static_cast<std::int8_t>(place)) << c;
    }
}

TEST(Encodings, ReadBase64InGroupsOfFour) {
    for (const auto& [text, bytes] :
         {Row{"TW\nFu", "Man"}, Row{"TWFu\n", "Man"}, Row{"\r\n T W F u \n\n", "Man"},
          Row{"TWFuTQ", "Man"}, Row{"TWFu*\tA", "Man"}, Row{"TQ==TWFu", "MMan"}, Row{"TR==", "M"},
          Row{"TWF=", "Ma"}, Row{"TWFu\tTWFu", "ERROR_DATA"}, Row{"TWF\0"s, "ERROR_DATA"},
          Row{"=QQQ", "ERROR_DATA"}, Row{"Q=QQ", "ERROR_DATA"}, Row{"TQ=u", "ERROR_DATA"},
          Row{"TWF \n", "ERROR_DATA"}, Row{"T*Fu", "ERROR_DATA"}, Row{"TWF-", "ERROR_DATA"}}) {
        EXPECT_EQ(Decoded(FromBase64, text), bytes) << text;
    }
    // Cut anywhere, text gives what its whole groups give. White space at its end is no fourth
    // character.
    for (auto text = View(AllBytes()).ToBase64(10, " \r\n"); !text.empty(); text.pop_back()) {
        const auto characters = std::count_if(text.begin(), text.end(), ::isgraph);
        const bool isBroken = characters % 4 == 3 && ::isspace(text.back());
        const auto bytes = static_cast<unsigned long>(characters / 4 * 3);
        EXPECT_EQ(Decoded(FromBase64, text), isBroken ? "ERROR_DATA" : AllBytes().substr(0, bytes));
    }
}

TEST(Encodings, StopWhereTheRoomEnds) {
    std::string room = "---";
    unsigned long size = 1;
    EXPECT_EQ(FromHex("AABB", size, room.data()), qel::ERROR_DATA);
    EXPECT_EQ(room, "\xAA--");
    EXPECT_EQ(FromHex("CC \n", size, room.data()), qel::SUCCESS);
    EXPECT_EQ(room, "\xCC--");
    size = 2;
    EXPECT_EQ(FromBase64("TWFu", size, room.data()), qel::ERROR_SIZE);
    EXPECT_EQ(room + std::to_string(size), "Ma-2");
    // Each of these sizes would wrap round to a small one.
    const std::vector<void (*)()> encoders = {
        [] { Buffer("", 1ul << 63).ToHex(0, 0, ""); },
        [] { Buffer("", 1ul << 60).ToHex(1, 1, "13 characters"); },
        [] { Buffer("", 3ul << 62).ToBase64(0, ""); },
        [] { Buffer("", 3ul << 60).ToBase64(1, "abc"); }, [] { Buffer("", ~0ul).ToDos(); }};
    for (const auto& encode : encoders) EXPECT_EQ(Outcome<qel::Exception>(encode), "ERROR_MEM");
}

TEST(Encodings, FillBuffersWhollyOrNotAtAll) {
    struct Owner : BufferDynamic {
        using BufferDynamic::BufferDynamic;
        unsigned long Alloc(unsigned long length) override {
            allocations += 'A';
            return length > 99 ? qel::ERROR_PARAM : BufferDynamic::Alloc(length);
        }
        std::string allocations;
    };
    using Case = std::tuple<bool, std::string, std::string>;
    const std::string tooLong(404, 'A');
    // The answer and bytes of a buffer that views "..", and of one that owns them; an A for each
    // allocation.
    for (const auto& [isHex, text, answers] :
         {Case{true, "4D61", "0 Ma, 0 Ma"}, Case{false, "TWE=", "0 Ma, 0 MaA"},
          Case{true, "AABBCC", "122 .., 0 \252\273\314A"}, Case{false, "TWFu", "122 .., 0 ManA"},
          Case{true, "  ", "122 .., 0 A"}, Case{false, "", "122 .., 0 A"},
          Case{true, "4D6", "13 .., 13 .."}, Case{false, "TW*=", "13 .., 13 .."},
          Case{true, tooLong, "122 .., 87 ..A"}, Case{false, tooLong, "122 .., 87 ..A"}}) {
        const auto decoded = [&, hex = isHex, in = text.c_str()](Buffer& buffer) {
            const unsigned long result = hex ? buffer.FromHex(in) : buffer.FromBase64(in);
            return std::to_string(result) + ' ' + Bytes(buffer);
        };
        std::string bytes = "..";
        Owner owner(View(bytes));
        Buffer view = View(bytes);
        const std::string viewed = decoded(view), owned = decoded(owner);
        EXPECT_EQ(viewed + ", " + owned + owner.allocations, answers) << text;
    }
}

TEST(Encodings, SwapTheLettersOfTheCodePages) {
    const auto swapped = [](unsigned long code, std::wstring_view from, std::wstring_view to) {
        const wchar_t c = code < 128 ? L'\0' : from[code - 128];
        const bool isRussian = (c >= L'А' && c <= L'я') || c == L'Ё' || c == L'ё';
        return std::string{static_cast<char>(isRussian ? 128 + to.find(c) : code)};
    };
    for (unsigned long code = 1; code < 256; ++code) {
        const std::string byte{static_cast<char>(code)};
        EXPECT_EQ(View(byte).ToDos(), swapped(code, windows1251, dos866)) << code;
        EXPECT_EQ(View(byte).ToWin(), swapped(code, dos866, windows1251)) << code;
    }
    EXPECT_EQ(View("\xC0\xE0\xA8\xB8\x41").ToDos(), "\x80\xA0\xF0\xF1\x41");
    EXPECT_EQ(View("\x80\xA0\xF0\xF1\x41").ToWin(), "\xC0\xE0\xA8\xB8\x41");
    EXPECT_EQ(View("A\0B"s).ToDos() + View("").ToWin(), "A");
}

}  // namespace
