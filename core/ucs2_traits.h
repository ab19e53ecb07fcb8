/// std::char_traits<unsigned short>, needed by std::basic_string<unsigned short> with libc++, which
/// removed its generic traits in LLVM 19.
#pragma once

#include <string>

#if defined(_LIBCPP_VERSION)

#include <algorithm>
#include <compare>
#include <cstring>
#include <cwchar>
#include <ios>

template <>
struct std::char_traits<unsigned short> {
    using char_type = unsigned short;
    using int_type = unsigned int;
    using off_type = std::streamoff;
    using pos_type = std::streampos;
    using state_type = std::mbstate_t;
    using comparison_category = std::strong_ordering;

    static constexpr void assign(char_type& to, const char_type& from) noexcept { to = from; }
    static constexpr bool eq(char_type a, char_type b) noexcept { return a == b; }
    static constexpr bool lt(char_type a, char_type b) noexcept { return a < b; }

    static int compare(const char_type* a, const char_type* b, std::size_t count) {
        for (; count != 0; ++a, ++b, --count) {
            if (*a != *b) return *a < *b ? -1 : 1;
        }
        return 0;
    }
    static std::size_t length(const char_type* text) {
        std::size_t count = 0;
        while (text[count] != 0) ++count;
        return count;
    }
    static const char_type* find(const char_type* text, std::size_t count,
                                 const char_type& wanted) {
        const char_type* const found = std::find(text, text + count, wanted);
        return found == text + count ? nullptr : found;
    }

    static char_type* move(char_type* to, const char_type* from, std::size_t count) {
        if (count != 0) std::memmove(to, from, count * sizeof *from);
        return to;
    }
    static char_type* copy(char_type* to, const char_type* from, std::size_t count) {
        return move(to, from, count);
    }
    static char_type* assign(char_type* to, std::size_t count, char_type from) {
        std::fill_n(to, count, from);
        return to;
    }

    static constexpr int_type eof() noexcept { return ~int_type{0}; }
    static constexpr int_type not_eof(int_type c) noexcept { return c == eof() ? 0 : c; }
    static constexpr char_type to_char_type(int_type c) noexcept {
        return static_cast<char_type>(c);
    }
    static constexpr int_type to_int_type(char_type c) noexcept { return c; }
    static constexpr bool eq_int_type(int_type a, int_type b) noexcept { return a == b; }
};

#endif
