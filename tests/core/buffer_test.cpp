#include <stdlib.h>

#include "core/buffer_dynamic.h"
#include "core/buffer_shifting.h"
#include "core/exception.h"
#include "tests/support/buffers.h"
#include "tests/support/result_text.h"
#include "tests/support/scratch_test.h"

namespace {

using namespace std::string_literals;
using qel::Buffer, qel::BufferDynamic, qel::BufferShifting;

constexpr unsigned long tooMuch = 1ul << 62;

TEST(Buffer, ChangesTheBytesThatItViews) {
    std::string text = "abcdef";
    Buffer view(text.data(), 5);
    EXPECT_EQ(view.Set(4, "wxyz"), qel::ERROR_SIZE);
    EXPECT_EQ(view.Set(5, text.data() + 1), qel::SUCCESS);
    EXPECT_EQ(text, "bcdeff");
    for (const unsigned long size : {0ul, 1ul, 5ul, 6ul}) Buffer::Reverse(text.data(), size);
    EXPECT_EQ(text, "fbcdef");
    Buffer::Wipe(5, text.data());
    EXPECT_EQ(text, std::string(5, '\xAA') + "f");
    ::srand(7);
    text[5] = static_cast<char>(::rand());
    ::srand(7);
    Buffer(text.data(), 1).FillRand();
    EXPECT_EQ(text[0], text[5]);
}

using BufferFiles = ScratchTest;

TEST_F(BufferFiles, LoadAsTheyWereSaved) {
    BufferDynamic buffer;
    // From long to short: saving over a longer file must cut it.
    for (const std::string& bytes : {std::string(100'000, 'y'), "\0one\r\n\xFF"s, ""s, "abc"s}) {
        EXPECT_TRUE(View(bytes).Save("file") == 0 && buffer.Load("file") == 0);
        EXPECT_EQ(Read("file") + Bytes(buffer), bytes + bytes);
        EXPECT_EQ(buffer.GetData() == nullptr, bytes.empty());
    }
    EXPECT_EQ(FailingBuffer().Load("file") + FailingBuffer().Set("x"), 2 * qel::ERROR_PARAM);
    EXPECT_EQ(FailingBuffer().AppendBuffer(buffer), qel::ERROR_DATA);
    EXPECT_EQ(buffer.Load(UnseekablePath().c_str()), qel::ERROR_IO);
    EXPECT_EQ(buffer.Load("missing"), qel::ERROR_FILE_OPEN);
    EXPECT_EQ(buffer.Save("missing/file"), qel::ERROR_WRITE);
    EXPECT_EQ(Bytes(buffer), "abc");
#if defined(__linux__)
    EXPECT_EQ(buffer.Save("/dev/full"), qel::ERROR_WRITE);
    // Claims to hold a page, and holds a few bytes.
    EXPECT_EQ(buffer.Load("/sys/devices/system/cpu/online"), qel::ERROR_READ);
#endif
}

TEST(BufferDynamic, ChangesWhollyOrNotAtAll) {
    using Row = std::tuple<unsigned long (*)(BufferDynamic&), unsigned long, std::string>;
    for (const auto& [operation, result, bytes] :
         {Row{[](auto& b) { return b.Set(6, "longer"); }, qel::SUCCESS, "longer"},
          Row{[](auto& b) { return b.Set("a\0b"s); }, qel::SUCCESS, "a\0b"s},
          Row{[](auto& b) { return b.Set(tooMuch, "x"); }, qel::ERROR_MEM, "kept"},
          Row{[](auto& b) { return b.Realloc(2); }, qel::SUCCESS, "ke"},
          Row{[](auto& b) { return b.Realloc(0); }, qel::SUCCESS, ""},
          Row{[](auto& b) { return b.Realloc(tooMuch); }, qel::ERROR_MEM, "kept"},
          Row{[](auto& b) { return b.AppendBuffer(View("\0x"s)); }, qel::SUCCESS, "kept\0x"s},
          Row{[](auto& b) { return b.AppendBuffer(Buffer("", ~0ul)); }, qel::ERROR_MEM, "kept"}}) {
        BufferDynamic buffer(View("kept"));
        EXPECT_EQ(operation(buffer), result) << bytes;
        EXPECT_EQ(Bytes(buffer), bytes);
    }
}

TEST(BufferDynamic, OwnsItsBlock) {
    BufferDynamic first(View("abc")), third(7);
    const BufferDynamic second(first);
    const void* const block = first.GetData();
    EXPECT_TRUE(first.Set("xyz") == 0 && first.Realloc(3) == 0 && first.GetData() == block);
    EXPECT_EQ(ResultText<qel::Exception>([&] { first = Buffer("", tooMuch); }), "ERROR_MEM");
    EXPECT_EQ(ResultText<qel::Exception>([] { BufferDynamic{tooMuch}; }), "ERROR_MEM");
    third = first;
    first = View("n");
    EXPECT_EQ(Bytes(first) + Bytes(second) + Bytes(third), "nabcxyz");
    EXPECT_TRUE(third.AppendBuffer(third) == qel::ERROR_SIZE && third.GetSize() == 6);
    const Buffer detached(third.Detach(), 3);
    EXPECT_EQ(Bytes(third) + Bytes(detached), "xyz");
    ::free(detached.GetData());
}

TEST(BufferShifting, MovesOnlyAsFarAsTheBlockGoes) {
    std::string block = "..........";
    BufferShifting writing(View(block)), counting(nullptr, block.size());
    for (BufferShifting* cursor : {&writing, &counting}) {
        EXPECT_EQ(cursor->SetStringAndShift("abcd"), qel::SUCCESS);
        EXPECT_EQ(cursor->Shift(1), qel::SUCCESS);
        EXPECT_EQ(cursor->SetBufferAndShift(Buffer("efg", 3)), qel::SUCCESS);
        EXPECT_EQ(cursor->SetStringAndShift("abc"), qel::ERROR_SIZE);
        EXPECT_EQ(cursor->Shift(~0ul), qel::ERROR_SIZE);
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
