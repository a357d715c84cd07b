// An edited resource map goes back into the container it came from, where
// fontTools reads what we wrote; a file opened read-only is never written.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cctype>
#include <filesystem>
#include <functional>

#include "common/MacFixtures.h"
#include "resourcefork/TypeprobeResourceFile.h"
#include "support/MacForks.h"

namespace {

using namespace macfixtures;

// Every file under the folder with its CRC-32 and change time (which an
// attribute written also moves).
std::string Fingerprint(const TempDir& dir)
{
    std::string out;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(dir.path())) {
        struct stat info = {};
        if (!entry.is_regular_file() || ::stat(entry.path().c_str(), &info) != 0) continue;
        out += entry.path().string() + " " + std::to_string(Crc32(ReadFile(entry.path()))) + " " +
               std::to_string(info.st_ctim.tv_sec) + "." + std::to_string(info.st_ctim.tv_nsec) + "\n";
    }
    return out;
}

struct Container {
    std::string name;
    bool attributes = false;
    std::function<std::string(const TempDir&)> place;  // returns the path to open
};

void PrintTo(const Container& c, std::ostream* out) { *out << c.name; }

std::string Data(const Bytes& bytes) { return std::string(bytes.begin(), bytes.end()); }

std::vector<Container> Containers()
{
    std::vector<Container> all;
    for (Layout layout : kLayouts)  // a suitcase: NFNT strikes, then its FOND
        all.push_back({LayoutName(layout), UsesAttributes(layout), [layout](const TempDir& dir) {
                           const Bytes original = ReadFile(CorpusPath("ps-family/DejaVuSerif.bin"));
                           return Place(layout, PartsOfMacBinary(original), original, dir);
                       }});
    // A data-fork resource file: one outline, then its FOND.
    MacParts dfont{"DejaVuSans.dfont", fourCC("dfon"), fourCC("DMOV"), ReadFile(CorpusPath("dfont/DejaVuSans.dfont")), {}};
    const std::pair<const char*, Bytes> dataForks[] = {
        {"dfont", dfont.data}, {"dfont in AppleSingle", AppleSingleFile(dfont)}, {"dfont in MacBinary", MacBinaryFile(dfont, 3)}};
    for (const auto& [name, fileBytes] : dataForks)
        all.push_back({name, false, [bytes = fileBytes](const TempDir& dir) {
                           WriteFile(dir / "font.dfont", bytes);
                           return dir / "font.dfont";
                       }});
    return all;
}

// fontTools' view of the fork where Resolve says it is; a MacBinary
// resource fork is found by the format's own arithmetic, its CRC checked.
std::string FontToolsListingOf(const MacFile& file, bool dataFork)
{
    const ForkLocation& fork = dataFork ? file.dataFork : file.resourceFork;
    const bool macBinary = (dataFork ? file.dataContainer : file.resourceContainer) == MacContainer::MacBinary;
    if (macBinary) {
        const Bytes head = Slice(ReadFile(fork.file), 0, 128);
        if (head[122] && XmodemCrc(head.data(), 124) != ((head[124] << 8) | head[125])) return "bad MacBinary CRC";
        if (!dataFork) return FontToolsListing({"macbinary", fork.file});
    }
    if (fork.kind == ForkLocation::Kind::Attribute) return FontToolsListing({"xattr", fork.file, fork.attribute});
    return FontToolsListing({"range", fork.file, std::to_string(fork.offset), std::to_string(fork.length)});
}

class EditedMap : public testing::TestWithParam<Container> {};

TEST_P(EditedMap, IsWrittenBackIntoItsOwnContainer)
{
    const Container& container = GetParam();
    const std::string base = container.attributes ? AttributeFolder(65536) : "";
    if (container.attributes && base.empty()) GTEST_SKIP() << "no file system here keeps extended attributes";
    TempDir dir(base);
    const std::string path = container.place(dir);
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
    EXPECT_EQ(renamed->name + ":" + Data(renamed->data), "Renamed:edited");
    Bytes fork;
    ASSERT_TRUE(MacForks::ReadFork(reopened->isDataFork() ? after.dataFork : after.resourceFork, fork));
    const std::string listing = Listing(*ResourceMap::Parse(fork));
    EXPECT_NE(listing.find("\"Renamed\" 6 "), std::string::npos) << listing;
    if (FontToolsAvailable()) {
        EXPECT_EQ(FontToolsListingOf(after, reopened->isDataFork()), listing);
    }
}

INSTANTIATE_TEST_SUITE_P(Containers, EditedMap, testing::ValuesIn(Containers()),
                         [](const testing::TestParamInfo<Container>& info) {
                             std::string name = info.param.name;
                             for (char& c : name)
                                 if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                             return name;
                         });

}  // namespace
