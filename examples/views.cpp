// A view of bytes that somebody else holds: what a USB reader says of itself.
#include <cstdio>

#include "core/buffer.h"
#include "core/result_codes.h"

int main() {
    // The vendor and the product, each with its low byte first, as USB sends them.
    unsigned char descriptor[] = {0xE6, 0x08, 0x38, 0x34};
    qel::Buffer vendor(descriptor, 2);
    const qel::Buffer product(descriptor + 2, 2);

    // Whatever is done to a view is done to the bytes of their owner, and every copy of the view
    // sees it. Here the owner is the array, which has to live as long as the views are used.
    const qel::Buffer copy = vendor;
    qel::Buffer::Reverse(vendor.GetData(), vendor.GetSize());
    std::printf("descriptor: %02X %02X\n", descriptor[0], descriptor[1]);
    std::printf("vendor: %s, its copy: %s, product: %s\n", vendor.ToHex(0, 0, "").c_str(),
                copy.ToHex(0, 0, "").c_str(), product.ToHex(0, 0, "").c_str());

    // A view has the size that it has: other sizes are refused, and nothing is written.
    if (vendor.Set(3, "\x01\x02\x03") == qel::ERROR_SIZE) std::puts("three bytes do not fit");
    if (vendor.FromHex("0100") == qel::SUCCESS) std::printf("now: %02X\n", descriptor[0]);
}
