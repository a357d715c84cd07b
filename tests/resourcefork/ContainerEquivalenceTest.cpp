// An edited resource map goes back into the container it came from; a file
// opened read-only is never written.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "common/MacFixtures.h"
#include "resourcefork/TypeprobeResourceFile.h"
#include "containers/MacForks.h"

namespace {

using namespace macfixtures;

// Every file under the folder with its CRC-32 and change time (which an
// attribute written also moves).
std::string Fingerprint(const TempDir& dir)
{
    std::string out;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(dir.path())) {
        struct stat info = {};
        if (entry.is_regular_file() && ::stat(entry.path().c_str(), &info) == 0)
            out += entry.path().string() + " " + std::to_string(Crc32(ReadFile(entry.path()))) + " " +
                   std::to_string(info.st_ctim.tv_sec) + "." + std::to_string(info.st_ctim.tv_nsec) + "\n";
    }
    return out;
}

// Containers 0..10 hold a suitcase (NFNT strikes, then its FOND) in each
// layout; 11..13 a data-fork resource file (one outline, then its FOND)
// bare, in AppleSingle and in MacBinary.
std::string PlaceContainer(int container, const TempDir& dir)
{
    if (container < 11) {
        const Bytes original = ReadFile(CorpusPath("ps-family/DejaVuSerif.bin"));
        return Place(kLayouts[container], PartsOfMacBinary(original), original, dir);
    }
    const MacParts dfont{"font.dfont", fourCC("dfon"), fourCC("DMOV"), ReadFile(CorpusPath("dfont/DejaVuSans.dfont")), {}};
    WriteFile(dir / "font.dfont", container == 11 ? dfont.data : container == 12 ? AppleSingleFile(dfont) : MacBinaryFile(dfont, 3));
    return dir / "font.dfont";
}

class EditedMap : public testing::TestWithParam<int> {};

TEST_P(EditedMap, IsWrittenBackIntoItsOwnContainer)
{
    const bool attributes = GetParam() < 11 && UsesAttributes(kLayouts[GetParam()]);
    const std::string base = attributes ? AttributeFolder(65536) : "";
    if (attributes && base.empty()) GTEST_SKIP() << "no file system here keeps extended attributes";
    TempDir dir(base);
    const std::string path = PlaceContainer(GetParam(), dir);
    const MacFile before = MacForks::Resolve(path);
    const std::string untouched = Fingerprint(dir);
    uint32_t first = 0, last = 0;  // edits to the first and the last type
    std::vector<int16_t> ids;
    {
        auto file = TypeprobeResourceFile::initWithFile(path, true);
        ASSERT_TRUE(file);
        file->getResourceTypeViaGet1IndType(&first, 1);
        file->getResourceTypeViaGet1IndType(&last, int16_t(file->count1ResTypes()));
        ids = file->getSortedResIDsForType(first);
        EXPECT_FALSE(file->purgeResource(first, ids.back()));
        EXPECT_FALSE(file->purgeAllBut({}, first));
        EXPECT_FALSE(file->changedResource(*file->getResourceHandleViaGet1IndResource(last, 1)));
        EXPECT_TRUE(file->updateResFile());  // nothing pending
    }
    EXPECT_EQ(Fingerprint(dir), untouched);  // read-only: never written
    {
        auto file = TypeprobeResourceFile::initWithFile(path, false);
        ASSERT_TRUE(file);
        EXPECT_TRUE(file->purgeResource(first, ids.back()));
        EXPECT_FALSE(file->purgeResource(first, ids.back()));
        auto handle = file->getResourceHandleViaGet1IndResource(last, 1);
        handle->data = Text("edited");
        EXPECT_TRUE(file->changedResource(*handle));
        EXPECT_TRUE(file->setResInfo(*handle, 200, "Renamed"));
    }  // written when the file is closed
    const MacFile after = MacForks::Resolve(path);
    EXPECT_EQ(std::make_tuple(after.resourceContainer, after.dataContainer, after.fileType, after.fileCreator),
              std::make_tuple(before.resourceContainer, before.dataContainer, before.fileType, before.fileCreator));
    auto reopened = TypeprobeResourceFile::initWithFile(path, true);
    ASSERT_TRUE(reopened);
    ids.pop_back();
    EXPECT_EQ(reopened->getSortedResIDsForType(first), ids);
    auto renamed = reopened->getResourceHandleForType(last, 200);
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed->name + ":" + std::string(renamed->data.begin(), renamed->data.end()), "Renamed:edited");
}

INSTANTIATE_TEST_SUITE_P(Containers, EditedMap, testing::Range(0, 14));

}  // namespace
