#include <gtest/gtest.h>

#include <algorithm>

#include "resourcefork/ResourceFileAccess.h"
#include "support/ByteWriter.h"

namespace {

std::string corpus(const std::string& name)
{
    return std::string(TYPEPROBE_TEST_DATA_DIR) + "/mac/" + name;
}

TEST(ResourceFileAccess, EveryWrapperAcceptsANullFile)
{
    ResourceHandle fond;
    EXPECT_EQ(countResType(nullptr, kTypeFOND), 0);
    EXPECT_EQ(getHandleOfTypeAndIndex(nullptr, kTypeFOND, 1), nullptr);
    EXPECT_EQ(getHandleOfTypeAndResID(nullptr, kTypeFOND, 1), nullptr);
    EXPECT_TRUE(getSortedResIDsForType(nullptr, kTypeFOND).empty());
    EXPECT_TRUE(getPrinterFiles(nullptr).empty());
    EXPECT_EQ(getCountOfUniqueStyles(nullptr, &fond), 0);
    EXPECT_EQ(getStyleFromStyleIndex(nullptr, &fond, 0), -1);
    EXPECT_EQ(getFirstResourceIDFromHandleAndStyle(nullptr, &fond, 0), -1);
    EXPECT_TRUE(getSortedResIDsForStyle(nullptr, &fond, -1).empty());
    EXPECT_FALSE(has_ttc_true_Flag(nullptr, &fond, 0));
    EXPECT_FALSE(has_OTTO_Flag_inResource(nullptr, &fond, 0));
    EXPECT_FALSE(is_psfont(nullptr));
    EXPECT_FALSE(is_psprinterfont(nullptr));
    EXPECT_FALSE(FileHasFONDsInResourceFork(nullptr));
    EXPECT_FALSE(FileHasPOSTsInResourceFork(nullptr));
    EXPECT_FALSE(hasValidResourcePSHeader(nullptr));
}

TEST(ResourceFileAccess, EveryStyleTogetherIsEachStylesIDsJoined)
{
    ResourceFilePtr file = AllocateResourceFile(corpus("tt-family/DejaVuSans.suit"), true);
    ASSERT_TRUE(file);
    // Two thousand entries over 700 styles, IDs repeated across styles.
    ByteWriter bytes;
    bytes.zeros(52).u16(1999);
    for (int i = 0; i < 2000; ++i) bytes.u16(i % 3 ? 12 : 0).u16(uint16_t(i * 3 % 700)).u16(uint16_t(i % 500));
    ResourceHandle fond;
    fond.data = bytes.take();
    const std::vector<int16_t> styles = file->getSortedStylesForFOND(&fond);
    ASSERT_EQ(styles.size(), 700u);
    EXPECT_TRUE(std::is_sorted(styles.begin(), styles.end()));
    std::vector<int16_t> joined;
    for (int16_t style : styles) {
        const std::vector<int16_t> ids = getSortedResIDsForStyle(file.get(), &fond, style);
        EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
        joined.insert(joined.end(), ids.begin(), ids.end());
    }
    std::sort(joined.begin(), joined.end());
    EXPECT_EQ(getSortedResIDsForStyle(file.get(), &fond, -1), joined);
    EXPECT_EQ(getStyleFromStyleIndex(file.get(), &fond, 699), styles.back());
}

TEST(ResourceFileAccess, TrueTypeSuitcase)
{
    ResourceFilePtr file = AllocateResourceFile(corpus("tt-family/DejaVuSans.suit"), true);
    ASSERT_TRUE(file);
    EXPECT_TRUE(FileHasFONDsInResourceFork(file.get()));
    EXPECT_FALSE(FileHasPOSTsInResourceFork(file.get()));
    EXPECT_TRUE(is_psfont(file.get()));  // it carries NFNT strikes
    ResourceHandlePtr fond = getHandleOfTypeAndIndex(file.get(), kTypeFOND, 1);
    ASSERT_TRUE(fond);
    EXPECT_EQ(getCountOfUniqueStyles(file.get(), fond.get()), 4);
    EXPECT_EQ(getStyleFromStyleIndex(file.get(), fond.get(), 3), 3);
    EXPECT_EQ(getStyleFromStyleIndex(file.get(), fond.get(), 4), -1);
    EXPECT_EQ(getFirstResourceIDFromHandleAndStyle(file.get(), fond.get(), 2), 13492);
    EXPECT_EQ(getFirstResourceIDFromHandleAndStyle(file.get(), fond.get(), -1), -1);
    EXPECT_EQ(getSortedResIDsForStyle(file.get(), fond.get(), 1),
              (std::vector<int16_t>{13491, 13491}));
    EXPECT_EQ(getSortedResIDsForStyle(file.get(), fond.get(), -1).size(), 8u);
    for (int16_t style = 0; style < 4; ++style) {
        EXPECT_TRUE(has_ttc_true_Flag(file.get(), fond.get(), style));
        EXPECT_FALSE(has_OTTO_Flag_inResource(file.get(), fond.get(), style));
    }
    FreeResourceFile(file);
    EXPECT_FALSE(file);
}

TEST(ResourceFileAccess, OpenTypeDataForkFont)
{
    ResourceFilePtr file = AllocateResourceFile(corpus("otf-dfont/DejaVuSans.otf.dfont"), true);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->isDataFork());
    ResourceHandlePtr fond = getHandleOfTypeAndIndex(file.get(), kTypeFOND, 1);
    ASSERT_TRUE(fond);
    EXPECT_TRUE(has_OTTO_Flag_inResource(file.get(), fond.get(), 0));
    EXPECT_FALSE(has_ttc_true_Flag(file.get(), fond.get(), 0));
    EXPECT_FALSE(is_psfont(file.get()));
}

TEST(ResourceFileAccess, PrinterFont)
{
    ResourceFilePtr file = AllocateResourceFile(corpus("ps-family/DejaVuSerBol.bin"), true);
    ASSERT_TRUE(file);
    EXPECT_TRUE(FileHasPOSTsInResourceFork(file.get()));
    EXPECT_TRUE(is_psprinterfont(file.get()));
    EXPECT_FALSE(FileHasFONDsInResourceFork(file.get()));
    EXPECT_FALSE(hasValidResourcePSHeader(file.get()));
}

}  // namespace
