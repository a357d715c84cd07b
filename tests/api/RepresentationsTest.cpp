// The XML and property-list forms: what the writers write, the capacity
// rule, what the readers make of hostile text, and what a round trip keeps.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "api/FontArray.h"
#include "common/FaceArrays.h"
#include "typeprobe/typeprobe.h"

namespace {

using facearrays::Array;
using Writer = unsigned long (*)(TP_FontArray*, char*, unsigned long*);
using Reader = unsigned long (*)(const char*, TP_FontArray**);

// The document, written into a buffer of exactly the size asked for.
std::string Write(Writer write, TP_FontArray* array, unsigned long expectedCode = 0)
{
    char probe = 'x';  // any buffer: only the length is asked for
    unsigned long length = 0;
    write(array, &probe, &length);
    std::vector<char> buffer(length + 8, '#');
    EXPECT_EQ(write(array, buffer.data(), &length), expectedCode);
    EXPECT_EQ(length, std::strlen(buffer.data()) + 1);
    return buffer.data();
}

Array Read(Reader read, const std::string& text, unsigned long expectedCode = 0)
{
    TP_FontArray* array = nullptr;
    EXPECT_EQ(read(text.c_str(), &array), expectedCode) << text.substr(0, 120);
    EXPECT_EQ(array != nullptr, expectedCode == 0);
    return Array(array);
}

TP_FontSpecifier FullFace()
{
    TP_FontSpecifier face;
    face.kindName = "OpenType - PS", face.familyName = "Example", face.postScriptName = "Example-Bold";
    face.fullName = face.displayName = "Example Bold";
    face.foundryName = "(URW)++ Design & Development";  // "URW" in the shipped table
    face.version = "Version 1.002;PS 001.002", face.printerFontName = "/Fonts/ExampBol", face.platform = "crossplatform";
    face.kerningChecksum = 0x1234, face.typeprobeChecksum = 0x8A3B1C2D, face.legacyTypeprobeChecksum = 0x33333333;
    face.outlineFileSize = 4096, face.fondResourceID = 256, face.validAttributes = kTP_AllAttributes;
    return face;
}

// Valid: kind and PostScript name only.
TP_FontSpecifier SparseFace()
{
    TP_FontSpecifier face = FullFace();
    face.postScriptName = "Sparse", face.validAttributes = kTP_AttrKindName | kTP_AttrPostScriptName;
    return face;
}

Array Make(const std::vector<TP_FontSpecifier>& faces)
{
    Array array(new TP_FontArray);
    for (const TP_FontSpecifier& face : faces) array->Append(face);
    return array;
}

const std::string kXMLHeader = "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
                               "<TypeprobeData xmlns:xsi=\"https://typeprobe.org/schemas/TypeprobeData.xsd\">\n";
const std::string kPlistHeader = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                 "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                 "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n";

// One face's block of each form, from its values in the XML form's order.
std::string XMLBlock(const std::vector<std::string>& v)
{
    const char* tags[] = {"FontKind", "PostScriptName", "Foundry", "Family", "Version", "Checksum", "KerningChecksum", "OutlineFileSize", "OutlineFileName"};
    std::string block = "\t<FontData>\n";
    for (size_t i = 0; i < 9; ++i) block += std::string("\t\t<") + tags[i] + ">" + v[i] + "</" + tags[i] + ">\n";
    return block + "\t</FontData>\n";
}

std::string PlistDict(const std::vector<std::string>& v)
{
    const std::pair<const char*, std::string> entries[] = {
        {"FontKind", v[0]}, {"PostScriptName", v[1]}, {"Foundry", v[2]}, {"Family", v[3]},
        {"Version", v[4]}, {"KerningChecksum", v[6]}, {"Checksum", v[5]}, {"OutlineFileSize", v[7]},
        {"OutlineFileName", v[8]}, {"Keywords", ""}, {"Path", ""}};
    std::string dict = "\t<dict>\n";
    for (const auto& [key, value] : entries)
        dict += std::string("\t\t<key>") + key + "</key>\n\t\t<string>" + value + "</string>\n";
    return dict + "\t</dict>\n";
}

TEST(Representations, WritersFillTheTemplateThroughTheAccessors)
{
    const std::vector<std::string> full = {"OpenType - PS", "Example-Bold", "URW", "Example", "1.002", "8A3B1C2D", "00001234", "4096", "/Fonts/ExampBol"};
    const std::vector<std::string> sparse = {"OpenType - PS", "Sparse", "", "", "", "00000000", "00000000", "0", ""};
    Array array = Make({FullFace(), SparseFace()});
    EXPECT_EQ(Write(TP_GetXMLRepresentation, array.get()), kXMLHeader + XMLBlock(full) + XMLBlock(sparse) + "</TypeprobeData>\n");
    EXPECT_EQ(Write(TP_GetPropertyListRepresentation, array.get()),
              kPlistHeader + "<array>\n" + PlistDict(full) + PlistDict(sparse) + "</array>\n</plist>\n");

    // Kept: the XML writer substitutes plainly (no escaping, a value holding
    // a later placeholder gets that later value, values cut at the 512-byte
    // work buffer); the property list carries the kerning checksum's digits
    // into an invalid Typeprobe checksum, the XML writer resets it first.
    TP_FontSpecifier odd = FullFace(), longName = FullFace();
    odd.familyName = "A & B <i>", odd.postScriptName = "PLACEHOLDER_FONTKIND-PLACEHOLDER_VERSION";
    odd.validAttributes &= ~kTP_AttrTypeprobeChecksum;
    longName.postScriptName = "Long", longName.familyName = std::string(600, 'f');
    Array oddArray = Make({odd, longName});
    const std::string oddXML = Write(TP_GetXMLRepresentation, oddArray.get());
    for (const char* part : {"<Family>A & B <i></Family>", "<PostScriptName>PLACEHOLDER_FONTKIND-1.002</PostScriptName>",
                             "<Checksum>00000000</Checksum>"})
        EXPECT_NE(oddXML.find(part), std::string::npos) << part;
    EXPECT_NE(Write(TP_GetPropertyListRepresentation, oddArray.get()).find("<string>00001234</string>\n\t\t<key>OutlineFileSize"),
              std::string::npos);
    Array back = Read(TP_CreateSpecifierFromXML, oddXML);
    EXPECT_EQ(back->at(0).familyName.str() + "|" + back->at(1).familyName.str(), "A & B <i>|" + std::string(511, 'f'));

    // No faces: result 1, and read back nothing.
    Array empty = Make({});
    Read(TP_CreateSpecifierFromXML, Write(TP_GetXMLRepresentation, empty.get(), 1), 4);
    EXPECT_EQ(Write(TP_GetPropertyListRepresentation, empty.get(), 1), kPlistHeader + "<array/>\n</plist>\n");
}

// The capacity is compared unsigned but copied by the copy-out rule, so a
// capacity negative as a signed number writes nothing and reports success.
TEST(Representations, CapacityRule)
{
    Array array = Make({FullFace()});
    for (Writer write : {TP_GetXMLRepresentation, TP_GetPropertyListRepresentation}) {
        const std::string document = Write(write, array.get());
        const unsigned long size = document.size();
        const struct { unsigned long capacity, code; std::string written; /* "#": nothing */ } cases[] = {
            {size + 1, 0, document}, {size, 4, document.substr(0, size - 1)}, {1, 4, ""}, {0, 4, "#"}, {static_cast<unsigned long>(-5L), 0, "#"}};
        for (const auto& c : cases) {
            std::vector<char> buffer(size + 8, '#');
            unsigned long length = c.capacity;
            EXPECT_EQ(write(array.get(), buffer.data(), &length), c.code) << c.capacity;
            EXPECT_EQ(length, size + 1);
            EXPECT_EQ(c.written == "#" ? std::string(1, buffer[0]) : std::string(buffer.data()), c.written);
        }
        unsigned long length = size + 1;
        char buffer[4];
        EXPECT_EQ(write(nullptr, buffer, &length), 1u);
        EXPECT_EQ(write(array.get(), nullptr, &length), 1u);
        EXPECT_EQ(write(array.get(), buffer, nullptr), 1u);
    }
}

// Numbers read as signed 32-bit values by the C rules: a checksum with its
// top bit set saturates (kept).
TEST(Representations, XMLReaderNumbers)
{
    const struct { const char *tag, *text; uint32_t expected; } cases[] = {
        {"Checksum", "7FFFFFFF", 0x7FFFFFFF}, {"Checksum", "8A3B1C2D", 0x7FFFFFFF}, {"Checksum", "-1", 0xFFFFFFFF},
        {"Checksum", "-FFFFFFFFF", 0x80000000}, {"Checksum", "", 0}, {"Checksum", " \t\n1fzz", 0x1F},
        {"KerningChecksum", "zz", 0}, {"OutlineFileSize", "1f", 1}, {"OutlineFileSize", "4294967295", 0x7FFFFFFF},
    };
    for (const auto& c : cases) {
        const std::string tag = c.tag;
        Array array = Read(TP_CreateSpecifierFromXML, "<FontData><" + tag + ">" + c.text + "</" + tag + "></FontData>");
        const TP_FontSpecifier face = array->at(0);
        EXPECT_EQ(tag == "Checksum" ? face.typeprobeChecksum : tag == "KerningChecksum" ? face.kerningChecksum : face.outlineFileSize,
                  c.expected) << tag << " " << c.text;
        EXPECT_EQ(face.validAttributes, tag == "Checksum" ? kTP_AttrTypeprobeChecksum
                                        : tag == "KerningChecksum" ? kTP_AttrKerningChecksum : kTP_AttrOutlineFileSize);
    }
}

std::string PlistOf(const std::string& body) { return kPlistHeader + body + "\n</plist>\n"; }

std::string Dict(const char* name, const char* family)
{
    return std::string("<dict><key>PostScriptName</key><string>") + name + "</string><key>Family</key><string>" + family + "</string></dict>";
}

// Each reader keeps the first face of each PostScript name; the XML reader
// needs one complete block (else 4), the property-list reader an XML list
// of faces (else 1). Hostile text gets the same codes, never a crash.
TEST(Representations, ReadersResultCodes)
{
    std::string deep, shared, named;
    for (int i = 0; i < 100000; ++i) deep += "<array>", shared += "<FontData></FontData>";
    for (int i = 0; i < 20000; ++i)
        named += "<FontData><PostScriptName>" + std::to_string(i) + "</PostScriptName></FontData>";
    const std::string big = "<Family>" + std::string(1 << 20, 'x') + "</Family>";
    const Reader xml = TP_CreateSpecifierFromXML, plist = TP_CreateSpecifierFromPropertyList;
    const struct { Reader read; std::string text; unsigned long code; std::vector<std::string> kept; } cases[] = {
        {xml, "", 4, {}}, {xml, "<TypeprobeData></TypeprobeData>", 4, {}}, {xml, "<FontData><Family>Open</Family>", 4, {}},
        {xml, "</FontData><FontData>", 4, {}}, {xml, "<FontData><Family>Unclosed</FontData>", 0, {"/"}},
        // A block's tags are looked for up to the document's end, as intended.
        {xml, "<FontData><PostScriptName>A</PostScriptName></FontData><FontData><Family>Later</Family></FontData>", 0, {"A/Later", "/Later"}},
        {xml, "junk<FontData><PostScriptName>A</PostScriptName></FontData><FontData><PostScriptName>B</PostScriptName>", 0, {"A/", "B/"}},
        {xml,
         "<FontData><PostScriptName>A</PostScriptName><Family>1</Family></FontData>"
         "<FontData><PostScriptName>B</PostScriptName><Family>2</Family></FontData>"
         "<FontData><PostScriptName>A</PostScriptName><Family>3</Family></FontData>"
         "<FontData><PostScriptName>a</PostScriptName><Family>4</Family></FontData>"
         "<FontData><Family>5</Family></FontData><FontData><Family>6</Family></FontData>",
         0, {"A/1", "B/2", "a/4", "/5"}},
        // Blocks without names of their own share one face; named blocks
        // that would each copy a megabyte are refused.
        {xml, shared + big, 0, {"/" + std::string(1 << 20, 'x')}}, {xml, named + big, 1, {}},
        {plist, PlistOf("<array>" + Dict("A", "1") + Dict("B", "2") + Dict("A", "3") + Dict("a", "4") + "</array>"), 0, {"A/1", "B/2", "a/4"}},
        {plist, "", 1, {}}, {plist, "garbage", 1, {}}, {plist, "bplist00\x01\x02garbage", 1, {}}, {plist, PlistOf("<string>A</string>"), 1, {}},
        {plist, PlistOf("<dict><key>PostScriptName</key><string>A</string></dict>"), 1, {}}, {plist, PlistOf("<array/>"), 1, {}},
        {plist, PlistOf("<array><dict>"), 1, {}}, {plist, PlistOf(deep), 1, {}},
    };
    for (const auto& c : cases) {
        Array array = Read(c.read, c.text, c.code);
        std::vector<std::string> kept;
        for (const TP_FontSpecifier& face : array ? array->faces() : std::vector<TP_FontSpecifier>())
            kept.push_back(face.postScriptName.str() + "/" + face.familyName.str());
        EXPECT_EQ(kept, c.kept) << c.text.substr(0, 120);
    }
    for (Reader read : {xml, plist}) {
        TP_FontArray* array = nullptr;
        EXPECT_EQ(read(nullptr, &array), 1u);
        EXPECT_EQ(read(PlistOf("<array><dict/></array><FontData></FontData>").c_str(), nullptr), 1u);
    }
}

TEST(Representations, PropertyListReaderTakesStringValuesOnly)
{
    Array array = Read(TP_CreateSpecifierFromPropertyList,
                       PlistOf("<array><dict><key>FontKind</key><string>TrueType</string><key>PostScriptName</key><string>A&amp;B</string>"
                               "<key>Family</key><integer>5</integer><key>KerningChecksum</key><string>8A3B1C2D</string>"
                               "<key>OutlineFileSize</key><string>-1</string><key>Path</key><string>/ignored</string>"
                               "</dict><dict/><string>not a dictionary</string></array>"));
    ASSERT_EQ(array->size(), 2u);
    const TP_FontSpecifier face = array->at(0);
    EXPECT_EQ(face.postScriptName.str(), "A&B");
    EXPECT_EQ(face.kerningChecksum, 0x7FFFFFFFu);
    EXPECT_EQ(face.outlineFileSize, 0xFFFFFFFFu);
    EXPECT_EQ(face.validAttributes, uint32_t(kTP_AttrKindName | kTP_AttrPostScriptName | kTP_AttrKerningChecksum | kTP_AttrOutlineFileSize));
    EXPECT_EQ(array->at(1).validAttributes, 0u);

    // Strings leave escaped and as UTF-8 only: a character cut by the work
    // buffer is dropped, a text that is not UTF-8 is written empty.
    TP_FontSpecifier odd = FullFace();
    odd.postScriptName = "Odd&<>\"'";
    odd.familyName = std::string(510, 'f') + "\xC3\xA9";
    odd.kindName = "Bad \xFF byte";
    Array oddArray = Make({odd});
    Array back = Read(TP_CreateSpecifierFromPropertyList, Write(TP_GetPropertyListRepresentation, oddArray.get()));
    EXPECT_EQ(back->at(0).familyName.str(), std::string(510, 'f'));
    EXPECT_EQ(back->at(0).kindName.str(), "");
    EXPECT_EQ(back->at(0).postScriptName.str(), "Odd&<>\"'");
}

// A face keeps the nine carried attributes (version cleaned, foundry
// resolved, checksums saturated), all valid, and loses the rest.
TEST(Representations, RoundTripKeepsTheCarriedAttributes)
{
    constexpr uint32_t carried = kTP_AllAttributes & ~(kTP_AttrFullName | kTP_AttrDisplayName | kTP_AttrPlatform | kTP_AttrLegacyTypeprobeChecksum | kTP_AttrWindowsMMFile);
    const std::vector<std::string> expected = {"OpenType - PS|Example-Bold|URW|Example|1.002|/Fonts/ExampBol|7fffffff|1234|4096",
                                               "OpenType - PS|Sparse|||||0|0|0"};
    Array original = Make({FullFace(), SparseFace()});
    const std::pair<Writer, Reader> forms[] = {{TP_GetXMLRepresentation, TP_CreateSpecifierFromXML},
                                               {TP_GetPropertyListRepresentation, TP_CreateSpecifierFromPropertyList}};
    for (const auto& [write, read] : forms) {
        Array back = Read(read, Write(write, original.get()));
        std::vector<std::string> got;
        for (unsigned long i = 0; i < back->size(); ++i) {
            const TP_FontSpecifier b = back->at(i);
            char text[128];
            std::snprintf(text, sizeof text, "%s|%s|%s|%s|%s|%s|%x|%x|%u", b.kindName.str().c_str(), b.postScriptName.str().c_str(),
                          b.foundryName.str().c_str(), b.familyName.str().c_str(), b.version.str().c_str(),
                          b.printerFontName.str().c_str(), b.typeprobeChecksum, b.kerningChecksum, b.outlineFileSize);
            got.push_back(text);
            EXPECT_EQ(b.validAttributes, carried);
            // Rebuilt faces have resource numbers and codes 0, not -1.
            EXPECT_EQ(b.fondStyle | b.firstResourceID | b.fondResourceID | int(b.fileCreator | b.fileType | b.outlineFileCreator | b.outlineFileType), 0);
        }
        EXPECT_EQ(got, expected);
    }
}

}  // namespace
