// Parsing property-list bytes with libplist. libplist recurses once per
// nesting level and copies a binary list's shared objects at every
// reference, so hostile input could exhaust the stack or expand without
// bound. Before handing bytes over we check their shape: the nesting depth
// of an XML list's elements, and for a binary list the object graph
// (references in range, no cycles, bounded depth and expanded size).
#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "support/ByteView.h"
#include "support/XCFUtils.h"

namespace XCFUtils {
namespace {

constexpr std::string_view kBinaryMagic = "bplist00";

// ---------------------------------------------------------------- XML ---

constexpr std::string_view kSpace = " \t\r\n";
constexpr size_t kNone = std::string_view::npos;

// An upper bound of the element depth libplist reaches in an XML list.
// Every element start tag counts as an open level, wherever it stands
// (even inside comments or attribute values), except bare empty elements
// ("<true/>"). An end tag closes a level only when it names the innermost
// open element and lies outside every stretch that libplist might read as
// something else: comments, CDATA sections, processing instructions,
// declarations, and the inside of tags with their quoted values, taken in
// the widest of their possible readings. So the bound can only be too
// high, never too low. Linear in the length of the text.
class XmlDepth {
public:
    explicit XmlDepth(std::string_view text) : text_(text) {}

    bool isSafe()
    {
        for (size_t lt = text_.find('<'); lt != kNone; lt = text_.find('<', lt + 1)) {
            if (!markup(lt)) return false;
        }
        return true;
    }

private:
    // One past the first `terminator` after `from` outside quotes; kNone when
    // one of `stops` or the end of the text comes first. Stopping at the next
    // '<' keeps the scans from overlapping.
    size_t scan(size_t from, std::string_view terminator, std::string_view stops = "<") const
    {
        char quote = 0;
        for (size_t i = from; i < text_.size(); ++i) {
            char c = text_[i];
            if (stops.find(c) != kNone) return kNone;
            if (quote) {
                if (c == quote) quote = 0;
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (text_.substr(i).starts_with(terminator)) {
                return i + terminator.size();
            }
        }
        return kNone;
    }

    // One past the next `terminator` at or after `from` (comments and CDATA
    // know no quoting), or kNone. A search resumes from its last hit, so
    // repeated searches stay linear.
    struct Finder {
        std::string_view terminator;
        size_t at = 0;
        bool searched = false;

        size_t after(std::string_view text, size_t from)
        {
            if (!searched || (at != kNone && from > at)) {
                at = text.find(terminator, from);
                searched = true;
            }
            return at == kNone ? kNone : at + terminator.size();
        }
    };

    void protect(size_t end) { guard_ = end == kNone ? text_.size() : std::max(guard_, end); }

    bool markup(size_t lt)
    {
        std::string_view rest = text_.substr(lt);
        if (rest.starts_with("<!--")) {
            protect(commentEnd_.after(text_, lt + 4));
        } else if (rest.starts_with("<![CDATA[")) {
            protect(cdataEnd_.after(text_, lt + 9));
        } else if (rest.starts_with("<?")) {
            protect(scan(lt + 2, "?>"));
        } else if (rest.starts_with("<!")) {
            // No internal subsets: a '[' ends all closing.
            protect(scan(lt + 2, ">", "<["));
        } else if (rest.starts_with("</")) {
            size_t end = scan(lt + 2, ">");
            if (lt >= guard_ && end != kNone) {
                std::string_view name = text_.substr(lt + 2, end - 1 - (lt + 2));
                name = name.substr(0, name.find_last_not_of(kSpace) + 1);
                if (!open_.empty() && open_.back() == name) open_.pop_back();
            }
            protect(end);
        } else {
            size_t end = scan(lt + 1, ">");
            protect(end);
            // Without an end, the tag runs to the next '<' at most.
            size_t tagEnd = end == kNone ? text_.find('<', lt + 1) : end - 1;
            std::string_view tag = text_.substr(lt + 1, std::min(tagEnd, text_.size()) - lt - 1);
            if (!isBareEmptyElement(tag)) open_.push_back(tag.substr(0, nameLength(tag)));
        }
        return open_.size() <= kMaxPropertyListDepth;
    }

    static size_t nameLength(std::string_view tag) { return tag.find_first_of(" \t\r\n/"); }

    // "<true/>" or "<array />": a name, optional white space and a slash.
    static bool isBareEmptyElement(std::string_view tag)
    {
        size_t nameEnd = nameLength(tag);
        if (nameEnd == 0 || nameEnd == kNone || tag.back() != '/') return false;
        return tag.find_first_not_of(kSpace, nameEnd) == tag.size() - 1;
    }

    std::string_view text_;
    std::vector<std::string_view> open_;
    size_t guard_ = 0;  // end tags before this offset close nothing
    Finder commentEnd_{"-->"};
    Finder cdataEnd_{"]]>"};
};

// ------------------------------------------------------------- binary ---

// The trailer that ends a binary property list, as CoreFoundation names
// its fields; the three 64-bit ones are read as sized integers.
struct BinaryPlistTrailer {
    static constexpr Field<uint8_t> offsetIntSize{6}, objectRefSize{7};
    static constexpr size_t numObjects = 8, topObject = 16, offsetTableOffset = 24;
    static constexpr size_t wideSize = 8;
    static constexpr size_t size = 32;
};

// A big-endian unsigned integer of 1 to 8 bytes.
bool readSized(ByteView view, size_t offset, size_t size, uint64_t& out)
{
    if (size < 1 || size > 8 || !view.contains(offset, size)) return false;
    uint64_t value = 0;
    for (size_t i = 0; i < size; ++i) {
        uint8_t byte = 0;
        view.u8(offset + i, byte);
        value = (value << 8) | byte;
    }
    out = value;
    return true;
}

// The object graph of a binary list ("bplist00"): a trailer in the last 32
// bytes gives the offset and reference sizes, the object count, the top
// object and the offset table's position.
class BinaryShape {
public:
    explicit BinaryShape(ByteView bytes) : bytes_(bytes) {}

    bool isSafe()
    {
        if (!readTrailer()) return false;
        state_.assign(size_t(objectCount_), kUnvisited);
        expanded_.assign(size_t(objectCount_), 0);
        uint64_t nodes = 0;
        return visit(topObject_, 1, nodes);
    }

private:
    enum : uint8_t { kUnvisited, kInProgress, kDone };

    bool readTrailer()
    {
        using Trailer = BinaryPlistTrailer;
        if (bytes_.size() < kBinaryMagic.size() + Trailer::size) return false;
        body_ = bytes_.size() - Trailer::size;
        uint8_t offsetSize = 0, refSize = 0;
        if (!bytes_.read(body_, Trailer::offsetIntSize, offsetSize) ||
            !bytes_.read(body_, Trailer::objectRefSize, refSize) ||
            !readSized(bytes_, body_ + Trailer::numObjects, Trailer::wideSize, objectCount_) ||
            !readSized(bytes_, body_ + Trailer::topObject, Trailer::wideSize, topObject_) ||
            !readSized(bytes_, body_ + Trailer::offsetTableOffset, Trailer::wideSize, tableOffset_))
            return false;
        offsetSize_ = offsetSize;
        refSize_ = refSize;
        if (offsetSize_ < 1 || offsetSize_ > 8 || refSize_ < 1 || refSize_ > 8) return false;
        if (tableOffset_ < kBinaryMagic.size() || tableOffset_ >= body_) return false;
        if (objectCount_ == 0 || objectCount_ > (body_ - tableOffset_) / offsetSize_) return false;
        return topObject_ < objectCount_;
    }

    bool objectOffset(uint64_t index, size_t& offset) const
    {
        uint64_t value = 0;
        if (!readSized(bytes_, size_t(tableOffset_ + index * offsetSize_), offsetSize_, value))
            return false;
        if (value < kBinaryMagic.size() || value >= body_) return false;
        offset = size_t(value);
        return true;
    }

    // The references held by the object at `offset`: none for a scalar; for
    // an array or set its elements, for a dictionary its keys and values.
    bool references(size_t offset, size_t& first, uint64_t& count) const
    {
        uint8_t marker = 0;
        if (!bytes_.u8(offset, marker)) return false;
        uint8_t kind = marker >> 4;
        count = 0;
        if (kind != 0xA && kind != 0xC && kind != 0xD) return true;
        first = offset + 1;
        count = marker & 0x0F;
        if (count == 0x0F) {
            uint8_t intMarker = 0;
            if (!bytes_.u8(first, intMarker) || (intMarker >> 4) != 0x1 || (intMarker & 0x0F) > 3)
                return false;
            size_t intSize = size_t(1) << (intMarker & 0x0F);
            if (!readSized(bytes_, first + 1, intSize, count)) return false;
            first += 1 + intSize;
        }
        uint64_t room = first <= body_ ? (body_ - first) / refSize_ : 0;
        if (kind == 0xD) {
            if (count > room / 2) return false;
            count *= 2;
        }
        return count <= room;
    }

    // Depth-first, each object once; `nodes` receives the number of nodes the
    // object expands to when every reference is copied.
    bool visit(uint64_t index, size_t depth, uint64_t& nodes)
    {
        if (depth > kMaxPropertyListDepth || state_[index] == kInProgress) return false;
        if (state_[index] == kDone) {
            nodes = expanded_[index];
            return true;
        }
        state_[index] = kInProgress;
        size_t offset = 0, first = 0;
        uint64_t count = 0;
        if (!objectOffset(index, offset) || !references(offset, first, count)) return false;
        uint64_t total = 1;
        for (uint64_t i = 0; i < count; ++i) {
            uint64_t child = 0, childNodes = 0;
            if (!readSized(bytes_, size_t(first + i * refSize_), refSize_, child) ||
                child >= objectCount_ || !visit(child, depth + 1, childNodes))
                return false;
            total += childNodes;
            // An honest list expands to at most one node per byte.
            if (total > bytes_.size()) return false;
        }
        expanded_[index] = total;
        state_[index] = kDone;
        nodes = total;
        return true;
    }

    ByteView bytes_;
    size_t body_ = 0;  // where the trailer starts
    size_t offsetSize_ = 0;
    size_t refSize_ = 0;
    uint64_t objectCount_ = 0;
    uint64_t topObject_ = 0;
    uint64_t tableOffset_ = 0;
    std::vector<uint8_t> state_;
    std::vector<uint64_t> expanded_;
};

bool isSafeToParse(ByteView bytes)
{
    // libplist takes a list as binary exactly when it starts with the magic.
    if (bytes.startsWith(kBinaryMagic)) return BinaryShape(bytes).isSafe();
    return XmlDepth(bytes.chars()).isSafe();
}

}  // namespace

plist_t XCFCreateCFPropertyListFromBytes(std::string_view bytes)
{
    if (bytes.empty() || bytes.size() >= std::numeric_limits<uint32_t>::max()) return nullptr;
    if (!isSafeToParse(ByteView(bytes))) return nullptr;
    // A private, zero-terminated copy: the parser then cannot run past the end.
    std::string text(bytes);
    plist_t list = nullptr;
    plist_from_memory(text.data(), uint32_t(text.size()), &list);
    return list;
}

}  // namespace XCFUtils
