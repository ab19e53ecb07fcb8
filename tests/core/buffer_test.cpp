#include <stdlib.h>
#include <unistd.h>

#include "core/buffer_dynamic.h"
#include "core/buffer_shifting.h"
#include "core/exception.h"
#include "core/result_codes.h"
#include "tests/support/bytes.h"
#include "tests/support/outcome.h"
#include "tests/support/scratch_test.h"

namespace {

using namespace std::string_literals;
using qel::Buffer, qel::BufferDynamic, qel::BufferShifting;

constexpr unsigned long tooMuch = 1ul << 62, everything = ~0ul;

TEST(Buffer, ChangesTheBytesThatItViews) {
    std::string text = "abcdef";
    Buffer view(text.data(), 5);
    EXPECT_EQ(view.Set(4, "wxyz"), qel::ERROR_SIZE);
    EXPECT_EQ(view.Set(5, text.data() + 1), qel::SUCCESS);
    EXPECT_EQ(text, "bcdeff");
    ::srand(7);
    const int random = ::rand();
    ::srand(7);
    Buffer(text.data(), 1).FillRand();
    EXPECT_EQ(text[0], static_cast<char>(random));
    Buffer::Wipe(5, text.data());
    EXPECT_EQ(text, std::string(5, '\xAA') + "f");
    text = "abcdef";
    for (const unsigned long size : {0ul, 1ul, 5ul, 6ul}) Buffer::Reverse(text.data(), size);
    EXPECT_EQ(text, "fabcde");
}

using BufferFiles = ScratchTest;

TEST_F(BufferFiles, LoadAsTheyWereSaved) {
    BufferDynamic buffer;
    // From long to short: saving over a longer file must cut it.
    for (const std::string& bytes : {std::string(100'000, 'y'), "\0one\r\n\xFF"s, ""s, "abc"s}) {
        EXPECT_EQ(Buffer(bytes.data(), bytes.size()).Save("file"), qel::SUCCESS);
        EXPECT_EQ(buffer.Load("file"), qel::SUCCESS);
        EXPECT_EQ(Read("file") + Bytes(buffer), bytes + bytes);
    }
    struct : BufferDynamic {
        unsigned long Alloc(unsigned long) override { return qel::ERROR_PARAM; }
        unsigned long Realloc(unsigned long) override { return qel::ERROR_PARAM; }
    } refusing;
    EXPECT_EQ(refusing.Set("x"), qel::ERROR_PARAM);
    EXPECT_EQ(refusing.AppendBuffer(buffer), qel::ERROR_PARAM);
    EXPECT_EQ(refusing.Load("file"), qel::ERROR_PARAM);
    EXPECT_EQ(buffer.Load(Unseekable().c_str()), qel::ERROR_IO);
    EXPECT_EQ(buffer.Load("missing"), qel::ERROR_FILE_OPEN);
    EXPECT_EQ(buffer.Save("missing/file"), qel::ERROR_WRITE);
    EXPECT_EQ(Bytes(buffer), "abc");
#if defined(__linux__)
    EXPECT_EQ(buffer.Save("/dev/full"), qel::ERROR_WRITE);
    // Claims to hold a page, and holds a few bytes.
    EXPECT_EQ(buffer.Load("/sys/devices/system/cpu/online"), qel::ERROR_READ);
    EXPECT_EQ(buffer.GetSize(), static_cast<unsigned long>(::sysconf(_SC_PAGESIZE)));
#endif
    EXPECT_EQ(buffer.Load("/dev/null"), qel::SUCCESS);
    EXPECT_EQ(buffer.GetData(), nullptr);
}

TEST(BufferDynamic, ChangesWhollyOrNotAtAll) {
    const std::tuple<unsigned long (*)(BufferDynamic&), unsigned long, std::string> rows[] = {
        {[](auto& b) { return b.Set(6, "longer"); }, qel::SUCCESS, "longer"},
        {[](auto& b) { return b.Set("a\0b"s); }, qel::SUCCESS, "a\0b"s},
        {[](auto& b) { return b.Set(tooMuch, "x"); }, qel::ERROR_MEM, "kept"},
        {[](auto& b) { return b.Alloc(0); }, qel::SUCCESS, ""},
        {[](auto& b) { return b.Alloc(tooMuch); }, qel::ERROR_MEM, "kept"},
        {[](auto& b) { return b.Realloc(2); }, qel::SUCCESS, "ke"},
        {[](auto& b) { return b.Realloc(0); }, qel::SUCCESS, ""},
        {[](auto& b) { return b.Realloc(tooMuch); }, qel::ERROR_MEM, "kept"},
        {[](auto& b) { return b.AppendBuffer(Buffer("\0x", 2)); }, qel::SUCCESS, "kept\0x"s},
        {[](auto& b) { return b.AppendBuffer(Buffer()); }, qel::SUCCESS, "kept"},
        {[](auto& b) { return b.AppendBuffer(Buffer("", tooMuch)); }, qel::ERROR_MEM, "kept"},
        {[](auto& b) { return b.AppendBuffer(Buffer("", everything)); }, qel::ERROR_MEM, "kept"},
    };
    for (const auto& row : rows) {
        const auto& [operation, result, bytes] = row;
        BufferDynamic buffer(Buffer("kept", 4));
        EXPECT_EQ(operation(buffer), result) << &row - rows;
        EXPECT_EQ(Bytes(buffer), bytes);
    }
}

TEST(BufferDynamic, OwnsItsBlock) {
    BufferDynamic first(Buffer("abc", 3)), third(7);
    const BufferDynamic second(first);
    const void* const block = first.GetData();
    EXPECT_EQ(first.Set(3, "xyz"), qel::SUCCESS);
    EXPECT_EQ(first.Realloc(3), qel::SUCCESS);
    EXPECT_EQ(first.GetData(), block);
    EXPECT_EQ(Outcome<qel::Exception>([&] { first = Buffer("", tooMuch); }), "ERROR_MEM");
    EXPECT_EQ(Outcome<qel::Exception>([] { BufferDynamic{tooMuch}; }), "ERROR_MEM");
    third = first;
    first = Buffer("n", 1);
    EXPECT_EQ(Bytes(first) + Bytes(second) + Bytes(third), "nabcxyz");
    EXPECT_EQ(third.AppendBuffer(third), qel::ERROR_SIZE);
    EXPECT_EQ(third.GetSize(), 6ul);
    const Buffer detached(third.Detach(), 3);
    EXPECT_EQ(Bytes(third) + Bytes(detached), "xyz");
    ::free(detached.GetData());
}

TEST(BufferShifting, MovesOnlyAsFarAsTheBlockGoes) {
    std::string block = "..........";
    BufferShifting writing{Buffer(block.data(), block.size())}, counting(nullptr, block.size());
    for (BufferShifting* cursor : {&writing, &counting}) {
        EXPECT_EQ(cursor->SetStringAndShift("abcd"), qel::SUCCESS);
        EXPECT_EQ(cursor->Shift(1), qel::SUCCESS);
        EXPECT_EQ(cursor->SetBufferAndShift(Buffer("efg", 3)), qel::SUCCESS);
        EXPECT_EQ(cursor->SetStringAndShift("abc"), qel::ERROR_SIZE);
        EXPECT_EQ(cursor->Shift(everything), qel::ERROR_SIZE);
        EXPECT_EQ(cursor->GetSize(), 2ul);
        EXPECT_EQ(cursor->SetBufferAndShift(2, "\0h"), qel::SUCCESS);
    }
    EXPECT_EQ(block, "abcd.efg\0h"s);
    EXPECT_EQ(counting.GetData(), nullptr);
    BufferShifting reading(block.data(), block.size());
    char out[] = "-----";
    EXPECT_EQ(reading.GetAndShift(4, out), qel::SUCCESS);
    EXPECT_EQ(reading.GetAndShift(7, out), qel::ERROR_SIZE);
    EXPECT_STREQ(out, "abcd-");
}

}  // namespace
