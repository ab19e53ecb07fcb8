#include <gtest/gtest.h>

#include <tuple>

#include "core/exception.h"
#include "tests/support/buffers.h"
#include "tests/support/result_text.h"

namespace {

using namespace std::string_literals;
using qel::Buffer, qel::BufferDynamic;
using Row = std::pair<std::string, std::string>;
using Lines = std::tuple<std::string, unsigned long, unsigned long, const char*, std::string>;

/// The name of the result code, if that is a failure, and the bytes that out holds.
std::string Answer(unsigned long result, const Buffer& out) {
    return ResultText<qel::Exception>([result] { qel::ThrowUnlessSuccess(result); }) + Bytes(out);
}

std::string FromHex(const std::string& text, Buffer&& out = BufferDynamic()) {
    return Answer(out.FromHex(text.c_str()), out);
}

std::string FromBase64(const std::string& text, Buffer&& out = BufferDynamic()) {
    return Answer(out.FromBase64(text.data(), text.size()), out);
}

TEST(Encodings, AreWrittenInLines) {
    for (const auto& [bytes, groupSize, groupsPerLine, separator, text] :
         {Lines{"\xAB\1", 0, 0, "", "AB01"}, Lines{"\xAB\1", 1, 0, "|", "AB 01 "},
          Lines{"\1\2\3", 2, 0, "|", "0102 03"}, Lines{"\1\2\3\4\5", 2, 2, "\n", "0102 0304 \n05"},
          Lines{"\1\2\3", 1, 1, "</br>", "01 </br>02 </br>03 </br>"}}) {
        EXPECT_EQ(View(bytes).ToHex(groupSize, groupsPerLine, separator), text);
    }
    EXPECT_EQ(View("\xAB\1\2").ToHexW(1, 2), L"AB 01 \n02 ");
    for (const auto& [bytes, lineLength, none, separator, text] :
         {Lines{"ManMan", 4, 0, "\n", "TWFu\nTWFu\n"}, Lines{"ManM", 3, 0, "--", "TWF--uTQ--=="},
          Lines{"M", 1, 0, ".", "T.Q.=.=."}, Lines{"Man", 5, 0, "\n", "TWFu"}}) {
        EXPECT_EQ(View(bytes).ToBase64(lineLength, separator), text);
    }
}

TEST(Encodings, ReadHexStrictly) {
    for (const auto& [text, bytes] :
         {Row{" 0a\r\n0B\t", "\n\v"}, Row{"  ", ""}, Row{"", "ERROR_DATA"}, Row{" ", "ERROR_DATA"},
          Row{"ABC ", "ERROR_DATA"}, Row{"A B", "ERROR_DATA"}, Row{"AB\vCD", "ERROR_DATA"},
          Row{"0/", "ERROR_DATA"}, Row{"0:", "ERROR_DATA"}, Row{"0@", "ERROR_DATA"},
          Row{"0G", "ERROR_DATA"}, Row{"0`", "ERROR_DATA"}, Row{"0g", "ERROR_DATA"},
          Row{"0123456789abcdefABCDEF", "\1\x23\x45\x67\x89\xAB\xCD\xEF\xAB\xCD\xEF"}}) {
        EXPECT_EQ(FromHex(text), bytes) << text;
    }
}

// RFC 4648, section 10.
TEST(Encodings, KnowTheStandardBase64) {
    for (const auto& [bytes, text] :
         {Row{"", ""}, Row{"f", "Zg=="}, Row{"fo", "Zm8="}, Row{"foo", "Zm9v"},
          Row{"foob", "Zm9vYg=="}, Row{"fooba", "Zm9vYmE="}, Row{"foobar", "Zm9vYmFy"}}) {
        EXPECT_EQ(Buffer((bytes + '\xFF').data(), bytes.size()).ToBase64(0, nullptr), text);
        EXPECT_EQ(FromBase64(text), bytes);
    }
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (const char c : BytesFromTo(0, 255)) {
        const auto place = static_cast<std::int8_t>(alphabet.find(c));
        EXPECT_EQ(Buffer::GetBase64Code(c), c == '=' ? 65 : place) << c;
    }
    EXPECT_EQ(View(FromBase64(alphabet)).ToBase64(0, ""), alphabet);
}

TEST(Encodings, ReadBase64InGroupsOfFour) {
    for (const auto& [text, bytes] :
         {Row{"\r\n T W F u \n\n", "Man"}, Row{"TWFu*\tA", "Man"}, Row{"TQ==TWFu", "MMan"},
          Row{"TR==", "M"}, Row{"TWF=", "Ma"}, Row{"TWFu\tTWFu", "ERROR_DATA"},
          Row{"TWF\0"s, "ERROR_DATA"}, Row{"=QQQ", "ERROR_DATA"}, Row{"Q=QQ", "ERROR_DATA"},
          Row{"TQ=u", "ERROR_DATA"}, Row{"TWF \n", "ERROR_DATA"}, Row{"*WFu", "ERROR_DATA"},
          Row{"T*Fu", "ERROR_DATA"}, Row{"TW*u", "ERROR_DATA"}}) {
        EXPECT_EQ(FromBase64(text), bytes) << text;
    }
}

// What is long and regular goes a faster way than the short texts of the other tests.
TEST(Encodings, TreatLongTextsLikeTheirParts) {
    std::string bytes, hex, base64;
    for (int group = 0; group < 50; ++group) {
        const std::string three = BytesFromTo(5 * group, 5 * group + 2);
        bytes += three;
        hex += View(three).ToHex(0, 0, "");
        base64 += View(three).ToBase64(0, "");
        EXPECT_EQ(View(bytes).ToHex(0, 0, "") + View(bytes).ToBase64(0, ""), hex + base64);
        EXPECT_EQ(View(bytes + "M").ToBase64(0, ""), base64 + "TQ==");
        EXPECT_EQ(FromHex(hex) + FromBase64(base64 + "TQ=="), bytes + bytes + "M");
    }
    const std::string large(9000, 'M');
    EXPECT_EQ(FromBase64(View(large).ToBase64(0, "")), large);
    for (std::size_t place = 0; place < hex.size(); ++place) {
        const std::string broken = std::string(hex).replace(place, 1, "g");
        EXPECT_EQ(FromHex(broken), "ERROR_DATA") << place;
        const std::string spaced = std::string(hex).insert(place, "\t");
        EXPECT_EQ(FromHex(spaced), place % 2 == 0 ? bytes : "ERROR_DATA") << place;
    }
    for (std::size_t place = 0; place < base64.size(); ++place) {
        EXPECT_EQ(FromBase64(std::string(base64).replace(place, 1, "*")), "ERROR_DATA") << place;
        EXPECT_EQ(FromBase64(std::string(base64).insert(place, "\n ")), bytes) << place;
    }
    for (unsigned long room = 0; room < bytes.size(); ++room) {
        std::string out(bytes.size(), '-');
        unsigned long size = room;
        EXPECT_EQ(Buffer::FromHex(hex.c_str(), size, out.data()), qel::ERROR_DATA);
        EXPECT_EQ(out, bytes.substr(0, room) + std::string(bytes.size() - room, '-'));
        out.assign(bytes.size(), '-');
        EXPECT_EQ(Buffer::FromBase64(base64.data(), base64.size(), size, out.data()),
                  qel::ERROR_SIZE);
        EXPECT_EQ(out, bytes.substr(0, room) + std::string(bytes.size() - room, '-'));
    }
}

TEST(Encodings, StopWhereTheRoomEnds) {
    std::string room = "---";
    unsigned long size = 3;
    EXPECT_EQ(Buffer::FromHex("CC \n", size, room.data()), qel::SUCCESS);
    EXPECT_EQ(Buffer::FromHex("AABB", size, room.data()), qel::ERROR_DATA);
    EXPECT_EQ(room + std::to_string(size), "\xAA--1");
    size = 3;
    EXPECT_EQ(Buffer::FromBase64("TQ==", 4, size, room.data()), qel::SUCCESS);
    EXPECT_EQ(Buffer::FromBase64("YWFu", 4, size, room.data()), qel::ERROR_SIZE);
    EXPECT_EQ(room + std::to_string(size), "a--1");
    // Each of these sizes would wrap round to a small one.
    for (const auto& encode : std::vector<void (*)()>{
             [] { Buffer("", 1ul << 63).ToHex(0, 0, ""); },
             [] { Buffer("", 1ul << 60).ToHex(1, 1, "13 characters"); },
             [] { Buffer("", 3ul << 62).ToBase64(0, ""); },
             [] { Buffer("", 3ul << 60).ToBase64(1, "abc"); }, [] { Buffer("", ~0ul).ToDos(); }})
        EXPECT_EQ(ResultText<qel::Exception>(encode), "ERROR_MEM");
}

TEST(Encodings, FillBuffersWhollyOrNotAtAll) {
    using Case = std::tuple<std::string, std::string, std::string, std::string>;
    for (const auto& [hex, base64, viewed, owned] :
         {Case{"4D61", "TWE=", "Ma", "Ma"}, Case{"4D616E", "TWFu", "ERROR_SIZE..", "Man"},
          Case{"  ", "", "ERROR_SIZE..", ""},
          Case{"4D6", "TW*=", "ERROR_DATA..", "ERROR_DATA.."}}) {
        EXPECT_EQ(FromHex(hex, View("..")), viewed);
        EXPECT_EQ(FromBase64(base64, View("..")), viewed);
        EXPECT_EQ(FromHex(hex, BufferDynamic(View(".."))), owned);
        EXPECT_EQ(FromBase64(base64, BufferDynamic(View(".."))), owned);
    }
    // Only base64 asks for a new block for as many bytes as there are.
    EXPECT_EQ(FromHex("4D61", FailingBuffer(View(".."))), "Ma");
    EXPECT_EQ(FromHex("4D", FailingBuffer(View(".."))), "ERROR_PARAM..");
    EXPECT_EQ(FromBase64("TWE=", FailingBuffer(View(".."))), "ERROR_PARAM..");
    EXPECT_EQ(View("..").FromBase64("TWE="), qel::SUCCESS);
}

// The letters from А to я, Ё and ё, after the published charts of both code pages.
TEST(Encodings, SwapTheLettersOfTheCodePages) {
    const std::string windows1251 = BytesFromTo(0xC0, 0xFF) + "\xA8\xB8";
    const std::string dos866 = BytesFromTo(0x80, 0xAF) + BytesFromTo(0xE0, 0xF1);
    EXPECT_EQ(View(windows1251).ToDos(), dos866);
    EXPECT_EQ(View(dos866).ToWin(), windows1251);
    EXPECT_EQ(View("z\xA7\xB7\xBF\0A"s).ToDos() + View("").ToDos(), "z\xA7\xB7\xBF");
    EXPECT_EQ(View("z\xB0\xDF\xF2\0A"s).ToWin(), "z\xB0\xDF\xF2");
}

}  // namespace
