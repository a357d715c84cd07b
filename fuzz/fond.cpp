// The font family (FOND) readers: styles, association entries, family and
// PostScript names, printer-font names and paths, kerning sums and the
// checksums over a family's resources, and the editing operations, on a
// hostile FOND placed in a suitcase beside the resources its entries name.
//
// Input: a flags byte, a name length byte, the FOND's resource name, then the
// FOND's bytes.
#include <algorithm>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "checksum/FondKerning.h"
#include "checksum/ResourceChecksums.h"
#include "resourcefork/FONDRecord.h"
#include "resourcefork/FONDStyleNames.h"
#include "resourcefork/PascalStrings.h"
#include "fontfiles/PostScriptResources.h"
#include "resourcefork/PrinterFontNames.h"
#include "resourcefork/ResourceFileAccess.h"
#include "resourcefork/ResourceMapWriter.h"

namespace {

enum Flags : uint8_t {
    kSecondFamily = 0x01,  // a second FOND holding the first half of the bytes
    kPrinterFont = 0x02,   // a printer font beside the suitcase for style 0
    kEdit = 0x04,          // run the editing operations on a writable copy
};

constexpr size_t kMaxCompanions = 16;
constexpr size_t kMaxStyles = 12;

struct Suitcase {
    std::deque<std::vector<uint8_t>> storage;
    std::vector<ResourceRecord> records;

    void add(uint32_t type, int16_t id, std::vector<uint8_t> data, const std::string* name = nullptr)
    {
        storage.push_back(std::move(data));
        ResourceRecord record;
        record.type = type;
        record.id = id;
        record.hasName = name != nullptr;
        if (name) record.name = name->substr(0, 255);
        record.data = ByteView(storage.back());
        records.push_back(std::move(record));
    }
};

std::vector<uint8_t> bytesOf(const std::string& text)
{
    return std::vector<uint8_t>(text.begin(), text.end());
}

// An outline whose first bytes are one of the magic values the kind tests
// look for (or too short for any), chosen by position.
std::vector<uint8_t> outlineData(size_t choice)
{
    switch (choice % 5) {
    case 0: return bytesOf("true....");
    case 1: return {0, 1, 0, 0, 'd', 'a', 't', 'a'};
    case 2: return bytesOf("OTTO....");
    case 3: return bytesOf("typ1....");
    default: return bytesOf("xy");
    }
}

void writeSuitcase(const std::string& path, const ByteView fond, const std::string& name,
                   uint8_t flags)
{
    Suitcase suitcase;
    int16_t familyID = 128;
    fond.i16(FOND::kFamilyID, familyID);
    suitcase.add(kTypeFOND, familyID, std::vector<uint8_t>(fond.span().begin(), fond.span().end()),
                 &name);
    if (flags & kSecondFamily) {
        const std::string none;
        suitcase.add(kTypeFOND, int16_t(familyID + 1),
                     std::vector<uint8_t>(fond.span().begin(), fond.span().begin() + fond.size() / 2),
                     &none);
    }
    const FOND::EntryRange entries = FOND::Entries(fond);
    for (size_t i = 0; i < entries.size() && i < kMaxCompanions; ++i) {
        const FOND::AssociationEntry entry = FOND::EntryInside(fond, i);
        if (entry.size == 0) {
            suitcase.add(kTypeSfnt, entry.id, outlineData(i + flags));
        } else {
            suitcase.add(kTypeNFNT, entry.id, bytesOf("bitmap strike"));
            if (i % 2) suitcase.add(kTypeFONT, entry.id, bytesOf("old strike"));
        }
    }
    auto bytes = ResourceMapWriter::Write(suitcase.records);
    FUZZ_CHECK(bytes.has_value());
    fuzzsupport::WriteFile(path, bytes->data(), bytes->size());
}

// A printer font under the name the family gives style 0, when that name
// stays inside the folder.
void writePrinterFont(const std::string& folder, const TypeprobeResourceFile& file,
                      const ResourceHandle& fond)
{
    const std::string name = file.getPSPrinterNameForFOND(&fond, 0).str();
    if (name.empty() || name.find('/') != std::string::npos || name == "." || name == "..") return;
    Suitcase printer;
    printer.add(kTypePOST, 501, bytesOf("\x01\x00%!PS-AdobeFont-1.0: Fuzz-Bold 001.000\n"
                                        "/FontName /Fuzz-Bold def /FamilyName (Fuzz) def"));
    printer.add(kTypePOST, 502, std::vector<uint8_t>(2048, 'x'));
    auto bytes = ResourceMapWriter::Write(printer.records);
    FUZZ_CHECK(bytes.has_value());
    fuzzsupport::WriteFile(folder + "/" + name, bytes->data(), bytes->size());
}

// Every Pascal-string writer under every limit, into buffers of exactly that
// size, so that a write past the limit is caught.
void styleNames(const ResourceHandle& fond, int16_t style)
{
    for (size_t limit : {size_t(1), size_t(2), size_t(8), size_t(64), kPascalBufferSize}) {
        std::vector<unsigned char> name(limit);
        GetPrinterFontNameFromResource(&fond, style & 0xFF, name.data(), limit);
        FUZZ_CHECK(name[0] < limit);
    }
    unsigned char name[kPascalBufferSize];
    GetPrinterFontNameFromResource(&fond, style & 0xFF, name, sizeof name);
    std::vector<unsigned char> fileName(255);
    GetPostScriptFontFileName(name, fileName.data());
    for (size_t i = 1; i <= fileName[0]; ++i) FUZZ_CHECK(fileName[i] >= 0x20 && fileName[i] <= 0x7E);
    for (int n = -1; n <= 3; ++n) {
        std::vector<unsigned char> indexed(17);
        GetIndStyleName(fond.view().tail(60), n, indexed.data(), indexed.size());
    }
}

void queryStyle(const TypeprobeResourceFile& file, const std::string& path,
                const ResourceHandle& fond, int16_t style)
{
    file.styleExists(style, &fond);
    file.getSortedNFNTsForFOND(&fond, style);
    file.shouldHavePrinterFile(&fond, style);
    const LxString psName = file.getPostScriptNameForFOND(&fond, style);
    file.getPSPrinterNameForFOND(&fond, style);
    bool isMM = false;
    file.normalizePostScriptName(psName, &fond, &isMM);
    styleNames(fond, style);

    getFirstResourceIDFromHandleAndStyle(&file, &fond, style);
    getSortedResIDsForStyle(&file, &fond, style);
    has_ttc_true_Flag(&file, &fond, style);
    has_OTTO_Flag_inResource(&file, &fond, style);
    CreatePrinterPath(&file, &fond, style);

    GetVaultlineChecksum(fond.view(), style);
    KerningPairsCRC(fond.view(), style);
    ChecksumNFNTsfntFONT(&file, &fond, style, 0);
    unsigned long legacy = 0;
    GetVantorChecksum(LxString(path), &file, &fond, style, style == 1, legacy);

    LxString printer, kind, foundry, family, version, postScriptName, displayName, fullName;
    const int status = CollectPSMetaDataMac(&file, LxString(path), &fond, style, &printer, &kind,
                                            &foundry, &family, &version, &postScriptName,
                                            &displayName, &fullName);
    FUZZ_CHECK(status == 0 || status == -1 || status == 6);
    Collect_sfnt_MetaDataFromPrinterInfo(&file, &fond, style, &kind, &foundry, &family, &version,
                                         &postScriptName, &displayName, &fullName);
}

void queryFamily(const TypeprobeResourceFile& file, const std::string& path,
                 const ResourceHandle& fond)
{
    const std::vector<int16_t> styles = file.getSortedStylesForFOND(&fond);
    FUZZ_CHECK(std::is_sorted(styles.begin(), styles.end()));
    FUZZ_CHECK(std::adjacent_find(styles.begin(), styles.end()) == styles.end());
    const int16_t count = getCountOfUniqueStyles(&file, &fond);
    for (int index = -1; index <= count && index < int(kMaxStyles); ++index)
        getStyleFromStyleIndex(&file, &fond, index);
    for (int index = -1; index < 4; ++index) file.getResIDForFOND(&fond, index);
    file.getResourceNameFromFOND(&fond);
    file.isDoubleByteFOND(&fond);
    file.getStyleOffsetFromFOND(&fond);
    getSortedResIDsForStyle(&file, &fond, -1);

    std::vector<int16_t> asked(styles.begin(), styles.begin() + std::min(styles.size(), kMaxStyles));
    for (int16_t style : {0, 1, 3, 0x7F, 0x100, -1}) asked.push_back(int16_t(style));
    for (int16_t style : asked) queryStyle(file, path, fond, style);
}

void edit(const std::string& path, const std::vector<int16_t>& styles)
{
    ResourceFilePtr file = AllocateResourceFile(path, false);
    if (!file) return;
    if (ResourceHandlePtr fond = getHandleOfTypeAndIndex(file.get(), kTypeFOND, 1))
        file->purgeFromFOND(fond.get(), styles, true);
    if (ResourceHandlePtr fond = getHandleOfTypeAndIndex(file.get(), kTypeFOND, 1))
        file->purgeAllBut(styles.empty() ? int16_t(0) : styles.back(), fond.get());
    if (ResourceHandlePtr fond = getHandleOfTypeAndIndex(file.get(), kTypeFOND, 1))
        file->promoteFOND(fond.get(), styles.empty() ? int16_t(1) : styles.front());
    file->updateResFile();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    const ByteView input(data, size);
    uint8_t flags = 0, nameLength = 0;
    if (!input.u8(0, flags) || !input.u8(1, nameLength) || !input.contains(2, nameLength)) return 0;
    const std::string name(input.chars(2, nameLength));
    const ByteView fond = input.tail(2 + size_t(nameLength));

    const std::string folder = fuzzsupport::EmptyFolder("fond");
    const std::string path = folder + "/Suitcase";
    writeSuitcase(path, fond, name, flags);
    ResourceFilePtr file = AllocateResourceFile(path, true);
    FUZZ_CHECK(file != nullptr);

    ResourceHandlePtr first = getHandleOfTypeAndIndex(file.get(), kTypeFOND, 1);
    FUZZ_CHECK(first != nullptr);
    if (flags & kPrinterFont) writePrinterFont(folder, *file, *first);

    const int32_t families = countResType(file.get(), kTypeFOND);
    for (int16_t index = 1; index <= families; ++index) {
        ResourceHandlePtr family = getHandleOfTypeAndIndex(file.get(), kTypeFOND, index);
        FUZZ_CHECK(family != nullptr);
        queryFamily(*file, path, *family);
    }
    file->getSortedStyles();
    file->getPrinterFiles();
    const std::vector<int16_t> styles = file->getSortedStylesForFOND(first.get());
    file.reset();

    if (flags & kEdit) edit(path, styles);
    return 0;
}
