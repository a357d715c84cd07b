// Every way a Mac file reaches a Linux disk, holding the same forks, must
// yield the same resources, type and creator; and an edited map must be
// written back into the same kind of container, readable by us and by
// fontTools.
#include <gtest/gtest.h>

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
            if (!handle) return "missing handle";
            int16_t id = 0;
            uint32_t infoType = 0;
            std::string name;
            TypeprobeResourceFile::GetResInfo(handle.get(), &id, &infoType, &name);
            char line[64];
            std::snprintf(line, sizeof line, " %u %08x\n", unsigned(handle->size()),
                          Crc32(handle->data));
            out << fourCCString(infoType) << ' ' << id << ' '
                << (handle->hasName ? "\"" + name + "\"" : std::string("-")) << line;
        }
    }
    return out.str();
}

const char* kResourceFiles[] = {
    "tt-family/DejaVuSans.suit", "ps-family/DejaVuSerif.bin",      "ps-family/DejaVuSer.bin",
    "ps-family/DejaVuSerBol.bin", "ps-family/DejaVuSerIta.bin",    "ps-family/DejaVuSerBolIta.bin",
};

// Linux keeps at most 64 KiB in one attribute.
constexpr size_t kAttributeLimit = 65536;

TEST(ContainerEquivalence, EveryContainerYieldsTheSameResourcesTypeAndCreator)
{
    const std::string attributeBase = AttributeFolder(kAttributeLimit);
    int compared = 0;
    for (const char* relative : kResourceFiles) {
        const Bytes original = ReadFile(CorpusPath(relative));
        const MacParts parts = PartsOfMacBinary(original);
        auto reference = ResourceMap::Parse(parts.resource);
        ASSERT_TRUE(reference) << relative;
        const std::string expected = Listing(*reference);
        for (Layout layout : kLayouts) {
            if (UsesAttributes(layout) &&
                (attributeBase.empty() || parts.resource.size() > kAttributeLimit))
                continue;
            SCOPED_TRACE(std::string(relative) + " as " + LayoutName(layout));
            TempDir dir(UsesAttributes(layout) ? attributeBase : "");
            const std::string path = Place(layout, parts, original, dir);

            const MacForkInfo info = MacForks::Describe(path);
            EXPECT_TRUE(info.exists);
            EXPECT_TRUE(info.hasFinderInfo);
            EXPECT_EQ(fourCCString(info.fileType), fourCCString(parts.type));
            EXPECT_EQ(fourCCString(info.fileCreator), fourCCString(parts.creator));
            EXPECT_EQ(info.dataForkLength, 0u);
            EXPECT_EQ(info.resourceForkLength, parts.resource.size());

            auto file = TypeprobeResourceFile::initWithFile(path, true);
            ASSERT_TRUE(file);
            EXPECT_FALSE(file->isDataFork());
            EXPECT_EQ(AccessorListing(*file), expected);
            ++compared;
        }
    }
    // 6 files x 9 layouts, plus the attribute layouts for the 5 forks that fit.
    EXPECT_EQ(compared, attributeBase.empty() ? 54 : 64);
}

TEST(ContainerEquivalence, DataForkResourceFilesInEveryDataForkContainer)
{
    for (const char* relative : {"dfont/DejaVuSans.dfont", "otf-dfont/DejaVuSans.otf.dfont"}) {
        MacParts parts;
        parts.name = "DejaVuSans.dfont";
        parts.type = fourCC("dfon");
        parts.creator = fourCC("DMOV");
        parts.data = ReadFile(CorpusPath(relative));
        auto reference = ResourceMap::Parse(parts.data);
        ASSERT_TRUE(reference);
        TempDir dir;
        const std::vector<std::pair<const char*, Bytes>> containers = {
            {"plain", parts.data},
            {"AppleSingle", AppleSingleFile(parts)},
            {"MacBinary", MacBinaryFile(parts, 3)},
        };
        for (const auto& [kind, bytes] : containers) {
            SCOPED_TRACE(std::string(relative) + " as " + kind);
            WriteFile(dir / "font.dfont", bytes);
            auto file = TypeprobeResourceFile::initWithFile(dir / "font.dfont", true);
            ASSERT_TRUE(file);
            EXPECT_TRUE(file->isDataFork());
            EXPECT_EQ(AccessorListing(*file), Listing(*reference));
            EXPECT_EQ(MacForks::Describe(dir / "font.dfont").dataForkLength, parts.data.size());
        }
    }
}

// fontTools' view of the resource fork where Resolve says it is; for
// MacBinary II and III the header CRC is checked and the fork found apart.
std::string FontToolsListingOfFork(const MacFile& file, bool checkCrc)
{
    const ForkLocation& fork = file.resourceFork;
    if (file.resourceContainer == MacContainer::MacBinary && checkCrc) {
        std::string listing = FontToolsListing({"macbinary", fork.file});
        if (listing.rfind("crc ok\n", 0) != 0) return "bad MacBinary CRC: " + listing;
        return listing.substr(7);
    }
    if (fork.kind == ForkLocation::Kind::Attribute)
        return FontToolsListing({"xattr", fork.file, fork.attribute});
    return FontToolsListing({"range", fork.file, std::to_string(fork.offset), std::to_string(fork.length)});
}

TEST(ContainerEquivalence, PurgedMapIsWrittenBackIntoItsContainer)
{
    const bool oracle = FontToolsAvailable();
    const std::string attributeBase = AttributeFolder(kAttributeLimit);
    const Bytes original = ReadFile(CorpusPath("ps-family/DejaVuSer.bin"));
    const MacParts parts = PartsOfMacBinary(original);
    auto reference = ResourceMap::Parse(parts.resource);
    ASSERT_TRUE(reference);
    const size_t posts = reference->count(fourCC("POST"));
    ASSERT_GT(posts, 10u);

    for (Layout layout : kLayouts) {
        if (UsesAttributes(layout) && attributeBase.empty()) continue;
        SCOPED_TRACE(LayoutName(layout));
        TempDir dir(UsesAttributes(layout) ? attributeBase : "");
        const std::string path = Place(layout, parts, original, dir);
        {
            auto file = TypeprobeResourceFile::initWithFile(path, false);
            ASSERT_TRUE(file);
            EXPECT_TRUE(file->purgeResource(fourCC("POST"), 502));
            EXPECT_FALSE(file->purgeResource(fourCC("POST"), 502));
            EXPECT_TRUE(file->purgeAllBut({501, 503, 504, 505}, fourCC("POST")));
            EXPECT_FALSE(file->purgeAllBut({501, 503, 504, 505}, fourCC("POST")));
            EXPECT_TRUE(file->updateResFile());
        }
        const MacFile resolved = MacForks::Resolve(path);
        EXPECT_EQ(resolved.resourceContainer == MacContainer::MacBinary,
                  layout == Layout::MacBinaryIII || layout == Layout::MacBinaryII ||
                      layout == Layout::MacBinaryI || layout == Layout::BinSibling);
        const MacForkInfo info = resolved.info();
        EXPECT_EQ(info.fileType, parts.type);
        EXPECT_EQ(info.fileCreator, parts.creator);

        auto reopened = TypeprobeResourceFile::initWithFile(path, true);
        ASSERT_TRUE(reopened);
        EXPECT_EQ(reopened->getSortedResIDsForType(fourCC("POST")),
                  (std::vector<int16_t>{501, 503, 504, 505}));
        auto handle = reopened->getResourceHandleForType(fourCC("POST"), 503);
        ASSERT_TRUE(handle);
        EXPECT_EQ(Crc32(handle->data), [&] {
            const ResourceRecord* r = reference->find(fourCC("POST"), 503);
            return uint32_t(crc32(0, r->data.data(), uInt(r->data.size())));
        }());
        const std::string ours = AccessorListing(*reopened);
        if (oracle) {
            EXPECT_EQ(FontToolsListingOfFork(resolved, layout != Layout::MacBinaryI), ours);
        }
    }
}

TEST(ContainerEquivalence, EditedDataForkResourceFileIsRewrittenInPlace)
{
    TempDir dir;
    const Bytes dfont = ReadFile(CorpusPath("dfont/DejaVuSans.dfont"));
    WriteFile(dir / "DejaVuSans.dfont", dfont);
    {
        auto file = TypeprobeResourceFile::initWithFile(dir / "DejaVuSans.dfont", false);
        ASSERT_TRUE(file);
        auto fond = file->getResourceHandleForType(fourCC("FOND"), 13490);
        ASSERT_TRUE(fond);
        fond->data.resize(54);
        EXPECT_TRUE(file->changedResource(*fond));
        EXPECT_TRUE(file->setResInfo(*fond, 200, "Renamed"));
        EXPECT_TRUE(file->purgeResource(fourCC("sfnt"), 13490));
    }  // written when the file is closed
    auto reopened = TypeprobeResourceFile::initWithFile(dir / "DejaVuSans.dfont", true);
    ASSERT_TRUE(reopened);
    EXPECT_TRUE(reopened->isDataFork());
    EXPECT_EQ(reopened->countResType(fourCC("sfnt")), 0);
    auto fond = reopened->getResourceHandleForType(fourCC("FOND"), 200);
    ASSERT_TRUE(fond);
    EXPECT_EQ(fond->name, "Renamed");
    EXPECT_EQ(fond->size(), 54u);
    if (FontToolsAvailable()) {
        EXPECT_EQ(FontToolsListing({"raw", dir / "DejaVuSans.dfont"}), AccessorListing(*reopened));
    }
}

TEST(ContainerEquivalence, ReadOnlyFilesAreNeverWritten)
{
    TempDir dir;
    const Bytes original = ReadFile(CorpusPath("ps-family/DejaVuSer.bin"));
    WriteFile(dir / "DejaVuSer", original);
    {
        auto file = TypeprobeResourceFile::initWithFile(dir / "DejaVuSer", true);
        ASSERT_TRUE(file);
        EXPECT_FALSE(file->purgeResource(fourCC("POST"), 501));
        EXPECT_FALSE(file->purgeAllBut({}, fourCC("POST")));
        auto handle = file->getResourceHandleForType(fourCC("POST"), 501);
        ASSERT_TRUE(handle);
        EXPECT_FALSE(file->changedResource(*handle));
        EXPECT_TRUE(file->updateResFile());  // nothing pending
    }
    EXPECT_EQ(ReadFile(dir / "DejaVuSer"), original);
}

}  // namespace
