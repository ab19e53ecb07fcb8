/// The benchmarks of the libraries, a function for each file.
#pragma once

#include <iconv.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "core/buffer.h"

void CompareSearch();
void CompareEncodings();
void CompareText();
void CompareConfiguration();
void CompareBuffers();

/// The path of a new empty file in memory.
std::string ScratchFile();

/// Words at random in Windows-1251, as many as it takes to reach size bytes.
std::string RussianText(std::size_t size);

inline std::string_view AsStringView(const qel::Buffer& buffer) {
    return {static_cast<const char*>(buffer.GetData()), buffer.GetSize()};
}

/// A conversion by iconv with nothing around it, into memory that is there already.
class Iconv {
public:
    Iconv(const char* to, const char* from) : descriptor(::iconv_open(to, from)) {}
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;
    ~Iconv() { ::iconv_close(descriptor); }

    /// The part of room that the result takes.
    std::string_view Convert(std::string_view text, std::string& room) const {
        char *in = const_cast<char*>(text.data()), *out = room.data();
        std::size_t inLeft = text.size(), outLeft = room.size();
        if (::iconv(descriptor, &in, &inLeft, &out, &outLeft) != 0) std::abort();
        return std::string_view(room).substr(0, room.size() - outLeft);
    }

private:
    const ::iconv_t descriptor;
};
