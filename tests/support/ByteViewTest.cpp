#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <tuple>

#include "support/ByteView.h"
#include "support/ByteWriter.h"

namespace {

constexpr size_t kHuge = std::numeric_limits<size_t>::max();

TEST(ByteView, ReadsBigEndianValues)
{
    ByteWriter w;
    w.u8(0xFE).u16(0x8001).u24(0x123456).u32(0xDEADBEEF);
    int8_t sb = 0;
    int16_t ss = 0;
    int32_t sl = 0;
    uint32_t t = 0;
    ASSERT_TRUE(w.view().i8(0, sb) && w.view().i16(1, ss) && w.view().u24(3, t) && w.view().i32(6, sl));
    EXPECT_EQ(std::make_tuple(sb, ss, t, sl), std::make_tuple(int8_t(-2), int16_t(-32767), 0x123456u, int32_t(0xDEADBEEF)));
}

// Reads past the end fail and leave the output; range checks cannot
// overflow; a sub-view is bounded by its own length.
TEST(ByteView, BoundsAreCheckedWithoutOverflow)
{
    const uint8_t bytes[8] = {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'};
    const ByteView v(bytes, 3), eight(bytes, 8);
    uint32_t l = 77;
    uint16_t s = 77;
    uint8_t b = 77;
    char out[8];
    EXPECT_FALSE(v.u32(0, l) || v.u16(2, s) || v.u8(3, b) || v.u8(kHuge, b));
    EXPECT_EQ(l + s + b, 3 * 77u);
    EXPECT_TRUE(v.u16(1, s));
    EXPECT_FALSE(eight.contains(4, kHuge) || eight.contains(kHuge, 4) || eight.contains(9, 0) || eight.copy(1, 8, out));
    EXPECT_FALSE(eight.sub(2, kHuge - 1).has_value());
    EXPECT_TRUE(eight.chars(4, kHuge).empty());
    const ByteView null(static_cast<const uint8_t*>(nullptr), 100);
    EXPECT_EQ(null.size(), 0u);
    auto inner = eight.sub(2, 3);
    ASSERT_TRUE(inner);
    EXPECT_FALSE(inner->u8(3, b) || inner->startsWith("cdef"));  // 'f' lies outside the sub-view
    EXPECT_EQ(eight.tail(6).chars(), "gh");
}

TEST(ByteReader, AdvancesOnlyOnSuccess)
{
    ByteWriter w;
    w.u16(0x0102).u32(0x03040506).u8(7);
    ByteReader r(w.view());
    uint16_t s;
    uint32_t l;
    ASSERT_TRUE(r.u16(s) && r.u32(l));
    EXPECT_FALSE(r.u16(s) || r.skip(2));
    EXPECT_EQ(std::make_pair(r.offset(), r.remaining()), std::make_pair(size_t(6), size_t(1)));
    EXPECT_TRUE(r.skip(1) && !r.seek(8));
}

}  // namespace
