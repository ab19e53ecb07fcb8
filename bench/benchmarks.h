/// The benchmarks of the libraries, one function per file.
#pragma once

#include <iconv.h>

#include <cstdlib>
#include <string>
#include <string_view>

void CompareSearch();
void CompareEncodings();
void CompareText();
void CompareConfiguration();
void CompareBuffers();

/// Creates an empty file in memory and returns its path.
std::string CreateTemporaryFile();

/// Returns size bytes of Russian words in Windows-1251, chosen at random.
std::string RussianText(std::size_t size, unsigned seed);

/// A call of iconv alone, into memory that is allocated already.
class Iconv {
public:
    Iconv(const char* to, const char* from) : descriptor(::iconv_open(to, from)) {}
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;
    ~Iconv() { ::iconv_close(descriptor); }

    /// Returns the part of out that was written.
    std::string_view Convert(std::string_view text, std::string& out) const {
        char *in = const_cast<char*>(text.data()), *end = out.data();
        std::size_t inLeft = text.size(), outLeft = out.size();
        if (::iconv(descriptor, &in, &inLeft, &end, &outLeft) != 0) std::abort();
        return std::string_view(out).substr(0, out.size() - outLeft);
    }

private:
    const ::iconv_t descriptor;
};
