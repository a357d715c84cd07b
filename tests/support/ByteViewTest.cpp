#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <tuple>

#include "support/ByteView.h"
#include "support/ByteWriter.h"
#include "support/Refusal.h"

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

struct Record {
    static constexpr Field<uint16_t> count{1};
    static constexpr Field<UInt24> offset{3};
    static constexpr Field<int8_t> entries{6};
};

// A field is read at its record's start plus its offset, with its type's
// width; a record or field past the end (or at an offset that would wrap)
// reads nothing.
TEST(Field, ReadsByNameWithinBounds)
{
    ByteWriter w;
    w.u8(0).u8(0).u16(0x0102).u24(0xABCDEF).u8(0xFF).u8(0x7F);
    uint16_t count = 0;
    uint32_t offset = 0;
    int8_t second = 0;
    ASSERT_TRUE(w.view().read(1, Record::count, count) && w.view().read(0, Record::offset, offset) &&
                w.view().read(0, Record::entries.at(1), second));
    EXPECT_EQ(std::make_tuple(count, offset, second), std::make_tuple(uint16_t(0x0102), 0x02ABCDu, int8_t(-1)));
    EXPECT_FALSE(w.view().read(2, Record::entries.at(1), second) || w.view().read(kHuge, Record::count, count) ||
                 w.view().read(kHuge - 1, Record::offset, offset));
    EXPECT_EQ(Record::offset.end(), 6u);
}

// Reasons are put together only while a log listens; the innermost log hears
// them, each once, the first few of many; a refusal converts to false and to
// an empty optional.
TEST(RefusalLog, HearsOnlyWhileListening)
{
    EXPECT_FALSE(bool(Refuse("unheard")));
    RefusalLog outer;
    {
        RefusalLog inner;
        const std::optional<int> none = Refuse("map: type ", uint8_t(3), " past the end");
        Refuse("map: type ", uint8_t(3), " past the end");
        EXPECT_FALSE(none);
        EXPECT_EQ(inner.text(), "map: type 3 past the end");
    }
    for (int i = 0; i < 10; ++i) Refuse("part ", i, " broken");
    EXPECT_EQ(outer.reasons().size(), RefusalLog::kKept);
    EXPECT_EQ(outer.text().substr(outer.text().size() - 25), "part 7 broken; and 2 more");
}

}  // namespace
