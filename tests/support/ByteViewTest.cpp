#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "support/ByteView.h"
#include "support/ByteWriter.h"

namespace {

constexpr size_t kHuge = std::numeric_limits<size_t>::max();

TEST(ByteView, ReadsBigEndianValues)
{
    ByteWriter w;
    w.u8(0xFE).u16(0x8001).u24(0x123456).u32(0xDEADBEEF).tag("OTTO");
    ByteView v = w.view();
    int8_t sb = 0;
    int16_t ss = 0;
    uint32_t t = 0, l = 0, code = 0;
    int32_t sl = 0;
    ASSERT_TRUE(v.i8(0, sb) && v.i16(1, ss) && v.u24(3, t) && v.u32(6, l) && v.i32(6, sl) && v.tag(10, code));
    EXPECT_EQ(sb, -2);
    EXPECT_EQ(ss, -32767);
    EXPECT_EQ(t, 0x123456u);
    EXPECT_EQ(l, 0xDEADBEEFu);
    EXPECT_EQ(sl, int32_t(0xDEADBEEF));
    EXPECT_EQ(fourCCString(code), "OTTO");
}

// Reads past the end fail and leave the output; range checks cannot overflow.
TEST(ByteView, BoundsAreCheckedWithoutOverflow)
{
    const uint8_t bytes[8] = {1, 2, 3};
    ByteView v(bytes, 3);
    uint32_t l = 77;
    uint16_t s = 77;
    uint8_t b = 77;
    EXPECT_FALSE(v.u32(0, l) || v.u16(2, s) || v.u8(3, b) || v.u8(kHuge, b));
    EXPECT_EQ(l + s + b, 3 * 77u);
    EXPECT_TRUE(v.u16(1, s));

    ByteView eight(bytes, 8);
    EXPECT_FALSE(eight.contains(4, kHuge));
    EXPECT_FALSE(eight.contains(kHuge, 4));
    EXPECT_FALSE(eight.contains(9, 0));
    EXPECT_FALSE(eight.sub(2, kHuge - 1).has_value());
    char out[8];
    EXPECT_FALSE(eight.copy(1, 8, out));
    EXPECT_TRUE(eight.chars(4, kHuge).empty());
    ByteView null(static_cast<const uint8_t*>(nullptr), 100);
    EXPECT_EQ(null.size(), 0u);
    EXPECT_FALSE(null.u8(0, b));
}

TEST(ByteView, SubViewsAreBoundedByTheirOwnLength)
{
    ByteWriter w;
    w.bytes("abcdefgh");
    auto inner = w.view().sub(2, 3);
    ASSERT_TRUE(inner);
    uint8_t b;
    EXPECT_FALSE(inner->u8(3, b));  // 'f' lies outside the sub-view
    EXPECT_FALSE(inner->startsWith("cdef"));
    EXPECT_EQ(w.view().tail(6).chars(), "gh");
}

TEST(ByteReader, AdvancesOnlyOnSuccess)
{
    ByteWriter w;
    w.u16(0x0102).u32(0x03040506).u8(7);
    ByteReader r(w.view());
    uint16_t s;
    uint32_t l;
    ASSERT_TRUE(r.u16(s) && r.u32(l));
    EXPECT_FALSE(r.u16(s));
    EXPECT_EQ(r.offset(), 6u);
    EXPECT_EQ(r.remaining(), 1u);
    EXPECT_FALSE(r.skip(2));
    EXPECT_TRUE(r.skip(1));
    EXPECT_FALSE(r.seek(8));
}

TEST(ByteWriter, PatchesOnlyWrittenBytesAndCutsPascalStrings)
{
    ByteWriter w;
    w.u32(0).pascal(std::string(300, 'x')).pad(4);
    EXPECT_EQ(w.size(), 4u + 256u);
    EXPECT_TRUE(w.putU32(0, 0xAABBCCDD));
    EXPECT_FALSE(w.putU32(w.size() - 3, 1));
    uint32_t l;
    uint8_t length;
    ASSERT_TRUE(w.view().u32(0, l) && w.view().u8(4, length));
    EXPECT_EQ(l, 0xAABBCCDDu);
    EXPECT_EQ(length, 255);
}

}  // namespace
