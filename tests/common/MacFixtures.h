// Test helpers for Mac files on Linux: the corpus, byte builders for
// resource files and fork containers, every layout a Mac file reaches a
// Linux disk in, and extended attributes. Header-only, so that every test
// folder can use it.
#pragma once

#include <gtest/gtest.h>
#include <sys/xattr.h>
#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "common/FileIO.h"
#include "common/TempFolder.h"
#include "resourcefork/ResourceMap.h"
#include "support/ByteView.h"
#include "support/ByteWriter.h"

namespace macfixtures {

using Bytes = std::vector<uint8_t>;
using TempDir = TempFolder;

inline std::string CorpusPath(const std::string& relative) { return std::string(TYPEPROBE_TEST_DATA_DIR) + "/mac/" + relative; }

inline Bytes ReadFile(const std::string& path) { return testfiles::readFile(path); }
inline void WriteFile(const std::string& path, const Bytes& bytes) { testfiles::writeFile(path, bytes); }

inline Bytes Text(const std::string& text) { return Bytes(text.begin(), text.end()); }

inline Bytes Slice(const Bytes& bytes, size_t offset, size_t length)
{
    return Bytes(bytes.begin() + std::ptrdiff_t(offset), bytes.begin() + std::ptrdiff_t(offset + length));
}

inline uint32_t Crc32(const Bytes& bytes) { return uint32_t(crc32(0, bytes.data(), uInt(bytes.size()))); }

// ------------------------------------------------------- a Mac file's parts ---

struct MacParts {
    std::string name;
    uint32_t type = 0, creator = 0;
    Bytes data, resource;

    Bytes finderInfo() const { return ByteWriter().u32(type).u32(creator).zeros(24).take(); }  // FInfo + FXInfo
};

// The forks of a MacBinary file, found by the format's arithmetic alone.
inline MacParts PartsOfMacBinary(const Bytes& file)
{
    auto u32 = [&](size_t at) { uint32_t value = 0; ByteView(file).u32(at, value); return value; };
    auto padded = [](uint64_t length) { return size_t((length + 127) / 128 * 128); };
    const size_t data = 128 + padded(u32(118) & 0xFFFF), dataLength = u32(83);  // after the secondary header
    return {std::string(file.begin() + 2, file.begin() + 2 + file[1]), u32(65), u32(69), Slice(file, data, dataLength),
            Slice(file, data + padded(dataLength), u32(87))};
}

// CRC-16/XMODEM, written independently of the library's.
inline uint16_t XmodemCrc(const uint8_t* bytes, size_t length)
{
    uint32_t crc = 0;
    for (size_t i = 0; i < length; ++i) {
        crc ^= uint32_t(bytes[i]) << 8;
        for (int bit = 0; bit < 8; ++bit) crc = (crc & 0x8000) ? ((crc << 1) ^ 0x1021) : (crc << 1);
    }
    return uint16_t(crc);
}

// Sets a MacBinary II or III header's CRC over its first 124 bytes.
inline void SetMacBinaryCrc(Bytes& file)
{
    const uint16_t crc = XmodemCrc(file.data(), 124);
    std::tie(file[124], file[125]) = std::pair(uint8_t(crc >> 8), uint8_t(crc));
}

// MacBinary of the given version: 1 (no CRC), 2 (CRC) or 3 (CRC and "mBIN").
inline Bytes MacBinaryFile(const MacParts& parts, int version)
{
    ByteWriter w;
    w.u8(0).pascal(parts.name).zeros(63 - parts.name.size());  // bytes 1..64
    w.u32(parts.type).u32(parts.creator).zeros(10);             // 65..82: flags, position, folder
    w.u32(uint32_t(parts.data.size())).u32(uint32_t(parts.resource.size())).zeros(128 - 91);
    Bytes head = w.take();
    if (version == 3) std::copy_n("mBIN", 4, head.begin() + 102);
    if (version >= 2) {
        head[122] = version == 3 ? 130 : 129;
        head[123] = 129;
        SetMacBinaryCrc(head);
    }
    return ByteWriter().bytes(ByteView(head)).bytes(ByteView(parts.data)).pad(128)
        .bytes(ByteView(parts.resource)).pad(128).take();
}

struct Entry { uint32_t id; Bytes bytes; };

// An AppleSingle or AppleDouble file with the entries laid out in order.
inline Bytes AppleContainer(uint32_t magic, const std::string& filler, const std::vector<Entry>& entries)
{
    ByteWriter w;
    w.u32(magic).u32(0x00020000).bytes(filler.substr(0, 16)).zeros(16 - std::min<size_t>(16, filler.size()));
    w.u16(uint16_t(entries.size()));
    uint32_t offset = uint32_t(26 + 12 * entries.size());
    for (const Entry& e : entries) {
        w.u32(e.id).u32(offset).u32(uint32_t(e.bytes.size()));
        offset += uint32_t(e.bytes.size());
    }
    for (const Entry& e : entries) w.bytes(ByteView(e.bytes));
    return w.take();
}

inline Bytes AppleSingleFile(const MacParts& p)
{
    return AppleContainer(0x00051600, "", {{3, Text(p.name)}, {9, p.finderInfo()}, {1, p.data}, {2, p.resource}});
}

// A sidecar as netatalk and older tools write it.
inline Bytes PlainAppleDouble(const MacParts& p) { return AppleContainer(0x00051607, "", {{9, p.finderInfo()}, {2, p.resource}}); }

// A `._` file as macOS writes it: "Mac OS X" filler, and a 3760-byte Finder
// info entry whose first 32 bytes are the Finder info and whose rest holds
// the file's extended attributes (an "ATTR" block with absolute offsets).
inline Bytes MacOSXDotUnderscore(const MacParts& parts)
{
    constexpr uint32_t kFinderInfoLength = 3760, kEntryStart = 50;
    const std::string name = "com.apple.quarantine", value = "0081;00000000;Safari;";
    const uint32_t dataStart = kEntryStart + 34 + 36 + 12 + uint32_t(name.size()) + 1 + 3;
    ByteWriter info;
    info.bytes(ByteView(parts.finderInfo())).u16(0);  // 32 bytes, 2 of padding
    info.tag("ATTR").u32(0).u32(kEntryStart + kFinderInfoLength).u32(dataStart)
        .u32(uint32_t(value.size())).zeros(12).u16(0).u16(1);
    info.u32(dataStart).u32(uint32_t(value.size())).u16(0).u8(uint8_t(name.size() + 1)).bytes(name).u8(0);
    info.pad(4).bytes(value);
    info.zeros(kFinderInfoLength - info.size());
    return AppleContainer(0x00051607, "Mac OS X        ", {{9, info.take()}, {2, parts.resource}});
}

// netatalk's metadata attribute: an AppleDouble header with Finder info and
// netatalk's own entries, no resource fork.
inline Bytes NetatalkMetadata(const MacParts& parts)
{
    return AppleContainer(0x00051607, "Netatalk        ",
                          {{9, parts.finderInfo()}, {8, Bytes(16, 0)}, {0x80444556, Bytes(8, 0)}});
}

// ------------------------------------------------------ resource files ---

struct TestResource {  // type: four characters
    std::string type; int16_t id = 0; std::optional<std::string> name; Bytes data; uint8_t attributes = 0;
};

// A resource file written by the test itself, references in the order given
// (grouped by type in order of first appearance).
inline Bytes ResourceFile(const std::vector<TestResource>& resources)
{
    std::vector<std::string> types;
    for (const auto& r : resources)
        if (std::find(types.begin(), types.end(), r.type) == types.end()) types.push_back(r.type);
    ByteWriter data, typeList, refs, names;
    typeList.u16(uint16_t(types.size() - 1));
    for (const auto& type : types) {
        const auto count = std::count_if(resources.begin(), resources.end(), [&](auto& r) { return r.type == type; });
        typeList.bytes(type).u16(uint16_t(count - 1)).u16(uint16_t(2 + 8 * types.size() + refs.size()));
        for (const auto& r : resources) {
            if (r.type != type) continue;
            refs.u16(uint16_t(r.id)).u16(r.name ? uint16_t(names.size()) : 0xFFFF);
            refs.u8(r.attributes).u24(uint32_t(data.size())).u32(0);
            if (r.name) names.pascal(*r.name);
            data.u32(uint32_t(r.data.size())).bytes(ByteView(r.data));
        }
    }
    const uint32_t mapLength = uint32_t(28 + typeList.size() + refs.size() + names.size());
    return ByteWriter().u32(256).u32(uint32_t(256 + data.size())).u32(uint32_t(data.size())).u32(mapLength).zeros(240)
        .bytes(data.view()).zeros(16).u32(0).u16(0).u16(0).u16(28).u16(uint16_t(28 + typeList.size() + refs.size()))
        .bytes(typeList.view()).bytes(refs.view()).bytes(names.view()).take();
}

// ----------------------------------------------------- extended attributes ---

inline bool SetAttribute(const std::string& path, const std::string& name, const Bytes& value)
{
    return ::setxattr(path.c_str(), name.c_str(), value.data(), value.size(), 0) == 0;
}

// A folder whose file system keeps user attributes of `size` bytes (the
// temporary folder, else /dev/shm, as tmpfs keeps them up to 64 KiB); empty
// when there is none.
inline std::string AttributeFolder(size_t size)
{
    const char* env = std::getenv("TMPDIR");
    for (std::string base : {std::string(env && *env ? env : "/tmp"), std::string("/dev/shm")}) {
        TempDir probe(base);
        if (!probe.valid()) continue;
        WriteFile(probe / "probe", {});
        if (SetAttribute(probe / "probe", "user.typeprobe.probe", Bytes(size, 0x5A))) return base;
    }
    return {};
}

// ----------------------------------------------- every container layout ---

// MacBinaryIII is the corpus file as FontForge wrote it; BinSibling has
// "Name" asked for and "Name.bin" on disk; DotUnderscore is a plain
// AppleDouble sidecar, MacOSXDotUnderscore one as macOS writes it;
// NetatalkFolder is .AppleDouble/Name, MacOSXZipFolder __MACOSX/fonts/._Name.
enum class Layout { MacBinaryIII, MacBinaryII, MacBinaryI, BinSibling, AppleSingle, DotUnderscore, MacOSXDotUnderscore,
                    NetatalkFolder, MacOSXZipFolder, AppleAttributes, NetatalkAttributes };
inline const Layout kLayouts[] = {Layout::MacBinaryIII, Layout::MacBinaryII, Layout::MacBinaryI, Layout::BinSibling,
                                  Layout::AppleSingle, Layout::DotUnderscore, Layout::MacOSXDotUnderscore,
                                  Layout::NetatalkFolder, Layout::MacOSXZipFolder, Layout::AppleAttributes,
                                  Layout::NetatalkAttributes};

inline const char* LayoutName(Layout layout)
{
    static const char* names[] = {"MacBinary III", "MacBinary II", "MacBinary I", ".bin sibling", "AppleSingle", "._ sidecar",
                                  "macOS ._ sidecar", ".AppleDouble", "__MACOSX", "com.apple attributes", "netatalk attributes"};
    return names[int(layout)];
}

inline bool UsesAttributes(Layout layout) { return layout == Layout::AppleAttributes || layout == Layout::NetatalkAttributes; }

// Writes the Mac file into `dir` in the given layout; returns the logical
// path to open.
inline std::string Place(Layout layout, const MacParts& parts, const Bytes& original, const TempDir& dir)
{
    const std::string path = dir / ("fonts/" + parts.name), sidecar = dir / ("fonts/._" + parts.name);
    switch (layout) {
    case Layout::MacBinaryIII: WriteFile(path, original); return path;
    case Layout::MacBinaryII: WriteFile(path, MacBinaryFile(parts, 2)); return path;
    case Layout::MacBinaryI: WriteFile(path, MacBinaryFile(parts, 1)); return path;
    case Layout::BinSibling: WriteFile(path + ".bin", original); return path;
    case Layout::AppleSingle: WriteFile(path, AppleSingleFile(parts)); return path;
    default: break;
    }
    WriteFile(path, parts.data);
    switch (layout) {
    case Layout::DotUnderscore: WriteFile(sidecar, PlainAppleDouble(parts)); break;
    case Layout::MacOSXDotUnderscore: WriteFile(sidecar, MacOSXDotUnderscore(parts)); break;
    case Layout::NetatalkFolder: WriteFile(dir / ("fonts/.AppleDouble/" + parts.name), PlainAppleDouble(parts)); break;
    case Layout::MacOSXZipFolder: WriteFile(dir / ("__MACOSX/fonts/._" + parts.name), MacOSXDotUnderscore(parts)); break;
    case Layout::AppleAttributes:
        EXPECT_TRUE(SetAttribute(path, "user.com.apple.ResourceFork", parts.resource));
        EXPECT_TRUE(SetAttribute(path, "user.com.apple.FinderInfo", parts.finderInfo()));
        break;
    default:
        EXPECT_TRUE(SetAttribute(path, "user.org.netatalk.ResourceFork", parts.resource));
        EXPECT_TRUE(SetAttribute(path, "user.org.netatalk.Metadata", NetatalkMetadata(parts)));
        break;
    }
    return path;
}

}  // namespace macfixtures
