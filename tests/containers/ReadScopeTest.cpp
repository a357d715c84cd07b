#include "containers/ReadScope.h"

#include <gtest/gtest.h>

#include "common/MacFixtures.h"
#include "containers/FileBytes.h"
#include "support/SharedBytes.h"

namespace {

using namespace macfixtures;

TEST(SharedBytes, MappedFilesOutliveTheirFirstHolderAndSliceWithinBounds)
{
    TempDir dir;
    WriteFile(dir / "font", Text("0123456789"));
    std::optional<SharedBytes> part;
    {
        auto whole = FileBytes::Map(dir / "font");
        ASSERT_TRUE(whole);
        part = whole->slice(2, 3);
        EXPECT_FALSE(whole->slice(8, 3) || whole->slice(11, 0));
        EXPECT_TRUE(whole->slice(10, 0));
    }
    ASSERT_TRUE(part);
    EXPECT_EQ(part->view().chars(), "234");  // the mapping lives on in the slice

    EXPECT_FALSE(FileBytes::Map(dir / "missing") || FileBytes::Map(dir.path()));
}

TEST(ReadScope, NestedScopesShareOneMemoryThatTheOutermostReleases)
{
    ReadScope outer;
    ReadScope::Memory* memory = ReadScope::Active();
    { ReadScope inner; }
    EXPECT_EQ(ReadScope::Active(), memory);
}

TEST(ReadScope, AFileIsLookedUpOnceAndForgottenWhenTheLibraryWritesIt)
{
    TempDir dir;
    const std::string font = dir / "font";
    WriteFile(font, Text("first"));
    ReadScope scope;
    EXPECT_EQ(MacForks::Resolve(font).dataFork.length, 5u);
    std::vector<uint8_t> head;
    ASSERT_TRUE(FileBytes::ReadPrefix(font, 3, head));
    EXPECT_EQ(ReadScope::Active()->files.count(font) + ReadScope::Active()->resolved.count(font), 2u);

    ASSERT_TRUE(FileBytes::Rewrite(font, ByteView(std::string_view("second one"))));
    EXPECT_TRUE(ReadScope::Active()->files.empty());
    auto bytes = MacForks::ForkBytes(MacForks::Resolve(font).dataFork);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->view().chars(), "second one");
}

}  // namespace
