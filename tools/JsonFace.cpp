#include "JsonFace.h"

#include "Attributes.h"

namespace tpcli {

nlohmann::ordered_json FaceJson(const Face& face)
{
    nlohmann::ordered_json json;
    json["index"] = face.index;
    for (const Attribute& attribute : AllAttributes()) {
        if (!face.has(attribute.bit)) continue;
        if (attribute.kind == ValueKind::Size)
            json[attribute.jsonKey] = face.number(attribute.bit);
        else
            json[attribute.jsonKey] = face.display(attribute.bit);
        if (attribute.bit == kTP_AttrFoundryName && face.legacyFoundry)
            json["legacyFoundry"] = *face.legacyFoundry;
    }
    json["wrapper"] = face.wrapper;
    json["container"] = face.container;
    return json;
}

nlohmann::ordered_json SummaryJson(const Summary& summary)
{
    return {{"files", summary.files},
            {"faces", summary.faces},
            {"filesWithoutFace", summary.withoutFace},
            {"errors", summary.errors}};
}

std::string JsonText(const nlohmann::ordered_json& value, int indent)
{
    return value.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace tpcli
