// The XML form of an array: a fixed template per face, filled by plain
// textual substitution, and a reader that picks the elements out by tag.
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "api/Representations.h"

using namespace representation;

namespace {

constexpr std::string_view kHeader =
    "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
    "<TypeprobeData xmlns:xsi=\"https://typeprobe.org/schemas/TypeprobeData.xsd\">\n";
constexpr std::string_view kClosing = "</TypeprobeData>\n";

constexpr const char* kFaceTemplate =
    "\t<FontData>\n"
    "\t\t<FontKind>PLACEHOLDER_FONTKIND</FontKind>\n"
    "\t\t<PostScriptName>PLACEHOLDER_POSTSCRIPTNAME</PostScriptName>\n"
    "\t\t<Foundry>PLACEHOLDER_FOUNDRY</Foundry>\n"
    "\t\t<Family>PLACEHOLDER_FAMILY</Family>\n"
    "\t\t<Version>PLACEHOLDER_VERSION</Version>\n"
    "\t\t<Checksum>PLACEHOLDER_CHECKSUM</Checksum>\n"
    "\t\t<KerningChecksum>PLACEHOLDER_KERNINGCHECKSUM</KerningChecksum>\n"
    "\t\t<OutlineFileSize>PLACEHOLDER_OUTLINEFILESIZE</OutlineFileSize>\n"
    "\t\t<OutlineFileName>PLACEHOLDER_OUTLINEFILENAME</OutlineFileName>\n"
    "\t</FontData>\n";

constexpr std::string_view kFaceOpen = "<FontData>";
constexpr std::string_view kFaceClose = "</FontData>";

// One placeholder and where its value comes from: a text accessor, or a
// number accessor and its format.
struct Placeholder {
    const char* text;
    TextAccessor getText;
    NumberAccessor getNumber;
    std::string (*format)(unsigned long);
};

// In replacement order.
const Placeholder kPlaceholders[] = {
    {"PLACEHOLDER_FONTKIND", TP_GetKindName, nullptr, nullptr},
    {"PLACEHOLDER_POSTSCRIPTNAME", TP_GetPostScriptName, nullptr, nullptr},
    {"PLACEHOLDER_FOUNDRY", TP_GetFoundryName, nullptr, nullptr},
    {"PLACEHOLDER_FAMILY", TP_GetFamilyName, nullptr, nullptr},
    {"PLACEHOLDER_VERSION", TP_GetVersion, nullptr, nullptr},
    {"PLACEHOLDER_CHECKSUM", nullptr, TP_GetTypeprobeChecksum, FormatChecksum},
    {"PLACEHOLDER_KERNINGCHECKSUM", nullptr, TP_GetKerningChecksum, FormatChecksum},
    {"PLACEHOLDER_OUTLINEFILESIZE", nullptr, TP_GetOutlineFileSize, FormatFileSize},
    {"PLACEHOLDER_OUTLINEFILENAME", TP_GetPrinterFont, nullptr, nullptr},
};

std::string PlaceholderValue(const Placeholder& placeholder, TP_FontArray* array,
                             unsigned long index)
{
    if (placeholder.getText) return AccessorText(placeholder.getText, array, index);
    unsigned long value = 0;
    placeholder.getNumber(array, index, &value);  // an invalid attribute leaves 0
    return placeholder.format(value);
}

// No escaping, and each placeholder is replaced across the whole block, so a
// value holding a later placeholder's text gets that value: intended.
std::string FaceBlock(TP_FontArray* array, unsigned long index)
{
    LxString block(kFaceTemplate);
    for (const Placeholder& placeholder : kPlaceholders)
        ReplaceAll(&block, placeholder.text, PlaceholderValue(placeholder, array, index).c_str());
    return block.str();
}

std::string XMLDocument(TP_FontArray* array)
{
    std::string document(kHeader);
    for (unsigned long index = 0; index < array->size(); ++index)
        document += FaceBlock(array, index);
    document += kClosing;
    return document;
}

// Finds the value of "<tag>...</tag>" from a position that only moves
// forward through one text. Each search resumes from its last hit, so a
// whole document costs one pass per tag however many faces it holds.
class TagFinder {
public:
    TagFinder(std::string_view text, std::string_view tag)
        : text_(text), open_("<" + std::string(tag) + ">"), close_("</" + std::string(tag) + ">")
    {
    }

    // The bytes between the first "<tag>" at or after `from` and the next
    // "</tag>" after it, verbatim; nothing when either is missing.
    std::optional<std::string_view> ValueFrom(size_t from)
    {
        openAt_ = Next(open_, from, openAt_, openSearched_);
        if (openAt_ == kNone) return std::nullopt;
        const size_t valueStart = openAt_ + open_.size();
        closeAt_ = Next(close_, valueStart, closeAt_, closeSearched_);
        if (closeAt_ == kNone) return std::nullopt;
        return text_.substr(valueStart, closeAt_ - valueStart);
    }

private:
    static constexpr size_t kNone = std::string_view::npos;

    // The first `what` at or after `from`, given the hit of an earlier search
    // from a position not after `from`.
    size_t Next(const std::string& what, size_t from, size_t lastHit, bool& searched) const
    {
        if (searched && (lastHit == kNone || lastHit >= from)) return lastHit;
        searched = true;
        return text_.find(what, from);
    }

    std::string_view text_;
    std::string open_, close_;
    size_t openAt_ = kNone, closeAt_ = kNone;
    bool openSearched_ = false, closeSearched_ = false;
};

// Reads the faces of an XML document. The elements of a face are searched
// from its "<FontData>" to the end of the text, not of the block: a tag
// missing from one block is taken from a later one. Intended.
class XMLReader {
public:
    explicit XMLReader(std::string_view text) : text_(text), budget_(4 * text.size() + (1 << 20))
    {
        for (const TextAttribute& attribute : kTextAttributes)
            texts_.emplace_back(text, attribute.name);
        for (const NumberAttribute& attribute : kNumberAttributes)
            numbers_.emplace_back(text, attribute.name);
    }

    // 0 when at least one block was complete, 4 when none was, 1 when the
    // faces would hold far more text than the document (hostile sharing).
    unsigned long Read(TP_FontArray& array)
    {
        unsigned long code = kTP_IndexOutOfRange;
        for (size_t open = text_.find(kFaceOpen); open != kNone;) {
            if (!AddFace(open, array)) return kTP_NullArgumentOrNotFound;
            // A face without its closing tag stays, but does not count.
            const size_t close = text_.find(kFaceClose, open + kFaceOpen.size());
            if (close == kNone) break;
            code = kTP_Success;
            open = text_.find(kFaceOpen, close);
        }
        return code;
    }

private:
    static constexpr size_t kNone = std::string_view::npos;

    // Appends the face at `open` unless an earlier face has its PostScript
    // name (bytes compared exactly). Stored faces have no resource numbers,
    // so this keeps exactly the faces that removing duplicates keeps, without
    // copying the others or comparing every pair.
    bool AddFace(size_t open, TP_FontArray& array)
    {
        std::optional<std::string_view> name = texts_[kPostScriptNameAt].ValueFrom(open);
        const std::string_view key = name.value_or(std::string_view());
        // Faces that share one element share its name: no need to look again.
        const bool sameElement =
            haveLastName_ && key.data() == lastName_.data() && key.size() == lastName_.size();
        lastName_ = key;
        haveLastName_ = true;
        if (sameElement || !names_.insert(key).second) return true;

        TP_FontSpecifier face = NewStoredFace();
        size_t bytes = 0;
        for (size_t i = 0; i < texts_.size(); ++i) {
            std::optional<std::string_view> value = texts_[i].ValueFrom(open);
            if (!value) continue;
            face.*kTextAttributes[i].field = std::string(*value);
            face.validAttributes |= kTextAttributes[i].bit;
            bytes += value->size();
        }
        for (size_t i = 0; i < numbers_.size(); ++i) {
            std::optional<std::string_view> value = numbers_[i].ValueFrom(open);
            // The number is stored even when the tag is missing (then 0).
            face.*kNumberAttributes[i].field =
                ParseLong32(std::string(value.value_or("")).c_str(), kNumberAttributes[i].base);
            if (value) face.validAttributes |= kNumberAttributes[i].bit;
        }
        if (bytes > budget_) return false;
        budget_ -= bytes;
        array.Append(face);
        return true;
    }

    static constexpr size_t kPostScriptNameAt = 2;
    static_assert(kTextAttributes[kPostScriptNameAt].bit == kTP_AttrPostScriptName);

    std::string_view text_;
    size_t budget_;  // text bytes the faces may still take
    std::vector<TagFinder> texts_, numbers_;
    std::unordered_set<std::string_view> names_;
    std::string_view lastName_;
    bool haveLastName_ = false;
};

}  // namespace

extern "C" {

TP_API unsigned long TP_GetXMLRepresentation(TP_FontArray* array, char* buffer,
                                             unsigned long* length)
{
    if (!array || !buffer || !length) return kTP_NullArgumentOrNotFound;
    return DeliverDocument(XMLDocument(array), array->size() > 0, buffer, length);
}

// The root element and the header are never checked.
TP_API unsigned long TP_CreateSpecifierFromXML(const char* xml, TP_FontArray** result)
{
    if (!xml || !result) return kTP_NullArgumentOrNotFound;
    auto array = std::make_unique<TP_FontArray>();
    const unsigned long code = XMLReader(xml).Read(*array);
    if (code != kTP_Success) return code;
    *result = array.release();
    return kTP_Success;
}

}  // extern "C"
