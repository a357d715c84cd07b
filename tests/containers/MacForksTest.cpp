#include "containers/MacForks.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "common/MacFixtures.h"

namespace {

using namespace macfixtures;

// Places that can hold a resource fork or Finder info for root/a/b/Font: the
// first four are extended attributes (Apple's fork and info, Apple's info
// alone, Apple's info of zeros, Netatalk's fork and metadata), then the
// sidecar a/b/._Font (full; Finder info only; an 8-byte Finder info of type
// and creator alone), a/b/.AppleDouble/Font, __MACOSX/a/b/._Font and the
// nearer a/__MACOSX/b/._Font, and the file itself as MacBinary.
enum class Source { None = -1, AppleAttributes, AppleInfoOnly, AppleZeroInfo, NetatalkAttributes, DotUnderscore,
                    DotUnderscoreInfo, DotUnderscoreType, NetatalkFolder, MacOSXFolder, NearerMacOSXFolder, SelfMacBinary };

// Every place gets its own resource fork (one resource whose ID numbers the
// place) and its own Finder type, so the winner can be told apart.
MacParts PartsFor(Source s)
{
    const int n = int(s);
    return {"Font", fourCC("src0") + uint32_t(n), fourCC("test"), Text("inner data fork"),
            ResourceFile({{"SRC ", int16_t(100 + n), std::nullopt, Text("fork")}})};
}

void Add(const TempDir& dir, Source s)
{
    const MacParts p = PartsFor(s);
    const std::string font = dir / "a/b/Font", sidecar = dir / "a/b/._Font";
    switch (s) {
    case Source::None: return;
    case Source::AppleAttributes: SetAttribute(font, "user.com.apple.ResourceFork", p.resource); [[fallthrough]];
    case Source::AppleInfoOnly: SetAttribute(font, "user.com.apple.FinderInfo", p.finderInfo()); return;
    case Source::AppleZeroInfo: SetAttribute(font, "user.com.apple.FinderInfo", Bytes(32, 0)); return;
    case Source::NetatalkAttributes:
        SetAttribute(font, "user.org.netatalk.ResourceFork", p.resource);
        SetAttribute(font, "user.org.netatalk.Metadata", NetatalkMetadata(p));
        return;
    case Source::DotUnderscore: WriteFile(sidecar, MacOSXDotUnderscore(p)); return;
    case Source::DotUnderscoreInfo: WriteFile(sidecar, AppleContainer(0x00051607, "Mac OS X", {{9, p.finderInfo()}})); return;
    case Source::DotUnderscoreType: WriteFile(sidecar, AppleContainer(0x00051607, "", {{9, Slice(p.finderInfo(), 0, 8)}})); return;
    case Source::NetatalkFolder: WriteFile(dir / "a/b/.AppleDouble/Font", PlainAppleDouble(p)); return;
    case Source::MacOSXFolder: WriteFile(dir / "__MACOSX/a/b/._Font", MacOSXDotUnderscore(p)); return;
    case Source::NearerMacOSXFolder: WriteFile(dir / "a/__MACOSX/b/._Font", MacOSXDotUnderscore(p)); return;
    case Source::SelfMacBinary: WriteFile(font, MacBinaryFile(p, 3)); return;
    }
}

// Which place the resource fork came from (-1: none).
int ResourceSource(const std::string& path)
{
    Bytes fork;
    if (!MacForks::ReadResourceFork(path, fork)) return -1;
    auto map = ResourceMap::Parse(fork);
    if (!map || map->records().size() != 1) return -2;
    return map->records()[0].id - 100;
}

TEST(MacForks, ResolutionFollowsTheDocumentedOrder)
{
    using S = Source;
    const char* plain = "plain data fork";
    const struct {
        std::vector<Source> sources;
        Source resourceFrom, finderFrom;
        const char* dataFork;  // null: the whole file
    } cases[] = {
        {{}, S::None, S::None, plain},
        {{S::AppleAttributes, S::NetatalkAttributes, S::DotUnderscore, S::NetatalkFolder, S::MacOSXFolder}, S::AppleAttributes, S::AppleAttributes, plain},
        {{S::NetatalkAttributes, S::DotUnderscore, S::NetatalkFolder, S::MacOSXFolder}, S::NetatalkAttributes, S::NetatalkAttributes, plain},
        {{S::DotUnderscore, S::NetatalkFolder, S::MacOSXFolder}, S::DotUnderscore, S::DotUnderscore, plain},
        {{S::NetatalkFolder, S::MacOSXFolder}, S::NetatalkFolder, S::NetatalkFolder, plain},
        {{S::MacOSXFolder, S::NearerMacOSXFolder}, S::NearerMacOSXFolder, S::NearerMacOSXFolder, plain},
        // A sidecar's resource fork wins over the file read as a container.
        {{S::DotUnderscore, S::SelfMacBinary}, S::DotUnderscore, S::DotUnderscore, nullptr},
        // Finder info without a fork describes the envelope: the container wins.
        {{S::DotUnderscoreInfo, S::SelfMacBinary}, S::SelfMacBinary, S::SelfMacBinary, "inner data fork"},
        {{S::DotUnderscoreType}, S::None, S::DotUnderscoreType, plain},
        // Each piece is looked up on its own; zero Finder info counts as none.
        {{S::AppleInfoOnly, S::MacOSXFolder}, S::MacOSXFolder, S::AppleInfoOnly, plain},
        {{S::AppleZeroInfo, S::NetatalkFolder}, S::NetatalkFolder, S::NetatalkFolder, plain},
    };
    const std::string attributeBase = AttributeFolder(4096);
    for (const auto& c : cases) {
        const bool needsAttributes = std::any_of(c.sources.begin(), c.sources.end(), [](Source s) { return int(s) <= 3; });
        if (needsAttributes && attributeBase.empty()) continue;
        TempDir dir(needsAttributes ? attributeBase : "");
        const std::string font = dir / "a/b/Font";
        WriteFile(font, Text(plain));
        for (Source s : c.sources) Add(dir, s);
        SCOPED_TRACE("first source " + std::to_string(c.sources.empty() ? -1 : int(c.sources[0])));
        const MacForkInfo info = MacForks::Describe(font);
        EXPECT_TRUE(info.exists);
        EXPECT_EQ(ResourceSource(font), int(c.resourceFrom));
        EXPECT_EQ(ResourceSource(dir / "a/./b/../b/Font"), int(c.resourceFrom));  // dot segments find the same
        EXPECT_EQ(info.hasFinderInfo ? int(info.fileType - fourCC("src0")) : -1, int(c.finderFrom));
        Bytes data;
        ASSERT_TRUE(MacForks::ReadDataFork(font, data));
        EXPECT_EQ(data, c.dataFork ? Text(c.dataFork) : ReadFile(font));
        EXPECT_EQ(info.dataForkLength, data.size());
    }
    if (attributeBase.empty()) GTEST_SKIP() << "no file system here keeps user extended attributes";
}

// Folders, missing paths, a ".bin" sibling that is no container, and a
// fork that changed since it was resolved give nothing to read.
TEST(MacForks, NothingToReadOrChangedSinceResolved)
{
    TempDir dir;
    Bytes fork;
    EXPECT_TRUE(MacForks::Describe(dir.path()).exists);
    EXPECT_FALSE(MacForks::ReadDataFork(dir.path(), fork) || MacForks::ReadDataFork(dir / "missing", fork) || MacForks::Describe(dir / "missing").exists);
    WriteFile(dir / "Other.bin", Text("just text, long enough to be anything at all"));
    EXPECT_FALSE(MacForks::Describe(dir / "Other").exists);
    WriteFile(dir / "Font", MacBinaryFile(PartsFor(Source::SelfMacBinary), 3));
    const MacFile file = MacForks::Resolve(dir / "Font");
    WriteFile(dir / "Font", Text("short"));
    EXPECT_FALSE(MacForks::ReadFork(file.resourceFork, fork));
}

// Cut short, a container is read as a plain file (cut sidecars are refused
// by the container reader itself).
TEST(MacForks, TruncatedContainers)
{
    TempDir dir;
    const MacParts parts = PartsFor(Source::SelfMacBinary);
    for (const Bytes& full : {AppleSingleFile(parts), MacBinaryFile(parts, 3)}) {
        for (size_t length = 0; length + 128 < full.size(); length += 7) {
            WriteFile(dir / "Font", Slice(full, 0, length));
            const MacForkInfo info = MacForks::Describe(dir / "Font");
            EXPECT_EQ(info.resourceForkLength, 0u) << "length " << length;
            EXPECT_EQ(info.dataForkLength, length);
        }
    }
}

}  // namespace
