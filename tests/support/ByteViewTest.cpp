#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "support/ByteView.h"
#include "support/ByteWriter.h"

namespace {

TEST(ByteView, ReadsBigEndianValues)
{
    ByteWriter w;
    w.u8(0xFE).u16(0x8001).u24(0x123456).u32(0xDEADBEEF).tag("OTTO");
    ByteView v = w.view();
    uint8_t b = 0;
    int8_t sb = 0;
    uint16_t s = 0;
    int16_t ss = 0;
    uint32_t t = 0, l = 0, code = 0;
    int32_t sl = 0;
    ASSERT_TRUE(v.u8(0, b) && v.i8(0, sb) && v.u16(1, s) && v.i16(1, ss) && v.u24(3, t) &&
                v.u32(6, l) && v.i32(6, sl) && v.tag(10, code));
    EXPECT_EQ(b, 0xFE);
    EXPECT_EQ(sb, -2);
    EXPECT_EQ(s, 0x8001);
    EXPECT_EQ(ss, -32767);
    EXPECT_EQ(t, 0x123456u);
    EXPECT_EQ(l, 0xDEADBEEFu);
    EXPECT_EQ(sl, int32_t(0xDEADBEEF));
    EXPECT_EQ(code, fourCC("OTTO"));
    EXPECT_EQ(fourCCString(code), "OTTO");
}

TEST(ByteView, EveryReadPastTheEndFailsAndLeavesTheOutput)
{
    const uint8_t bytes[3] = {1, 2, 3};
    ByteView v(bytes, sizeof bytes);
    uint32_t l = 77;
    uint16_t s = 77;
    uint8_t b = 77;
    EXPECT_FALSE(v.u32(0, l));
    EXPECT_FALSE(v.u16(2, s));
    EXPECT_FALSE(v.u8(3, b));
    EXPECT_FALSE(v.u8(std::numeric_limits<size_t>::max(), b));
    EXPECT_EQ(l, 77u);
    EXPECT_EQ(s, 77);
    EXPECT_EQ(b, 77);
    EXPECT_TRUE(v.u16(1, s));
}

TEST(ByteView, RangeChecksCannotOverflow)
{
    const uint8_t bytes[8] = {};
    ByteView v(bytes, sizeof bytes);
    const size_t huge = std::numeric_limits<size_t>::max();
    EXPECT_FALSE(v.contains(4, huge));
    EXPECT_FALSE(v.contains(huge, 4));
    EXPECT_TRUE(v.contains(8, 0));
    EXPECT_FALSE(v.contains(9, 0));
    EXPECT_FALSE(v.sub(2, huge - 1).has_value());
    char out[8];
    EXPECT_FALSE(v.copy(1, 8, out));
    EXPECT_TRUE(v.chars(4, huge).empty());
}

TEST(ByteView, SubViewsAreBoundedByTheirOwnLength)
{
    ByteWriter w;
    w.bytes("abcdefgh");
    auto inner = w.view().sub(2, 3);
    ASSERT_TRUE(inner);
    EXPECT_EQ(inner->chars(), "cde");
    uint8_t b;
    EXPECT_FALSE(inner->u8(3, b));  // 'f' lies outside the sub-view
    EXPECT_EQ(w.view().tail(6).chars(), "gh");
    EXPECT_TRUE(w.view().tail(8).empty());
    EXPECT_TRUE(w.view().tail(100).empty());
    EXPECT_TRUE(w.view().startsWith("abc"));
    EXPECT_FALSE(inner->startsWith("cdef"));
}

TEST(ByteView, NullDataIsAnEmptyView)
{
    ByteView v(static_cast<const uint8_t*>(nullptr), 100);
    uint8_t b;
    EXPECT_EQ(v.size(), 0u);
    EXPECT_FALSE(v.u8(0, b));
}

TEST(ByteReader, AdvancesOnlyOnSuccess)
{
    ByteWriter w;
    w.u16(0x0102).u32(0x03040506).u8(7);
    ByteReader r(w.view());
    uint16_t s;
    uint32_t l;
    ASSERT_TRUE(r.u16(s) && r.u32(l));
    EXPECT_EQ(r.offset(), 6u);
    EXPECT_FALSE(r.u16(s));
    EXPECT_EQ(r.offset(), 6u);
    EXPECT_EQ(r.remaining(), 1u);
    EXPECT_FALSE(r.skip(2));
    EXPECT_TRUE(r.skip(1));
    EXPECT_FALSE(r.seek(8));
    EXPECT_TRUE(r.seek(2));
    ByteView rest;
    ASSERT_TRUE(r.bytes(4, rest));
    EXPECT_EQ(rest.size(), 4u);
}

TEST(ByteWriter, PatchesOnlyWrittenBytesAndPads)
{
    ByteWriter w;
    w.u32(0).pascal(std::string(300, 'x')).pad(4);
    EXPECT_EQ(w.size(), 4u + 256u);
    EXPECT_TRUE(w.putU32(0, 0xAABBCCDD));
    EXPECT_FALSE(w.putU32(w.size() - 3, 1));
    uint32_t l;
    ASSERT_TRUE(w.view().u32(0, l));
    EXPECT_EQ(l, 0xAABBCCDDu);
    uint8_t length;
    ASSERT_TRUE(w.view().u8(4, length));
    EXPECT_EQ(length, 255);
}

}  // namespace
