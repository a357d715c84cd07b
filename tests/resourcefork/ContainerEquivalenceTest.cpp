// An edited resource map goes back into the container it came from, where
// fontTools reads what we wrote; a file opened read-only is never written.
#include <gtest/gtest.h>

#include <filesystem>
#include <cctype>
#include <functional>

#include "common/MacFixtures.h"
#include "resourcefork/TypeprobeResourceFile.h"
#include "support/MacForks.h"

namespace {

using namespace macfixtures;

// The resources as the accessor hands them out, in the Listing() format.
std::string AccessorListing(const TypeprobeResourceFile& file)
{
    std::ostringstream out;
    for (int16_t t = 1; t <= file.count1ResTypes(); ++t) {
        uint32_t type = 0;
        file.getResourceTypeViaGet1IndType(&type, t);
        for (int16_t i = 1; i <= file.countResType(type); ++i) {
            ResourceHandlePtr handle = file.getResourceHandleViaGet1IndResource(type, i);
            char line[32];
            std::snprintf(line, sizeof line, " %u %08x\n", unsigned(handle->size()), Crc32(handle->data));
            out << fourCCString(type) << ' ' << handle->id << ' '
                << (handle->hasName ? "\"" + handle->name + "\"" : "-") << line;
        }
    }
    return out.str();
}

// Every file under the folder with its CRC-32.
std::string Fingerprint(const TempDir& dir)
{
    std::string out;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(dir.path()))
        if (entry.is_regular_file()) out += entry.path().string() + " " + std::to_string(Crc32(ReadFile(entry.path()))) + "\n";
    return out;
}

struct Container {
    std::string name;
    bool attributes = false;
    std::function<std::string(const TempDir&)> place;  // returns the path to open
};

void PrintTo(const Container& c, std::ostream* out) { *out << c.name; }

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
    for (const auto& [name, bytes] : dataForks)
        all.push_back({name, false, [bytes](const TempDir& dir) {
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
        if (!dataFork) {
            const std::string listing = FontToolsListing({"macbinary", fork.file});
            return listing.substr(listing.find('\n') + 1);
        }
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
    std::string original;
    uint32_t first = 0, last = 0;
    std::vector<int16_t> ids;
    {
        auto file = TypeprobeResourceFile::initWithFile(path, true);
        ASSERT_TRUE(file);
        original = AccessorListing(*file);
        file->getResourceTypeViaGet1IndType(&first, 1);
        file->getResourceTypeViaGet1IndType(&last, int16_t(file->count1ResTypes()));
        ids = file->getSortedResIDsForType(first);
        auto handle = file->getResourceHandleViaGet1IndResource(last, 1);
        EXPECT_FALSE(file->purgeResource(first, ids.back()));
        EXPECT_FALSE(file->purgeAllBut({}, first));
        EXPECT_FALSE(file->changedResource(*handle));
        EXPECT_TRUE(file->updateResFile());  // nothing pending
    }
    const std::string untouched = Fingerprint(dir);
    EXPECT_EQ(AccessorListing(*TypeprobeResourceFile::initWithFile(path, true)), original);
    EXPECT_EQ(Fingerprint(dir), untouched);

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
    EXPECT_EQ(after.resourceContainer, before.resourceContainer);
    EXPECT_EQ(after.dataContainer, before.dataContainer);
    EXPECT_EQ(fourCCString(after.fileType), fourCCString(before.fileType));
    EXPECT_EQ(fourCCString(after.fileCreator), fourCCString(before.fileCreator));

    auto reopened = TypeprobeResourceFile::initWithFile(path, true);
    ASSERT_TRUE(reopened);
    ids.pop_back();
    EXPECT_EQ(reopened->getSortedResIDsForType(first), ids);
    auto renamed = reopened->getResourceHandleForType(last, 200);
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed->name, "Renamed");
    EXPECT_EQ(renamed->data, Text("edited"));
    if (FontToolsAvailable()) {
        EXPECT_EQ(FontToolsListingOf(after, reopened->isDataFork()), AccessorListing(*reopened));
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
