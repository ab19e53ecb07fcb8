// Bytes as text: hexadecimal, base64, and Russian for a DOS terminal.
#include <cstdio>
#include <string>

#include "core/buffer_dynamic.h"
#include "core/exception.h"
#include "core/result_codes.h"

int main() {
    // What a card answers to a reset.
    qel::BufferDynamic answer;
    qel::ThrowUnlessSuccess(answer.FromHex("3B 6D 00 00 80 31 80 65"));
    std::printf("%s\n", answer.ToBase64(0, "").c_str());
    // Two groups of two bytes to a line. A blank follows every group, the last one too.
    std::printf("%s", answer.ToHex(2, 2, "|\n").c_str());

    // Without a buffer: first ask for the size, then say how much room there is.
    const std::string text = "O20AAIAxgGU=";
    unsigned long size = 0;
    qel::ThrowUnlessSuccess(qel::Buffer::FromBase64(text.data(), text.size(), size, nullptr));
    std::string bytes(size, '\0');
    qel::ThrowUnlessSuccess(qel::Buffer::FromBase64(text.data(), text.size(), size, bytes.data()));
    std::printf("%lu bytes, the same: %d\n", size,
                qel::Buffer(bytes.data(), size).ToHex(0, 0, "") == answer.ToHex(0, 0, ""));

    // Malformed text is refused; the buffer keeps what it had.
    const bool malformed = answer.FromHex("3B 6") == qel::ERROR_DATA;
    std::printf("malformed: %d, still %lu bytes\n", malformed, answer.GetSize());

    // The word "card" in Windows-1251, and what a terminal in code page 866 wants for it.
    const std::string dos = qel::Buffer("\xCA\xE0\xF0\xF2\xE0", 5).ToDos();
    std::printf("code page 866: %s\n", qel::Buffer(dos.data(), dos.size()).ToHex(0, 0, "").c_str());
}
