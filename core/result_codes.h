/// The result codes of the core library.
///
/// An operation that can fail returns one of these as an unsigned long; 0 is success, and every
/// other value, named here or not, is a failure. The values are those of the Windows system error
/// codes and of COM or CryptoAPI results of the same meaning.
#pragma once

/// The core library: bytes, their encodings, text, and result codes.
namespace qel {

static_assert(sizeof(unsigned long) == 8,
              "result codes, sizes and record indices are 64 bits wide");

/// Done.
inline constexpr unsigned long SUCCESS = 0;
/// No such file.
inline constexpr unsigned long ERROR_FILE_NOT_FOUND = 2;
/// The data is malformed.
inline constexpr unsigned long ERROR_DATA = 13;
/// A file could not be opened for writing, or not written completely.
inline constexpr unsigned long ERROR_WRITE = 29;
/// A file yielded fewer bytes than its size.
inline constexpr unsigned long ERROR_READ = 30;
/// The password is wrong.
inline constexpr unsigned long ERROR_PASSWORD = 86;
/// An argument is wrong.
inline constexpr unsigned long ERROR_PARAM = 87;
/// A file could not be opened for reading.
inline constexpr unsigned long ERROR_FILE_OPEN = 110;
/// A size does not match, or a capacity is too small.
inline constexpr unsigned long ERROR_SIZE = 122;
/// Malformed text, or an unrepresentable character.
inline constexpr unsigned long NO_UNICODE_TRANSLATION = 1113;
/// A file's size or position could not be determined or set.
inline constexpr unsigned long ERROR_IO = 1117;
/// The command line is wrong.
inline constexpr unsigned long INVALID_COMMAND_LINE = 1639;
/// Not implemented.
inline constexpr unsigned long ERROR_NOT_IMPLEMENTED = 0x80004001;
/// Out of memory, or a size overflows 64 bits.
inline constexpr unsigned long ERROR_MEM = 0x8009000E;
/// No such item.
inline constexpr unsigned long ERROR_ITEM_NOT_FOUND = 0x80090011;
/// An unknown direction of conversion.
inline constexpr unsigned long ERROR_INTERNAL = 0x80090020;

}  // namespace qel
