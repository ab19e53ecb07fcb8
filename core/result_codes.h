/// The result codes of the core library.
///
/// An operation that can fail returns one of these as an unsigned long; 0 is success, and every
/// other value, named here or not, is a failure. The values are those of the Windows system error
/// codes and COM or CryptoAPI results of the same meaning, fixed here because other platforms have
/// no such table.
#pragma once

/// The core library: bytes, their encodings, text, and the codes that its operations answer with.
namespace qel {

static_assert(sizeof(unsigned long) == 8, "result codes, sizes and record places are 64 bits wide");

/// Done.
inline constexpr unsigned long SUCCESS = 0;
/// There is no such file.
inline constexpr unsigned long ERROR_FILE_NOT_FOUND = 2;
/// The data is malformed.
inline constexpr unsigned long ERROR_DATA = 13;
/// A file could not be opened for writing, or not be written whole.
inline constexpr unsigned long ERROR_WRITE = 29;
/// A file gave fewer bytes than its size says.
inline constexpr unsigned long ERROR_READ = 30;
/// The password is wrong.
inline constexpr unsigned long ERROR_PASSWORD = 86;
/// An argument is wrong.
inline constexpr unsigned long ERROR_PARAM = 87;
/// A file could not be opened for reading.
inline constexpr unsigned long ERROR_FILE_OPEN = 110;
/// A size does not match, or a capacity is too small.
inline constexpr unsigned long ERROR_SIZE = 122;
/// A character has no place in the other encoding.
inline constexpr unsigned long NO_UNICODE_TRANSLATION = 1113;
/// A file's size or position could not be found or set.
inline constexpr unsigned long ERROR_IO = 1117;
/// The command line is wrong.
inline constexpr unsigned long INVALID_COMMAND_LINE = 1639;
/// The operation does not exist yet.
inline constexpr unsigned long ERROR_NOT_IMPLEMENTED = 0x80004001;
/// The heap refuses, or a size does not fit 64 bits.
inline constexpr unsigned long ERROR_MEM = 0x8009000E;
/// There is no such item.
inline constexpr unsigned long ERROR_ITEM_NOT_FOUND = 0x80090011;
/// The library contradicts itself.
inline constexpr unsigned long ERROR_INTERNAL = 0x80090020;

}  // namespace qel
