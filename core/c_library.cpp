#include "core/c_library.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

namespace qel {

int strcmp(const char* left, const char* right) { return ::strcmp(left, right); }

char* strcpy(char* target, const char* source) { return ::strcpy(target, source); }

const char* strstr(const char* text, const char* wanted) { return ::strstr(text, wanted); }

unsigned long strlen(const char* text) { return ::strlen(text); }

int stoi(const char* text) { return ::atoi(text); }

std::FILE* fopen(const char* path, const char* mode) { return ::fopen(path, mode); }

}  // namespace qel
