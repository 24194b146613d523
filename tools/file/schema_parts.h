// schema_parts.h - JSON schemas of single fields and objects.
#pragma once

#include "file/faults.h"
#include "objects/catalogue.h"

namespace tool {

Json DefaultOf(const Field& field); // of a number: the number or its word
Json SchemaOf(const Field& field);

// The object of a class as save writes it, with further members.  'allOptional': no member is required.
Json ObjectSchema(Class id, const Json& more = Json::object());

// "provider-edge-port" and the like: where Definitions() has the object.
std::string DefinitionName(Class id);
// All objects of the configuration, and the notations that they use.
Json Definitions();

} // namespace tool
