// "plist": the library's property-list representation of every file merged
// into one array, each face's "Path" filled with its file (the library
// leaves it empty and ignores it when reading).
#include "Library.h"
#include "ReportWriter.h"

namespace tpcli {

namespace {

struct PlistFree {
    void operator()(plist_t node) const { Library().plist_free(node); }
};
using PlistPtr = std::unique_ptr<void, PlistFree>;

class PropertyListWriter : public ReportWriter {
public:
    explicit PropertyListWriter(std::ostream& out)
        : out_(out), plist_(Library()), faces_(plist_.plist_new_array())
    {
    }

    void file(const FileReport& report) override
    {
        const std::string& text = report.representation;
        if (text.empty()) return;
        plist_t parsed = nullptr;
        plist_.plist_from_xml(text.data(), uint32_t(text.size()), &parsed);
        PlistPtr document(parsed);
        if (!parsed || plist_.plist_get_node_type(parsed) != PLIST_ARRAY) return;
        for (uint32_t i = 0; i < plist_.plist_array_get_size(parsed); ++i) {
            plist_t face = plist_.plist_copy(plist_.plist_array_get_item(parsed, i));
            if (plist_.plist_get_node_type(face) == PLIST_DICT)
                plist_.plist_dict_set_item(face, plist_.pathKey, plist_.plist_new_string(report.task.path.c_str()));
            plist_.plist_array_append_item(faces_.get(), face);
        }
    }

    void finish(const Summary&) override
    {
        char* xml = nullptr;
        uint32_t length = 0;
        plist_.plist_to_xml(faces_.get(), &xml, &length);
        if (xml) {
            out_.write(xml, std::streamsize(length));
            plist_.plist_to_xml_free(xml);
        }
        out_.flush();
    }

private:
    std::ostream& out_;
    const LibraryFunctions& plist_;  // libplist comes with the library
    PlistPtr faces_;
};

}  // namespace

std::unique_ptr<ReportWriter> MakePropertyListWriter(std::ostream& out)
{
    return std::make_unique<PropertyListWriter>(out);
}

}  // namespace tpcli
