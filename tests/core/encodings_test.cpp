#include <gtest/gtest.h>

#include <cstdio>

#include "core/exception.h"
#include "tests/support/buffers.h"
#include "tests/support/result_text.h"

namespace {

using namespace std::string_literals;
using qel::Buffer, qel::BufferDynamic, qel::Exception;
using Row = std::pair<std::string, std::string>;

/// A decoder's result code and the bytes in its buffer afterwards.
using Decoded = std::pair<unsigned long, std::string>;

const Decoded malformed(qel::ERROR_DATA, "");

Decoded FromHex(const std::string& text, Buffer&& out = BufferDynamic()) {
    const unsigned long result = out.FromHex(text.c_str());
    return {result, Bytes(out)};
}

Decoded FromBase64(const std::string& text, Buffer&& out = BufferDynamic()) {
    const unsigned long result = out.FromBase64(text.data(), text.size());
    return {result, Bytes(out)};
}

TEST(Encodings, TextIsWrittenInGroupsAndLines) {
    EXPECT_EQ(View("\xAB\1").ToHex(1, 0, "|"), "AB 01 ");
    EXPECT_EQ(View("\1\2\3").ToHex(2, 0, "|"), "0102 03");
    EXPECT_EQ(View("\1\2\3\4\5").ToHex(2, 2, "\n"), "0102 0304 \n05");
    EXPECT_EQ(View("\1\2").ToHex(1, 1, "</br>"), "01 </br>02 </br>");
    EXPECT_EQ(View("\xAB\1\2").ToHexW(1, 2), L"AB 01 \n02 ");
    EXPECT_EQ(View("ManMan").ToBase64(4, "\n"), "TWFu\nTWFu\n");
    EXPECT_EQ(View("ManM").ToBase64(3, "--"), "TWF--uTQ--==");
    EXPECT_EQ(View("Man").ToBase64(5, "\n"), "TWFu");
}

TEST(Encodings, HexHasTwoDigitsPerByte) {
    for (const char byte : BytesFromTo(0, 255)) {
        char text[3];
        std::snprintf(text, sizeof text, "%02hhX", byte);
        EXPECT_EQ(Buffer(&byte, 1).ToHex(0, 0, ""), text);
        EXPECT_EQ(FromHex(text), Decoded(qel::SUCCESS, {byte}));
    }
    EXPECT_EQ(FromHex(" ab\r\n\tcdef "), Decoded(qel::SUCCESS, "\xAB\xCD\xEF"));
    EXPECT_EQ(FromHex("  "), Decoded(qel::SUCCESS, ""));
    for (const char* text :
         {"", " ", "A", "ABC ", "A B", "AB\vCD", "0/", "0:", "0@", "0G", "0`", "0g", "g0"})
        EXPECT_EQ(FromHex(text), malformed) << text;
}

// RFC 4648, section 10.
TEST(Encodings, Base64MatchesTheStandard) {
    for (const auto& [bytes, text] :
         {Row{"", ""}, Row{"f", "Zg=="}, Row{"fo", "Zm8="}, Row{"foo", "Zm9v"},
          Row{"foob", "Zm9vYg=="}, Row{"fooba", "Zm9vYmE="}, Row{"foobar", "Zm9vYmFy"}}) {
        EXPECT_EQ(View(bytes).ToBase64(0, nullptr), text);
        EXPECT_EQ(FromBase64(text), Decoded(qel::SUCCESS, bytes));
    }
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (const char c : BytesFromTo(0, 255)) {
        const auto value = static_cast<std::int8_t>(alphabet.find(c));
        EXPECT_EQ(Buffer::GetBase64Code(c), c == '=' ? 65 : value) << c;
    }
}

TEST(Encodings, Base64IsReadInGroupsOfFour) {
    for (const auto& [text, bytes] : {Row{"\r\n T W F u \n\n", "Man"}, Row{"TWFu*\tA", "Man"},
                                      Row{"TQ==TWFu", "MMan"}, Row{"TR==", "M"}, Row{"TWF=", "Ma"}})
        EXPECT_EQ(FromBase64(text), Decoded(qel::SUCCESS, bytes)) << text;
    for (const std::string& text : {"TWFu\tTWFu"s, "TWF\0"s, "=QQQ"s, "Q=QQ"s, "TQ=u"s, "TWF \n"s})
        EXPECT_EQ(FromBase64(text), malformed) << text;
    const std::string bytes = BytesFromTo(0xD9, 0xFF), text = View(bytes).ToBase64(0, nullptr);
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::string wrong = text;
        wrong[i] = '*';
        EXPECT_EQ(FromBase64(wrong), malformed) << wrong;
        const std::string spaced = std::string(text).insert(i, "\n ");
        EXPECT_EQ(FromBase64(spaced), Decoded(qel::SUCCESS, bytes)) << spaced;
    }
}

TEST(Encodings, StaticDecodersStopAtTheCapacity) {
    char bytes[] = "------";
    unsigned long size = 5;
    EXPECT_EQ(Buffer::FromHex("4D616E4D616E", size, bytes), qel::ERROR_DATA);
    EXPECT_STREQ(bytes, "ManMa-");
    EXPECT_EQ(Buffer::FromBase64("YmFyYmFy", 8, size, bytes), qel::ERROR_SIZE);
    EXPECT_STREQ(bytes, "barba-");
    EXPECT_EQ(size, 5) << "unchanged on failure";
}

TEST(Encodings, DecodersFillBuffersCompletelyOrNotAtAll) {
    EXPECT_EQ(FromHex("4D61", View("..")), Decoded(qel::SUCCESS, "Ma"));
    EXPECT_EQ(FromHex("4D", View("..")), Decoded(qel::ERROR_SIZE, ".."));
    EXPECT_EQ(FromHex("4D616E", View("..")), Decoded(qel::ERROR_SIZE, ".."));
    EXPECT_EQ(FromHex("4D6", View("..")), Decoded(qel::ERROR_DATA, ".."));
    EXPECT_EQ(FromHex("4D6", BufferDynamic(View(".."))), Decoded(qel::ERROR_DATA, ".."));
    EXPECT_EQ(FromBase64("TWE=", View("..")), Decoded(qel::SUCCESS, "Ma"));
    EXPECT_EQ(FromBase64("TQ==", View("..")), Decoded(qel::ERROR_SIZE, ".."));
    EXPECT_EQ(FromBase64("TWFu", View("..")), Decoded(qel::ERROR_SIZE, ".."));
    EXPECT_EQ(FromBase64("TW*=", View("..")), Decoded(qel::ERROR_DATA, ".."));
    EXPECT_EQ(FromBase64("TW*=", BufferDynamic(View(".."))), Decoded(qel::ERROR_DATA, ".."));
    // Alloc fails; FromHex does not call it when the size stays the same.
    EXPECT_EQ(FromHex("4D61", FailingBuffer(View(".."))), Decoded(qel::SUCCESS, "Ma"));
    EXPECT_EQ(FromHex("4D", FailingBuffer(View(".."))), Decoded(qel::ERROR_PARAM, ".."));
    EXPECT_EQ(FromBase64("TWE=", FailingBuffer(View(".."))), Decoded(qel::ERROR_PARAM, ".."));
}

// Each of these sizes would wrap around to a small one.
TEST(Encodings, EncodersThrowIfTheSizeOverflows) {
    EXPECT_EQ(ResultText<Exception>([] { Buffer("", 1ul << 63).ToHex(0, 0, ""); }), "ERROR_MEM");
    EXPECT_EQ(ResultText<Exception>([] { Buffer("", 1ul << 62).ToHex(1, 1, "\n"); }), "ERROR_MEM");
    EXPECT_EQ(ResultText<Exception>([] { Buffer("", 3ul << 62).ToBase64(0, ""); }), "ERROR_MEM");
    EXPECT_EQ(ResultText<Exception>([] { Buffer("", ~0ul).ToDos(); }), "ERROR_MEM");
}

// The letters from А to я, Ё and ё, after the published charts of both code pages.
TEST(Encodings, CodePagesSwapOnlyTheirLetters) {
    const std::string windows1251 = BytesFromTo(0xC0, 0xFF) + "\xA8\xB8";
    const std::string dos866 = BytesFromTo(0x80, 0xAF) + BytesFromTo(0xE0, 0xF1);
    EXPECT_EQ(View(windows1251).ToDos(), dos866);
    EXPECT_EQ(View(dos866).ToWin(), windows1251);
    EXPECT_EQ(View("z\xA7\xB7\xBF\0A"s).ToDos(), "z\xA7\xB7\xBF") << "a zero ends the text";
    EXPECT_EQ(View("z\xB0\xDF\xF2\0A"s).ToWin(), "z\xB0\xDF\xF2") << "a zero ends the text";
}

}  // namespace
