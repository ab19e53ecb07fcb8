/// The C library's string and file functions under this library's namespace, where a platform can
/// have its own version of them. Each passes its arguments and its result on unchanged. In
/// namespace qel, the C function itself is called with "::".
#pragma once

#include <cstdio>

namespace qel {

/// Returns a negative value, 0 or a positive one, as left is less than, equal to or greater than
/// right.
int strcmp(const char* left, const char* right);

/// Copies source with its NUL to target, which must be large enough and not overlap it; returns
/// target.
char* strcpy(char* target, const char* source);

/// Returns the first occurrence of wanted in text; null if there is none.
const char* strstr(const char* text, const char* wanted);

/// Returns the number of bytes before the terminating NUL.
unsigned long strlen(const char* text);

/// Returns the decimal number at the start of text, like atoi; 0 if there is none.
int stoi(const char* text);

/// Returns an open stream, which the caller closes with fclose; null on failure, with errno set.
std::FILE* fopen(const char* path, const char* mode);

}  // namespace qel
