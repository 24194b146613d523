// document.h - from text to a JSON document, with the limits that a file from anywhere needs.
#pragma once

#include "file/faults.h"

#include <string_view>

namespace tool {

// Reads a document.  The JSON library keeps the last of two equal members; here the second one is a fault.  Returns
// false, with one fault, when the text is no JSON, or is so large, so deep or so wide that it is no configuration.
bool ReadDocument(std::string_view text, Faults& faults, nlohmann::ordered_json& document);

} // namespace tool
