// Hexadecimal text, base64 and code pages of 4 KB beside OpenSSL, GLib, Boost and iconv.

#include <glib.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <boost/algorithm/hex.hpp>
#include <memory>

#include "bench/benchmarks.h"
#include "bench/compare.h"
#include "core/buffer_dynamic.h"

namespace {

constexpr const char* table = "Encodings";

void EncodeBase64(const qel::Buffer& bytes) {
    const auto* const in = static_cast<const unsigned char*>(bytes.GetData());
    std::string room(2 * bytes.GetSize(), '\0');
    auto* const out = reinterpret_cast<unsigned char*>(room.data());
    const auto encodeByOpenSsl = [&] {
        const int length = ::EVP_EncodeBlock(out, in, static_cast<int>(bytes.GetSize()));
        return std::string_view(room).substr(0, static_cast<std::size_t>(length));
    };
    Compare(
        table, "base64, encode", "OpenSSL `EVP_EncodeBlock`", 0.5,
        [&] { return bytes.ToBase64(0, nullptr); }, encodeByOpenSsl);
}

/// Into memory of the caller.
void DecodeBase64(const std::string& text, unsigned long size) {
    std::string room(size + 3, '\0'), roomOfOpenSsl(size + 3, '\0');
    const auto decode = [&] {
        unsigned long decoded = room.size();
        qel::Buffer::FromBase64(text.data(), text.size(), decoded, room.data());
        return std::string_view(room).substr(0, decoded);
    };
    const auto decodeByOpenSsl = [&] {
        auto* const out = reinterpret_cast<unsigned char*>(roomOfOpenSsl.data());
        const auto* const in = reinterpret_cast<const unsigned char*>(text.data());
        ::EVP_DecodeBlock(out, in, static_cast<int>(text.size()));
        // It counts the padding as bytes.
        return std::string_view(roomOfOpenSsl).substr(0, size);
    };
    Compare(table, "base64, decode, unbroken", "OpenSSL `EVP_DecodeBlock`", 0.65, decode,
            decodeByOpenSsl);
}

/// Into a new block.
void DecodeBase64(const char* name, const std::string& text) {
    qel::BufferDynamic block;
    std::unique_ptr<::guchar, decltype(&::g_free)> blockOfGlib(nullptr, ::g_free);
    const auto decode = [&] {
        block.FromBase64(text.data(), text.size());
        return AsStringView(block);
    };
    const auto decodeByGlib = [&] {
        ::gsize length = 0;
        blockOfGlib.reset(::g_base64_decode(text.c_str(), &length));
        return std::string_view(reinterpret_cast<const char*>(blockOfGlib.get()), length);
    };
    Compare(table, name, "GLib `g_base64_decode`", 0.6, decode, decodeByGlib);
}

void EncodeHex(const qel::Buffer& bytes) {
    const auto* const in = static_cast<const unsigned char*>(bytes.GetData());
    std::string room(2 * bytes.GetSize() + 1, '\0');
    const auto encode = [&] { return bytes.ToHex(0, 0, ""); };
    const auto encodeByOpenSsl = [&] {
        std::size_t length = 0;
        ::OPENSSL_buf2hexstr_ex(room.data(), room.size(), &length, in, bytes.GetSize(), '\0');
        return std::string_view(room.c_str());
    };
    const auto encodeByBoost = [&] {
        char* const end = boost::algorithm::hex(in, in + bytes.GetSize(), room.data());
        return std::string_view(room.data(), end);
    };
    Compare(table, "hex, encode", "OpenSSL `OPENSSL_buf2hexstr_ex`", 0.25, encode, encodeByOpenSsl);
    Compare(table, "hex, encode", "Boost `algorithm::hex`", 0.25, encode, encodeByBoost);
}

void DecodeHex(const std::string& text) {
    std::string room(text.size() / 2, '\0'), roomOfBoost(text.size() / 2, '\0');
    const auto decode = [&] {
        unsigned long size = room.size();
        qel::Buffer::FromHex(text.c_str(), size, room.data());
        return std::string_view(room).substr(0, size);
    };
    const auto decodeByBoost = [&] {
        char* const end = boost::algorithm::unhex(text.begin(), text.end(), roomOfBoost.data());
        return std::string_view(roomOfBoost.data(), end);
    };
    Compare(table, "hex, decode", "Boost `algorithm::unhex`", 0.2, decode, decodeByBoost);
}

void SwapCodePages() {
    const std::string text = RussianText(4096);
    const std::string dosText = qel::Buffer(text.data(), text.size()).ToDos();
    std::string room(text.size(), '\0');
    const Iconv toDos("CP866", "CP1251"), toWin("CP1251", "CP866");
    Compare(
        table, "`ToDos`", "iconv", 0.2,
        [&] { return qel::Buffer(text.data(), text.size()).ToDos(); },
        [&] { return toDos.Convert(text, room); });
    Compare(
        table, "`ToWin`", "iconv", 0.2,
        [&] { return qel::Buffer(dosText.data(), dosText.size()).ToWin(); },
        [&] { return toWin.Convert(dosText, room); });
}

}  // namespace

void CompareEncodings() {
    qel::BufferDynamic bytes(4096);
    bytes.FillRand();
    const std::string unbroken = bytes.ToBase64(0, nullptr);
    EncodeBase64(bytes);
    DecodeBase64(unbroken, bytes.GetSize());
    DecodeBase64("base64, decode, unbroken", unbroken);
    DecodeBase64("base64, decode, lines of 76", bytes.ToBase64(76, "\n"));
    EncodeHex(bytes);
    DecodeHex(bytes.ToHex(0, 0, ""));
    SwapCodePages();
}
