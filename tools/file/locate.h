// locate.h - where in a file an object or a fault is.
#pragma once

#include "file/faults.h"
#include "objects/catalogue.h"

namespace tool {

// "$.ports[2].providerEdgePorts[0]": the first object of a document that stands for a record; "$" when there is none.
std::string PathOf(const Json& document, const ObjectClass& row, const void* pRecord);

// "port 1/3 pep 2": the object that a path leads to or into; empty when it has no name.
std::string ObjectAt(const Json& document, std::string_view path);

// The line of a path in the text of a document that could be parsed.
std::size_t LineOf(std::string_view text, std::string_view path);

} // namespace tool
