// fields.h - the members of the JSON objects as tables: a member's name, its place in the record of the exchange, how
// it is written, its default and its range.  Reading, writing and comparing records all go by these tables.
#pragma once

#include "file/faults.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

namespace tool {

using Json = nlohmann::ordered_json;

// A value that has a name.  "true" and "false" are written as the JSON values.
struct Word {
    std::string_view text;
    uint32_t value;
};

enum class Notation {
    kNumber, // or a word, where the value has one
    kHex16,  // "0x88A8"
    kPort,   // "1/2": two bytes, slot and port
    kMac,    // "aa:bb:cc:dd:ee:ff"
    kBytes,  // hexadecimal digits; bytes that are not given are zero
    kName    // text; in the member NAME + "Bytes" as hexadecimal digits what is no plain text
};

enum class Presence {
    kRequired,
    kWritten, // may be left out of a file, and is always written
    kOptional // is written unless it has its default
};

struct Range {
    uint32_t min = 0;
    uint32_t max = std::numeric_limits<uint32_t>::max();
};

inline constexpr std::size_t kNoField = std::numeric_limits<std::size_t>::max();

struct Field {
    std::string_view name;
    std::size_t offset = 0; // bytes from the start of the record, its Moid included
    std::size_t size = 0;   // bytes
    Notation notation = Notation::kNumber;
    Presence presence = Presence::kOptional;
    uint32_t byDefault = 0; // of numbers; everything else is zero by default
    Range storable = {};    // other numbers are errors; the width of the field limits them too
    Range sensible = {};    // other numbers break a rule that --lenient turns off
    std::span<const Word> words = {};
    std::size_t sameAs = kNoField; // offset of an earlier field whose value is the default
};

// The place of a record's member, for a row of a table.
#define FIELD_AT(record, member) .offset = offsetof(record, member), .size = sizeof(record::member)

// Puts the defaults into a record.
void SetDefaults(std::span<const Field> fields, void* pRecord);

// Reads the members of 'object' into a record that holds its defaults.  Members of no field are unknown, unless they
// are among 'others'.  Returns false when the record cannot be used.
bool ReadFields(Faults& faults, const Path& path, const Json& object, std::span<const Field> fields, void* pRecord,
                std::span<const std::string_view> others = {});

// Appends the members of a record to 'object'.
void WriteFields(std::span<const Field> fields, const void* pRecord, Json& object);

// Whether a member is written only when it is always written.
bool IsDefault(const Field& field, const void* pRecord);

// One member: its name, which depends on the value of names, and its value.
std::string MemberName(const Field& field, const void* pRecord);
Json MemberValue(const Field& field, const void* pRecord);

// A number or a word of 'field'.  What cannot be stored is a fault and false.
bool ReadNumber(Faults& faults, const Path& path, const Json& value, const Field& field, uint32_t& number);

} // namespace tool
