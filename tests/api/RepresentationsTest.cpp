#include <gtest/gtest.h>

#include <plist/plist.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "api/FontArray.h"
#include "common/FileIO.h"
#include "common/Oracle.h"
#include "common/TempFolder.h"
#include "typeprobe/typeprobe.h"

namespace {

struct ArrayFree {
    void operator()(TP_FontArray* array) const { TP_SpecifierFree(array); }
};
using Array = std::unique_ptr<TP_FontArray, ArrayFree>;

using Writer = unsigned long (*)(TP_FontArray*, char*, unsigned long*);
using Reader = unsigned long (*)(const char*, TP_FontArray**);

// The writers' output for an array, written with a buffer of exactly the
// size they ask for.
struct Written {
    unsigned long code = 99;
    std::string text;
};

Written Write(Writer write, TP_FontArray* array)
{
    char probe = 'x';
    unsigned long length = 0;
    write(array, &probe, &length);
    std::vector<char> buffer(length + 8, '#');
    Written out;
    out.code = write(array, buffer.data(), &length);
    out.text = buffer.data();
    EXPECT_EQ(length, out.text.size() + 1);
    return out;
}

Array Read(Reader read, const std::string& text, unsigned long expectedCode = 0)
{
    TP_FontArray* array = nullptr;
    EXPECT_EQ(read(text.c_str(), &array), expectedCode) << text.substr(0, 200);
    EXPECT_EQ(array != nullptr, expectedCode == 0);
    return Array(array);
}

unsigned long Count(TP_FontArray* array)
{
    unsigned long count = 0;
    TP_GetFontCount(array, &count);
    return count;
}

// A face with every attribute, and one with nothing valid but its kind and
// PostScript name.
TP_FontSpecifier FullFace()
{
    TP_FontSpecifier face;
    face.kindName = "OpenType - PS";
    face.familyName = "Example";
    face.postScriptName = "Example-Bold";
    face.fullName = "Example Bold";
    face.displayName = "Example Bold Menu";
    face.foundryName = "(URW)++ Design & Development";  // "URW" in the shipped table
    face.version = "Version 1.002;PS 001.002";
    face.printerFontName = "/Fonts/ExampBol";
    face.platform = "crossplatform";
    face.kerningChecksum = 0x1234;
    face.typeprobeChecksum = 0x8A3B1C2D;
    face.legacyTypeprobeChecksum = 0x33333333;
    face.outlineFileSize = 4096;
    face.fondResourceID = 256;
    face.fondStyle = 1;
    face.firstResourceID = 300;
    face.validAttributes = kTP_AllAttributes;
    return face;
}

TP_FontSpecifier SparseFace()
{
    TP_FontSpecifier face = FullFace();
    face.postScriptName = "Sparse";
    face.validAttributes = kTP_AttrKindName | kTP_AttrPostScriptName;
    return face;
}

Array Make(const std::vector<TP_FontSpecifier>& faces)
{
    Array array(new TP_FontArray);
    for (const TP_FontSpecifier& face : faces) array->Append(face);
    return array;
}

const std::string kXMLHeader =
    "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
    "<TypeprobeData xmlns:xsi=\"https://typeprobe.org/schemas/TypeprobeData.xsd\">\n";
const std::string kXMLClosing = "</TypeprobeData>\n";

const std::string kPlistHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";

std::string PlistEntry(const char* key, const char* value)
{
    return std::string("\t\t<key>") + key + "</key>\n\t\t<string>" + value + "</string>\n";
}

// ----------------------------------------------------------- documents ---

TEST(TP_GetXMLRepresentation, WritesTheTemplateForEachFace)
{
    Array array = Make({FullFace(), SparseFace()});
    Written xml = Write(TP_GetXMLRepresentation, array.get());
    EXPECT_EQ(xml.code, 0u);
    EXPECT_EQ(xml.text, kXMLHeader +
                            "\t<FontData>\n"
                            "\t\t<FontKind>OpenType - PS</FontKind>\n"
                            "\t\t<PostScriptName>Example-Bold</PostScriptName>\n"
                            "\t\t<Foundry>URW</Foundry>\n"
                            "\t\t<Family>Example</Family>\n"
                            "\t\t<Version>1.002</Version>\n"
                            "\t\t<Checksum>8A3B1C2D</Checksum>\n"
                            "\t\t<KerningChecksum>00001234</KerningChecksum>\n"
                            "\t\t<OutlineFileSize>4096</OutlineFileSize>\n"
                            "\t\t<OutlineFileName>/Fonts/ExampBol</OutlineFileName>\n"
                            "\t</FontData>\n"
                            "\t<FontData>\n"
                            "\t\t<FontKind>OpenType - PS</FontKind>\n"
                            "\t\t<PostScriptName>Sparse</PostScriptName>\n"
                            "\t\t<Foundry></Foundry>\n"
                            "\t\t<Family></Family>\n"
                            "\t\t<Version></Version>\n"
                            "\t\t<Checksum>00000000</Checksum>\n"
                            "\t\t<KerningChecksum>00000000</KerningChecksum>\n"
                            "\t\t<OutlineFileSize>0</OutlineFileSize>\n"
                            "\t\t<OutlineFileName></OutlineFileName>\n"
                            "\t</FontData>\n" +
                            kXMLClosing);
}

TEST(TP_GetPropertyListRepresentation, WritesOneDictionaryOfStringsPerFace)
{
    Array array = Make({FullFace(), SparseFace()});
    Written plist = Write(TP_GetPropertyListRepresentation, array.get());
    EXPECT_EQ(plist.code, 0u);
    // The sparse face has no valid Typeprobe checksum: it is written with the
    // kerning checksum's digits, which were 0 for it too.
    EXPECT_EQ(plist.text, kPlistHeader + "<array>\n\t<dict>\n" +
                              PlistEntry("FontKind", "OpenType - PS") +
                              PlistEntry("PostScriptName", "Example-Bold") +
                              PlistEntry("Foundry", "URW") + PlistEntry("Family", "Example") +
                              PlistEntry("Version", "1.002") +
                              PlistEntry("KerningChecksum", "00001234") +
                              PlistEntry("Checksum", "8A3B1C2D") +
                              PlistEntry("OutlineFileSize", "4096") +
                              PlistEntry("OutlineFileName", "/Fonts/ExampBol") +
                              PlistEntry("Keywords", "") + PlistEntry("Path", "") +
                              "\t</dict>\n\t<dict>\n" + PlistEntry("FontKind", "OpenType - PS") +
                              PlistEntry("PostScriptName", "Sparse") + PlistEntry("Foundry", "") +
                              PlistEntry("Family", "") + PlistEntry("Version", "") +
                              PlistEntry("KerningChecksum", "00000000") +
                              PlistEntry("Checksum", "00000000") +
                              PlistEntry("OutlineFileSize", "0") +
                              PlistEntry("OutlineFileName", "") + PlistEntry("Keywords", "") +
                              PlistEntry("Path", "") + "\t</dict>\n</array>\n</plist>\n");
}

TEST(TP_GetPropertyListRepresentation, CarriesTheKerningChecksumIntoAnInvalidChecksum)
{
    TP_FontSpecifier face = FullFace();
    face.validAttributes &= ~kTP_AttrTypeprobeChecksum;
    Array array = Make({face});
    Written plist = Write(TP_GetPropertyListRepresentation, array.get());
    EXPECT_NE(plist.text.find(PlistEntry("Checksum", "00001234")), std::string::npos);
    // The XML writer resets the number before every accessor.
    Written xml = Write(TP_GetXMLRepresentation, array.get());
    EXPECT_NE(xml.text.find("<Checksum>00000000</Checksum>"), std::string::npos);
}

TEST(Representations, EmptyArrayGivesTheFrameAndResultOne)
{
    Array array = Make({});
    Written xml = Write(TP_GetXMLRepresentation, array.get());
    EXPECT_EQ(xml.code, 1u);
    EXPECT_EQ(xml.text, kXMLHeader + kXMLClosing);
    Written plist = Write(TP_GetPropertyListRepresentation, array.get());
    EXPECT_EQ(plist.code, 1u);
    EXPECT_EQ(plist.text, kPlistHeader + "<array/>\n</plist>\n");
    // An empty list reads back as nothing.
    Read(TP_CreateSpecifierFromPropertyList, plist.text, 1);
    Read(TP_CreateSpecifierFromXML, xml.text, 4);
}

// ---------------------------------------------------------- capacities ---

TEST(Representations, CapacityRules)
{
    Array array = Make({FullFace()});
    for (Writer write : {TP_GetXMLRepresentation, TP_GetPropertyListRepresentation}) {
        const std::string document = Write(write, array.get()).text;
        const unsigned long size = document.size();
        std::vector<char> buffer(size + 8);
        auto call = [&](unsigned long capacity, unsigned long* length) {
            std::memset(buffer.data(), '#', buffer.size());
            *length = capacity;
            return write(array.get(), buffer.data(), length);
        };
        unsigned long length = 0;

        EXPECT_EQ(call(size + 1, &length), 0u);
        EXPECT_EQ(std::string(buffer.data()), document);
        EXPECT_EQ(length, size + 1);

        // One short: truncated by the copy-out rule.
        EXPECT_EQ(call(size, &length), 4u);
        EXPECT_EQ(std::string(buffer.data()), document.substr(0, size - 1));
        EXPECT_EQ(length, size + 1);

        EXPECT_EQ(call(1, &length), 4u);
        EXPECT_EQ(buffer[0], '\0');

        // Nothing written for 0 or a capacity that is negative taken as
        // signed; the capacity itself is compared unsigned.
        EXPECT_EQ(call(0, &length), 4u);
        EXPECT_EQ(buffer[0], '#');
        EXPECT_EQ(length, size + 1);
        EXPECT_EQ(call(static_cast<unsigned long>(-5L), &length), 0u);
        EXPECT_EQ(buffer[0], '#');
        EXPECT_EQ(length, size + 1);

        length = size + 1;
        EXPECT_EQ(write(nullptr, buffer.data(), &length), 1u);
        EXPECT_EQ(write(array.get(), nullptr, &length), 1u);
        EXPECT_EQ(write(array.get(), buffer.data(), nullptr), 1u);
        EXPECT_EQ(length, size + 1);
    }
}

// -------------------------------------------------------- XML quirks ---

TEST(TP_GetXMLRepresentation, SubstitutesPlainlyInTableOrder)
{
    TP_FontSpecifier face = FullFace();
    face.familyName = "A & B <i>";
    // Version comes after family: replaced inside the family value. Kind
    // comes before the PostScript name: left as it is.
    face.postScriptName = "PLACEHOLDER_FONTKIND-PLACEHOLDER_VERSION";
    Array array = Make({face});
    Written xml = Write(TP_GetXMLRepresentation, array.get());
    EXPECT_NE(xml.text.find("<Family>A & B <i></Family>"), std::string::npos);
    EXPECT_NE(xml.text.find("<PostScriptName>PLACEHOLDER_FONTKIND-1.002</PostScriptName>"),
              std::string::npos);

    Array back = Read(TP_CreateSpecifierFromXML, xml.text);
    EXPECT_EQ(back->at(0).familyName.str(), "A & B <i>");
}

TEST(TP_GetXMLRepresentation, CutsLongValuesAtTheWorkBuffer)
{
    TP_FontSpecifier face = FullFace();
    face.familyName = std::string(600, 'f');
    Array array = Make({face});
    Array back = Read(TP_CreateSpecifierFromXML, Write(TP_GetXMLRepresentation, array.get()).text);
    EXPECT_EQ(back->at(0).familyName.str(), std::string(511, 'f'));
}

TEST(TP_CreateSpecifierFromXML, ReadsEachTagFromItsBlockOnward)
{
    const std::string xml =
        "<FontData><PostScriptName>First</PostScriptName><Checksum>1f</Checksum></FontData>"
        "<FontData><PostScriptName>Second</PostScriptName><Family>Later</Family>"
        "<KerningChecksum>  2a zz</KerningChecksum></FontData>";
    Array array = Read(TP_CreateSpecifierFromXML, xml);
    ASSERT_EQ(Count(array.get()), 2u);
    const TP_FontSpecifier first = array->at(0), second = array->at(1);
    EXPECT_EQ(first.postScriptName.str(), "First");
    // Taken from the second block, as intended.
    EXPECT_EQ(first.familyName.str(), "Later");
    EXPECT_EQ(first.kerningChecksum, 0x2Au);
    EXPECT_EQ(first.typeprobeChecksum, 0x1Fu);
    EXPECT_EQ(first.validAttributes, uint32_t(kTP_AttrPostScriptName | kTP_AttrFamilyName |
                                              kTP_AttrKerningChecksum |
                                              kTP_AttrTypeprobeChecksum));
    EXPECT_EQ(second.validAttributes, uint32_t(kTP_AttrPostScriptName | kTP_AttrFamilyName |
                                               kTP_AttrKerningChecksum));
    unsigned long value = 7;
    EXPECT_EQ(TP_GetTypeprobeChecksum(array.get(), 1, &value), 5u);
    // Resource numbers and codes come back 0, not -1.
    EXPECT_EQ(second.fondStyle, 0);
    EXPECT_EQ(second.firstResourceID, 0);
    EXPECT_EQ(second.fondResourceID, 0);
    EXPECT_EQ(second.fileCreator | second.fileType | second.outlineFileCreator |
                  second.outlineFileType,
              0u);
}

TEST(TP_CreateSpecifierFromXML, ReadsNumbersAsSignedThirtyTwoBitValues)
{
    struct Case {
        const char* tag;
        const char* text;
        uint32_t expected;
    } cases[] = {
        {"Checksum", "7FFFFFFF", 0x7FFFFFFF},
        {"Checksum", "8A3B1C2D", 0x7FFFFFFF},  // saturates
        {"Checksum", "FFFFFFFFFFFFFFFFFFFF", 0x7FFFFFFF},
        {"Checksum", "-1", 0xFFFFFFFF},
        {"Checksum", "-80000000", 0x80000000},
        {"Checksum", "-FFFFFFFFF", 0x80000000},
        {"Checksum", "0x10", 0x10},
        {"Checksum", " \t\n1fzz", 0x1F},
        {"Checksum", "", 0},
        {"Checksum", "zz", 0},
        {"KerningChecksum", "00001234", 0x1234},
        {"OutlineFileSize", "4096", 4096},
        {"OutlineFileSize", "1f", 1},
        {"OutlineFileSize", "-2147483648", 0x80000000},
        {"OutlineFileSize", "4294967295", 0x7FFFFFFF},
    };
    for (const Case& c : cases) {
        const std::string xml = std::string("<FontData><") + c.tag + ">" + c.text + "</" + c.tag +
                                "></FontData>";
        Array array = Read(TP_CreateSpecifierFromXML, xml);
        const TP_FontSpecifier face = array->at(0);
        const uint32_t value = std::string(c.tag) == "Checksum"          ? face.typeprobeChecksum
                               : std::string(c.tag) == "KerningChecksum" ? face.kerningChecksum
                                                                         : face.outlineFileSize;
        EXPECT_EQ(value, c.expected) << c.tag << " " << c.text;
    }
}

TEST(TP_CreateSpecifierFromXML, NeedsOneCompleteBlock)
{
    TP_FontArray* array = nullptr;
    EXPECT_EQ(TP_CreateSpecifierFromXML(nullptr, &array), 1u);
    EXPECT_EQ(TP_CreateSpecifierFromXML("<FontData></FontData>", nullptr), 1u);
    Read(TP_CreateSpecifierFromXML, "", 4);
    Read(TP_CreateSpecifierFromXML, "<TypeprobeData></TypeprobeData>", 4);
    Read(TP_CreateSpecifierFromXML, "<FontData><Family>Open</Family>", 4);
    Read(TP_CreateSpecifierFromXML, "</FontData><FontData>", 4);
    Read(TP_CreateSpecifierFromXML, "<FontData><Family>Unclosed</FontData>", 0);

    // The root and the header are not checked; a last, unclosed block stays.
    Array two = Read(TP_CreateSpecifierFromXML,
                     "junk<FontData><PostScriptName>A</PostScriptName></FontData>"
                     "<FontData><PostScriptName>B</PostScriptName>");
    ASSERT_EQ(Count(two.get()), 2u);
    EXPECT_EQ(two->at(1).postScriptName.str(), "B");
}

TEST(TP_CreateSpecifierFromXML, KeepsTheFirstFaceOfEachPostScriptName)
{
    Array array = Read(TP_CreateSpecifierFromXML,
                       "<FontData><PostScriptName>A</PostScriptName><Family>1</Family></FontData>"
                       "<FontData><PostScriptName>B</PostScriptName><Family>2</Family></FontData>"
                       "<FontData><PostScriptName>A</PostScriptName><Family>3</Family></FontData>"
                       "<FontData><PostScriptName>a</PostScriptName><Family>4</Family></FontData>"
                       "<FontData><Family>5</Family></FontData>"
                       "<FontData><Family>6</Family></FontData>");
    std::vector<std::string> kept;
    for (const TP_FontSpecifier& face : array->faces())
        kept.push_back(face.postScriptName.str() + "/" + face.familyName.str());
    EXPECT_EQ(kept, (std::vector<std::string>{"A/1", "B/2", "a/4", "/5"}));
}

TEST(TP_CreateSpecifierFromXML, HostileSharingStaysBounded)
{
    const std::string big = "<Family>" + std::string(1 << 20, 'x') + "</Family>";
    // Many blocks without names of their own share one face.
    std::string shared;
    for (int i = 0; i < 100000; ++i) shared += "<FontData></FontData>";
    Array one = Read(TP_CreateSpecifierFromXML, shared + big);
    EXPECT_EQ(Count(one.get()), 1u);
    EXPECT_EQ(one->at(0).familyName.length(), size_t(1) << 20);

    // Many named blocks would each copy the large value: refused.
    std::string named;
    for (int i = 0; i < 20000; ++i)
        named += "<FontData><PostScriptName>" + std::to_string(i) + "</PostScriptName></FontData>";
    Read(TP_CreateSpecifierFromXML, named + big, 1);
}

// --------------------------------------------------- property lists ---

std::string PlistOf(const std::string& body)
{
    return kPlistHeader + body + "\n</plist>\n";
}

TEST(TP_CreateSpecifierFromPropertyList, ReadsStringKeysOnly)
{
    const std::string plist = PlistOf(
        "<array><dict>"
        "<key>FontKind</key><string>TrueType</string>"
        "<key>PostScriptName</key><string>A&amp;B</string>"
        "<key>Family</key><integer>5</integer>"
        "<key>KerningChecksum</key><string>8A3B1C2D</string>"
        "<key>OutlineFileSize</key><string>-1</string>"
        "<key>Path</key><string>/ignored</string>"
        "</dict><dict/><string>not a dictionary</string></array>");
    Array array = Read(TP_CreateSpecifierFromPropertyList, plist);
    ASSERT_EQ(Count(array.get()), 2u);
    const TP_FontSpecifier face = array->at(0);
    EXPECT_EQ(face.kindName.str(), "TrueType");
    EXPECT_EQ(face.postScriptName.str(), "A&B");
    EXPECT_EQ(face.kerningChecksum, 0x7FFFFFFFu);
    EXPECT_EQ(face.outlineFileSize, 0xFFFFFFFFu);
    EXPECT_EQ(face.validAttributes, uint32_t(kTP_AttrKindName | kTP_AttrPostScriptName |
                                             kTP_AttrKerningChecksum | kTP_AttrOutlineFileSize));
    EXPECT_EQ(face.fondResourceID, 0);
    EXPECT_EQ(face.fondStyle, 0);
    // Without a Checksum key the accessor reports the attribute missing.
    unsigned long value = 0;
    EXPECT_EQ(TP_GetTypeprobeChecksum(array.get(), 0, &value), 5u);
    // The empty dictionary and the string both have an empty PostScript
    // name: one face, with nothing valid.
    EXPECT_EQ(array->at(1).validAttributes, 0u);
}

TEST(TP_CreateSpecifierFromPropertyList, RefusesWhatIsNotAnXMLListOfFaces)
{
    TP_FontArray* array = nullptr;
    EXPECT_EQ(TP_CreateSpecifierFromPropertyList(nullptr, &array), 1u);
    EXPECT_EQ(TP_CreateSpecifierFromPropertyList(PlistOf("<array><dict/></array>").c_str(),
                                                 nullptr),
              1u);

    // A binary list of one face, as the reader sees it: up to its first zero.
    plist_t list = plist_new_array();
    plist_t dict = plist_new_dict();
    plist_dict_set_item(dict, "PostScriptName", plist_new_string("A"));
    plist_array_append_item(list, dict);
    char* binary = nullptr;
    uint32_t binaryLength = 0;
    plist_to_bin(list, &binary, &binaryLength);
    plist_free(list);
    const std::string bplist(binary, binaryLength);
    plist_to_bin_free(binary);

    std::string deep;
    for (int i = 0; i < 100000; ++i) deep += "<array>";
    const std::string refused[] = {
        "",
        "garbage",
        bplist,
        "bplist00\x01\x02garbage",
        PlistOf("<dict><key>PostScriptName</key><string>A</string></dict>"),
        PlistOf("<string>A</string>"),
        PlistOf("<array/>"),
        PlistOf("<array><dict>"),
        PlistOf(deep),
    };
    for (const std::string& text : refused) {
        TP_FontArray* result = nullptr;
        EXPECT_EQ(TP_CreateSpecifierFromPropertyList(text.c_str(), &result), 1u)
            << text.substr(0, 80);
        EXPECT_EQ(result, nullptr);
    }
}

TEST(TP_CreateSpecifierFromPropertyList, KeepsTheFirstFaceOfEachPostScriptName)
{
    auto dict = [](const char* name, const char* family) {
        return std::string("<dict><key>PostScriptName</key><string>") + name +
               "</string><key>Family</key><string>" + family + "</string></dict>";
    };
    Array array = Read(TP_CreateSpecifierFromPropertyList,
                       PlistOf("<array>" + dict("A", "1") + dict("B", "2") + dict("A", "3") +
                               dict("a", "4") + "</array>"));
    std::vector<std::string> kept;
    for (const TP_FontSpecifier& face : array->faces())
        kept.push_back(face.postScriptName.str() + "/" + face.familyName.str());
    EXPECT_EQ(kept, (std::vector<std::string>{"A/1", "B/2", "a/4"}));
}

TEST(TP_GetPropertyListRepresentation, WritesOnlyUTF8Strings)
{
    TP_FontSpecifier face = FullFace();
    face.familyName = std::string(510, 'f') + "\xC3\xA9";  // "é" cut by the work buffer
    face.kindName = "Bad \xFF byte";
    Array array = Make({face});
    Array back = Read(TP_CreateSpecifierFromPropertyList,
                      Write(TP_GetPropertyListRepresentation, array.get()).text);
    EXPECT_EQ(back->at(0).familyName.str(), std::string(510, 'f'));
    EXPECT_EQ(back->at(0).kindName.str(), "");
}

// ------------------------------------------------------- round trips ---

constexpr uint32_t kCarriedBits = kTP_AttrKindName | kTP_AttrPostScriptName |
                                  kTP_AttrFoundryName | kTP_AttrFamilyName | kTP_AttrVersion |
                                  kTP_AttrTypeprobeChecksum | kTP_AttrKerningChecksum |
                                  kTP_AttrOutlineFileSize | kTP_AttrPrinterFontName;

std::string Text(unsigned long (*get)(TP_FontArray*, unsigned long, char*, int),
                 TP_FontArray* array, unsigned long index)
{
    char buffer[512] = {};
    get(array, index, buffer, sizeof buffer);
    return buffer;
}

// Checksums come back as signed 32-bit numbers: the top bit saturates.
uint32_t ReadBack(uint32_t checksum) { return checksum > 0x7FFFFFFF ? 0x7FFFFFFF : checksum; }

// What a face made with every attribute keeps and loses through a form.
void ExpectRoundTrip(TP_FontArray* original, TP_FontArray* back)
{
    ASSERT_EQ(Count(back), Count(original));
    for (unsigned long i = 0; i < Count(original); ++i) {
        SCOPED_TRACE(i);
        const TP_FontSpecifier o = original->at(i), b = back->at(i);
        EXPECT_EQ(b.validAttributes, kCarriedBits);
        EXPECT_EQ(b.kindName.str(), o.kindName.str());
        EXPECT_EQ(b.postScriptName.str(), o.postScriptName.str());
        EXPECT_EQ(b.familyName.str(), o.familyName.str());
        EXPECT_EQ(b.printerFontName.str(), o.printerFontName.str());
        // Cleaned and resolved, as the accessors deliver them.
        EXPECT_EQ(b.version.str(), Text(TP_GetVersion, original, i));
        EXPECT_EQ(b.foundryName.str(), Text(TP_GetFoundryName, original, i));
        EXPECT_EQ(b.typeprobeChecksum, ReadBack(o.typeprobeChecksum));
        EXPECT_EQ(b.kerningChecksum, ReadBack(o.kerningChecksum));
        EXPECT_EQ(b.outlineFileSize, o.outlineFileSize);
        // Lost.
        char buffer[64];
        unsigned long value = 0;
        EXPECT_EQ(TP_GetFullName(back, i, buffer, sizeof buffer), 5u);
        EXPECT_EQ(TP_GetDisplayName(back, i, buffer, sizeof buffer), 5u);
        EXPECT_EQ(TP_GetPlatform(back, i, buffer, sizeof buffer), 5u);
        EXPECT_EQ(TP_GetLegacyTypeprobeChecksum(back, i, &value), 5u);
        EXPECT_EQ(b.fondStyle | b.firstResourceID | b.fondResourceID, 0);
        EXPECT_EQ(b.fileCreator | b.fileType | b.outlineFileCreator | b.outlineFileType, 0u);
    }
}

void ExpectBothRoundTrips(TP_FontArray* original)
{
    {
        SCOPED_TRACE("XML");
        Array back = Read(TP_CreateSpecifierFromXML, Write(TP_GetXMLRepresentation, original).text);
        if (back) ExpectRoundTrip(original, back.get());
    }
    {
        SCOPED_TRACE("property list");
        Array back = Read(TP_CreateSpecifierFromPropertyList,
                          Write(TP_GetPropertyListRepresentation, original).text);
        if (back) ExpectRoundTrip(original, back.get());
    }
}

TEST(Representations, HandBuiltFacesRoundTrip)
{
    Array array = Make({FullFace(), SparseFace()});
    for (Reader read : {TP_CreateSpecifierFromXML, TP_CreateSpecifierFromPropertyList}) {
        Writer write =
            read == TP_CreateSpecifierFromXML ? TP_GetXMLRepresentation
                                              : TP_GetPropertyListRepresentation;
        Array back = Read(read, Write(write, array.get()).text);
        ASSERT_EQ(Count(back.get()), 2u);
        const TP_FontSpecifier full = back->at(0), sparse = back->at(1);
        EXPECT_EQ(full.version.str(), "1.002");
        EXPECT_EQ(full.foundryName.str(), "URW");
        EXPECT_EQ(full.typeprobeChecksum, 0x7FFFFFFFu);
        EXPECT_EQ(full.kerningChecksum, 0x1234u);
        EXPECT_EQ(full.outlineFileSize, 4096u);
        EXPECT_EQ(full.printerFontName.str(), "/Fonts/ExampBol");
        // Names that were not valid come back valid and empty.
        EXPECT_EQ(sparse.validAttributes, kCarriedBits);
        EXPECT_EQ(sparse.familyName.str(), "");
        EXPECT_EQ(sparse.typeprobeChecksum, 0u);
        // Faces rebuilt have resource number 0 and style 0.
        unsigned long index = 9;
        EXPECT_EQ(TP_GetFontIndexForFONDResourceID(back.get(), 0, 0, &index), 0u);
        EXPECT_EQ(index, 0u);
    }
}

class RealFontRoundTrip : public testing::TestWithParam<std::string> {};

TEST_P(RealFontRoundTrip, KeepsTheCarriedAttributes)
{
    TP_FontArray* created = nullptr;
    ASSERT_EQ(TP_CreateSpecifier(GetParam().c_str(), 0, kTP_AllAttributes, &created), 0u);
    Array original(created);
    ExpectBothRoundTrips(original.get());
}

INSTANTIATE_TEST_SUITE_P(
    Fonts, RealFontRoundTrip,
    testing::Values("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
                    "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc",
                    std::string(TYPEPROBE_TEST_DATA_DIR) + "/mac/tt-family/DejaVuSans.suit"));

TEST(TP_GetPropertyListRepresentation, OtherReadersReadIt)
{
    TP_FontArray* created = nullptr;
    ASSERT_EQ(TP_CreateSpecifier("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", 0,
                                 kTP_AllAttributes, &created),
              0u);
    Array original(created);
    TP_FontSpecifier odd = FullFace();
    odd.postScriptName = "Odd&<>\"\xC3\xA9";
    original->Append(odd);
    const std::string plist = Write(TP_GetPropertyListRepresentation, original.get()).text;
    TempFolder folder;
    const std::string path = folder.file("faces.plist", plist);

    std::vector<std::string> expected = {std::to_string(Count(original.get()))};
    for (unsigned long i = 0; i < Count(original.get()); ++i) {
        char checksum[16];
        std::snprintf(checksum, sizeof checksum, "%08X", original->at(i).typeprobeChecksum);
        expected.push_back(original->at(i).postScriptName.str() + "|" + checksum + "|11");
    }
    const char* program =
        "import plistlib, sys\n"
        "faces = plistlib.load(open(sys.argv[1], \"rb\"))\n"
        "print(len(faces))\n"
        "for f in faces: print(f[\"PostScriptName\"] + \"|\" + f[\"Checksum\"] + \"|\" + "
        "str(len(f)))\n";
    EXPECT_EQ(oracle::python(program, path), expected);

    // libplist's own tool reads it and writes it back unchanged.
    std::vector<std::string> lines = oracle::lines("plistutil -i " + path + " -f xml -o -");
    std::string again;
    for (const std::string& line : lines) again += line + "\n";
    EXPECT_EQ(again, plist);
}

}  // namespace
