// Hexadecimal text, base64 and code pages, compared with OpenSSL, GLib, Boost, iconv and plain
// loops.

#include <glib.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <boost/algorithm/hex.hpp>
#include <memory>

#include "app/byte_search.h"
#include "bench/benchmarks.h"
#include "bench/compare.h"
#include "core/buffer_dynamic.h"

namespace {

constexpr const char* table = "Encodings";

struct Base64Case {
    const char* name;
    unsigned long size;
    double encodeLimit, decodeLimit, glibLimit;
};

constexpr Base64Case base64Cases[] = {
    {"64 bytes", 64, 0, 0, 0}, {"4 KB", 4096, 0.6, 0.9, 0.6}, {"8 MB", 8'000'000, 0, 0, 0}};

void EncodeBase64(const std::string& name, double limit, const qel::Buffer& bytes) {
    const auto* const in = static_cast<const unsigned char*>(bytes.GetData());
    std::string text(2 * bytes.GetSize(), '\0');
    auto* const out = reinterpret_cast<unsigned char*>(text.data());
    const auto encodeByOpenSsl = [&] {
        const int length = ::EVP_EncodeBlock(out, in, static_cast<int>(bytes.GetSize()));
        return std::string_view(text).substr(0, static_cast<std::size_t>(length));
    };
    Compare(
        table, "base64, encode, " + name, "OpenSSL `EVP_EncodeBlock`", limit,
        [&] { return bytes.ToBase64(0, nullptr); }, encodeByOpenSsl);
}

void DecodeBase64ToMemory(const std::string& name, double limit, const std::string& text,
                          unsigned long size) {
    std::string out(size + 3, '\0'), outOfOpenSsl(size + 3, '\0');
    const auto decode = [&] {
        unsigned long decoded = out.size();
        qel::Buffer::FromBase64(text.data(), text.size(), decoded, out.data());
        return std::string_view(out).substr(0, decoded);
    };
    const auto decodeByOpenSsl = [&] {
        auto* const outBytes = reinterpret_cast<unsigned char*>(outOfOpenSsl.data());
        const auto* const in = reinterpret_cast<const unsigned char*>(text.data());
        ::EVP_DecodeBlock(outBytes, in, static_cast<int>(text.size()));
        // It counts the padding as bytes.
        return std::string_view(outOfOpenSsl).substr(0, size);
    };
    Compare(table, "base64, decode, " + name, "OpenSSL `EVP_DecodeBlock`", limit, decode,
            decodeByOpenSsl);
}

void DecodeBase64ToNewBlock(const std::string& name, double limit, const std::string& text) {
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
    Compare(table, "base64, decode, " + name, "GLib `g_base64_decode`", limit, decode,
            decodeByGlib);
}

void CompareBase64(const Base64Case& sizes) {
    const std::string name = sizes.name;
    qel::BufferDynamic bytes(sizes.size);
    bytes.FillRand();
    const std::string unbroken = bytes.ToBase64(0, nullptr);
    EncodeBase64(name, sizes.encodeLimit, bytes);
    DecodeBase64ToMemory(name, sizes.decodeLimit, unbroken, bytes.GetSize());
    DecodeBase64ToNewBlock(name, sizes.glibLimit, unbroken);
    DecodeBase64ToNewBlock(name + ", lines of 76", sizes.glibLimit, bytes.ToBase64(76, "\n"));
}

/// ToHex(1, 16, "\n") as a plain loop.
std::string EncodeLinesByLoop(std::string_view bytes) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(4 * bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        text += digits[byte >> 4];
        text += digits[byte & 15];
        text += ' ';
        if (i % 16 == 15) text += '\n';
    }
    return text;
}

/// FromHex as a plain loop over valid text.
std::string_view DecodeByLoop(std::string_view text, std::string& out) {
    const auto digitValue = [](char c) { return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10; };
    std::size_t size = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] <= ' ') {
            ++i;
            continue;
        }
        out[size++] = static_cast<char>(digitValue(text[i]) << 4 | digitValue(text[i + 1]));
        i += 2;
    }
    return std::string_view(out).substr(0, size);
}

void EncodeHex(const qel::Buffer& bytes) {
    const auto* const in = static_cast<const unsigned char*>(bytes.GetData());
    std::string text(3 * bytes.GetSize() + 1, '\0');
    const auto encodeByBoost = [&] {
        char* const end = boost::algorithm::hex(in, in + bytes.GetSize(), text.data());
        return std::string_view(text.data(), end);
    };
    const auto encodeByOpenSsl = [&](char separator) {
        std::size_t length = 0;
        ::OPENSSL_buf2hexstr_ex(text.data(), text.size(), &length, in, bytes.GetSize(), separator);
        // The terminator becomes the separator of the last byte.
        if (separator == '\0') return std::string_view(text).substr(0, length - 1);
        text[length - 1] = separator;
        return std::string_view(text).substr(0, length);
    };
    constexpr const char* openSsl = "OpenSSL `OPENSSL_buf2hexstr_ex`";
    const auto encode = [&] { return bytes.ToHex(0, 0, ""); };
    Compare(table, "hex, encode", openSsl, 0.65, encode, [&] { return encodeByOpenSsl('\0'); });
    Compare(table, "hex, encode", "Boost `algorithm::hex`", 0.65, encode, encodeByBoost);
    Compare(
        table, "hex, encode, groups of 1", openSsl, 1.4, [&] { return bytes.ToHex(1, 0, ""); },
        [&] { return encodeByOpenSsl(' '); });
    Compare(
        table, "hex, encode, groups of 1, lines of 16", "a plain loop", 0,
        [&] { return bytes.ToHex(1, 16, "\n"); },
        [&] { return EncodeLinesByLoop(AsStringView(bytes)); });
}

void DecodeHex(const qel::Buffer& bytes) {
    const std::string unbroken = bytes.ToHex(0, 0, ""), groups = bytes.ToHex(1, 0, ""),
                      lines = bytes.ToHex(1, 16, "\n");
    std::string out(bytes.GetSize(), '\0'), baselineOut(bytes.GetSize(), '\0');
    const auto decode = [&](const std::string& text) {
        unsigned long size = out.size();
        qel::Buffer::FromHex(text.c_str(), size, out.data());
        return std::string_view(out).substr(0, size);
    };
    const auto decodeByBoost = [&] {
        char* const end =
            boost::algorithm::unhex(unbroken.begin(), unbroken.end(), baselineOut.data());
        return std::string_view(baselineOut.data(), end);
    };
    const auto decodeByOpenSsl = [&](const std::string& text, char separator) {
        std::size_t length = 0;
        ::OPENSSL_hexstr2buf_ex(reinterpret_cast<unsigned char*>(baselineOut.data()),
                                baselineOut.size(), &length, text.c_str(), separator);
        return std::string_view(baselineOut).substr(0, length);
    };
    constexpr const char* openSsl = "OpenSSL `OPENSSL_hexstr2buf_ex`";
    Compare(
        table, "hex, decode", openSsl, 0, [&] { return decode(unbroken); },
        [&] { return decodeByOpenSsl(unbroken, '\0'); });
    Compare(
        table, "hex, decode", "Boost `algorithm::unhex`", 0.65, [&] { return decode(unbroken); },
        decodeByBoost);
    Compare(
        table, "hex, decode, groups of 1", openSsl, 0, [&] { return decode(groups); },
        [&] { return decodeByOpenSsl(groups, ' '); });
    Compare(
        table, "hex, decode, groups of 1, lines of 16", "a plain loop", 0,
        [&] { return decode(lines); }, [&] { return DecodeByLoop(lines, baselineOut); });
}

void CompareCodePages() {
    const std::string text = RussianText(4096, 1);
    const std::string dosText = qel::Buffer(text.data(), text.size()).ToDos();
    std::string out(text.size(), '\0');
    const Iconv toDos("CP866", "CP1251"), toWin("CP1251", "CP866");
    Compare(
        table, "`ToDos`", "iconv", 0.2,
        [&] { return qel::Buffer(text.data(), text.size()).ToDos(); },
        [&] { return toDos.Convert(text, out); });
    Compare(
        table, "`ToWin`", "iconv", 0.3,
        [&] { return qel::Buffer(dosText.data(), dosText.size()).ToWin(); },
        [&] { return toWin.Convert(dosText, out); });
}

}  // namespace

void CompareEncodings() {
    for (const Base64Case& sizes : base64Cases) CompareBase64(sizes);
    qel::BufferDynamic bytes(4096);
    bytes.FillRand();
    EncodeHex(bytes);
    DecodeHex(bytes);
    CompareCodePages();
}
