/// The C library's string and file functions under this library's namespace: the one place to
/// put a platform's own version of them. Each passes its arguments and its result on unchanged.
///
/// Code in namespace qel that means the C function itself writes it with "::" in front.
#pragma once

#include <cstdio>

namespace qel {

/// Below, at or above 0 as left comes before, equals or comes after right, byte by byte.
int strcmp(const char* left, const char* right);

/// Copies source with its NUL to target, which has room for it and does not overlap it; returns
/// target.
char* strcpy(char* target, const char* source);

/// The first place in text where wanted stands; null when there is none.
const char* strstr(const char* text, const char* wanted);

/// The number of bytes before the terminating NUL.
unsigned long strlen(const char* text);

/// The decimal number at the start of text as atoi reads it; 0 when there is none.
int stoi(const char* text);

/// The open stream, which the caller closes with fclose; null on failure, with errno set.
std::FILE* fopen(const char* path, const char* mode);

}  // namespace qel
