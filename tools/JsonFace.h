// Faces as JSON objects: "index", then each attribute read under its key
// (checksums as "%08X" text, sizes as numbers), "legacyFoundry" beside
// "foundry", then "wrapper" and "container", which every face has.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "FontFile.h"
#include "Summary.h"

namespace tpcli {

nlohmann::ordered_json FaceJson(const Face& face);

// {"files", "faces", "filesWithoutFace", "errors"}
nlohmann::ordered_json SummaryJson(const Summary& summary);

// Serialised; invalid UTF-8 is replaced rather than refused.
std::string JsonText(const nlohmann::ordered_json& value, int indent);

}  // namespace tpcli
