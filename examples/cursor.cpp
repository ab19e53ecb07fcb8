// A cursor that writes a command for a card, once to measure it and once for real.
#include <cstdio>

#include "core/buffer_dynamic.h"
#include "core/buffer_shifting.h"
#include "core/exception.h"
#include "core/result_codes.h"

namespace {

/// Writes the command that selects an application: a header, the length of the name, the name.
void WriteSelect(qel::BufferShifting& out, const qel::Buffer& application) {
    const auto length = static_cast<unsigned char>(application.GetSize());
    qel::ThrowUnlessSuccess(out.SetBufferAndShift(4, "\x00\xA4\x04\x00"));
    qel::ThrowUnlessSuccess(out.SetBufferAndShift(1, &length));
    qel::ThrowUnlessSuccess(out.SetBufferAndShift(application));
}

}  // namespace

int main() {
    const qel::Buffer application("\xA0\x00\x00\x00\x03", 5);

    // Over a null address a cursor only counts; GetSize is what is left of the room.
    constexpr unsigned long room = 260;
    qel::BufferShifting counter(nullptr, room);
    WriteSelect(counter, application);

    qel::BufferDynamic command(room - counter.GetSize());
    qel::BufferShifting cursor(command);
    WriteSelect(cursor, application);
    std::printf("%lu bytes: %s\n", command.GetSize(), command.ToHex(0, 0, "").c_str());

    // The cursor is at the end now: it refuses more, and stays where it is.
    if (cursor.SetStringAndShift("!") == qel::ERROR_SIZE) std::puts("full");
}
