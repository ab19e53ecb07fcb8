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

TEST(Buffer, ChangesOnlyTheBytesInView) {
    std::string text = "abcdef";
    Buffer view(text.data(), 5);
    EXPECT_EQ(view.Set(4, "wxyz"), qel::ERROR_SIZE);
    EXPECT_EQ(view.Set(5, text.data() + 1), qel::SUCCESS) << "source and buffer may overlap";
    EXPECT_EQ(text, "bcdeff");
    Buffer::Reverse(text.data(), 5);
    EXPECT_EQ(text, "fedcbf");
    Buffer::Wipe(5, text.data());
    EXPECT_EQ(text, "\xAA\xAA\xAA\xAA\xAA\x66");
}

TEST(Buffer, FillRandStoresOneRandPerByte) {
    std::string expected = "....|", filled = expected;
    ::srand(7);
    for (std::size_t i = 0; i < 4; ++i) expected[i] = static_cast<char>(::rand());
    ::srand(7);
    Buffer(filled.data(), 4).FillRand();
    EXPECT_EQ(filled, expected);
}

using BufferFiles = ScratchTest;

TEST_F(BufferFiles, LoadReadsWhatSaveWrote) {
    BufferDynamic buffer;
    // Long before short: saving over a longer file must truncate it.
    for (const std::string& bytes : {std::string(9999, 'y'), "\0one\r\n\xFF"s, "abc"s, ""s}) {
        EXPECT_EQ(View(bytes).Save("file"), qel::SUCCESS);
        EXPECT_EQ(Read("file"), bytes);
        EXPECT_EQ(buffer.Load("file"), qel::SUCCESS);
        EXPECT_EQ(Bytes(buffer), bytes);
    }
}

TEST_F(BufferFiles, FailuresHaveDistinctCodes) {
    BufferDynamic buffer(View("kept"));
    EXPECT_EQ(buffer.Load("missing"), qel::ERROR_FILE_OPEN);
    EXPECT_EQ(buffer.Load(UnseekablePath().c_str()), qel::ERROR_IO);
    EXPECT_EQ(buffer.Save("missing/file"), qel::ERROR_WRITE);
    EXPECT_EQ(FailingBuffer().Load(Write("file", "a").c_str()), qel::ERROR_PARAM) << "Alloc fails";
    EXPECT_EQ(Bytes(buffer), "kept");
#if defined(__linux__)
    EXPECT_EQ(buffer.Save("/dev/full"), qel::ERROR_WRITE);
    // The size of this file is a page, its contents a few bytes.
    EXPECT_EQ(buffer.Load("/sys/devices/system/cpu/online"), qel::ERROR_READ);
#endif
}

TEST(BufferDynamic, FailuresLeaveTheBytesUnchanged) {
    BufferDynamic buffer;
    EXPECT_EQ(buffer.Set("a\0bc"s), qel::SUCCESS);
    EXPECT_EQ(buffer.Realloc(3), qel::SUCCESS);
    EXPECT_EQ(buffer.AppendBuffer(View("\0x"s)), qel::SUCCESS);
    EXPECT_EQ(buffer.Set(tooMuch, ""), qel::ERROR_MEM);
    EXPECT_EQ(buffer.Realloc(tooMuch), qel::ERROR_MEM);
    EXPECT_EQ(buffer.AppendBuffer(Buffer("", ~0ul)), qel::ERROR_MEM);
    EXPECT_EQ(Bytes(buffer), "a\0b\0x"s);
    EXPECT_EQ(buffer.AppendBuffer(buffer), qel::ERROR_SIZE);
    EXPECT_EQ(buffer.Realloc(0), qel::SUCCESS);
    EXPECT_EQ(buffer.GetData(), nullptr);
    EXPECT_EQ(ResultText<qel::Exception>([] { BufferDynamic{tooMuch}; }), "ERROR_MEM");
}

TEST(BufferDynamic, OwnsItsBlock) {
    BufferDynamic original(View("abc"));
    const BufferDynamic copy(original);
    void* const block = original.GetData();
    EXPECT_EQ(original.Set("xyz"), qel::SUCCESS);
    EXPECT_EQ(Bytes(copy), "abc");
    EXPECT_EQ(original.Detach(), block) << "Set to the same size must not allocate";
    EXPECT_EQ(original.GetSize(), 0);
    ::free(block);
}

struct FailingOverrides : BufferDynamic {
    using BufferDynamic::FromBase64, BufferDynamic::Set, BufferDynamic::operator=;
    unsigned long Set(unsigned long, const void*) override { return qel::ERROR_PARAM; }
    unsigned long FromBase64(const char*, unsigned long) override { return qel::ERROR_IO; }
};

TEST(BufferDynamic, CallsOverrides) {
    FailingOverrides buffer;
    EXPECT_EQ(buffer.Set("abc"), qel::ERROR_PARAM);
    EXPECT_EQ(ResultText<qel::Exception>([&] { buffer = View("abc"); }), "ERROR_PARAM");
    EXPECT_EQ(ResultText<qel::Exception>([&] { buffer = BufferDynamic(); }), "ERROR_PARAM");
    EXPECT_EQ(buffer.FromBase64("TWFu"), qel::ERROR_IO);
    EXPECT_EQ(FailingBuffer().Set("abc"), qel::ERROR_PARAM) << "Alloc fails";
    EXPECT_EQ(FailingBuffer().AppendBuffer(View("abc")), qel::ERROR_DATA) << "Realloc fails";
}

TEST(BufferShifting, MovesOnlyWithinTheBlock) {
    std::string block = ".........";
    BufferShifting writing(View(block)), counting(nullptr, block.size());
    for (BufferShifting* cursor : {&writing, &counting}) {
        EXPECT_EQ(cursor->SetStringAndShift("abcd"), qel::SUCCESS);
        EXPECT_EQ(cursor->Shift(1), qel::SUCCESS);
        EXPECT_EQ(cursor->SetStringAndShift("efghi"), qel::ERROR_SIZE);
        EXPECT_EQ(cursor->Shift(~0ul), qel::ERROR_SIZE);
        EXPECT_EQ(cursor->SetBufferAndShift(View("e\0gh"s)), qel::SUCCESS);
    }
    EXPECT_EQ(block, "abcd.e\0gh"s);
    BufferShifting reading(View(block));
    char out[] = "-----";
    EXPECT_EQ(reading.GetAndShift(4, out), qel::SUCCESS);
    EXPECT_EQ(reading.GetAndShift(6, out), qel::ERROR_SIZE);
    EXPECT_STREQ(out, "abcd-");
}

}  // namespace
