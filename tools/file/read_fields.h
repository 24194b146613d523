// read_fields.h - members of a JSON object into a record, by the table of its fields.
#pragma once

#include "file/faults.h"
#include "objects/fields.h"

namespace tool {

// Null when 'object' is none or has no such member.
const Json* FindMember(const Json& object, std::string_view name);

// Reads the members of 'object' into a record that holds its defaults.  Members of no field are unknown, unless they
// are among 'others'.  Returns false when the record cannot be used.
bool ReadFields(Faults& faults, const Path& path, const Json& object, std::span<const Field> fields, void* pRecord,
                std::span<const std::string_view> others = {});

// The value of one field; false and a fault when it is none.
bool ReadField(Faults& faults, const Path& path, const Json& value, const Field& field, void* pRecord);

// A number or a word of 'field'.  What cannot be stored is a fault and false.
bool ReadNumber(Faults& faults, const Path& path, const Json& value, const Field& field, uint32_t& number);

} // namespace tool
