// fields.h - a field of a record: its name, its place, how it is written, its default, its range and what it means.
// Reading, writing, comparing, showing, auditing and documenting records all go by tables of these.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

namespace tool {

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

// How a value looks to people; in JSON it is what it is.
enum class Look {
    kPlain,
    kTime // seconds since 1970
};

struct Range {
    uint32_t min = 0;
    uint32_t max = std::numeric_limits<uint32_t>::max();

    constexpr bool Has(uint32_t number) const
    {
        return number >= min && number <= max;
    }
    constexpr bool operator==(const Range&) const = default;
};

inline constexpr std::size_t kNoField = std::numeric_limits<std::size_t>::max();
inline constexpr std::string_view kBytesSuffix = "Bytes";

struct Field {
    std::string_view name;
    std::size_t offset = 0; // bytes from the start of the record, its Moid included
    std::size_t size = 0;   // bytes
    std::string_view title; // of a column or of a line of a sheet
    std::string_view meaning;
    Notation notation = Notation::kNumber;
    Presence presence = Presence::kOptional;
    uint32_t byDefault = 0; // of numbers; everything else is zero by default
    Range storable = {};    // other numbers are errors; the width of the field limits them too
    Range sensible = {};    // other numbers break a rule that --lenient turns off
    uint32_t except = 0;    // a number inside the sensible range that makes no sense; 0: none
    std::span<const Word> words = {};
    std::size_t sameAs = kNoField; // offset of an earlier field whose value is the default
    bool isVlan = false;           // 1 to 4094 is a VLAN that shall exist, unless it is the default
    Look look = Look::kPlain;

    // What a row of a table adds to the plain number.
    constexpr Field As(Notation value) const
    {
        Field changed = *this;
        changed.notation = value;
        return changed;
    }
    constexpr Field Required() const
    {
        Field changed = *this;
        changed.presence = Presence::kRequired;
        return changed;
    }
    constexpr Field Always() const
    {
        Field changed = *this;
        changed.presence = Presence::kWritten;
        return changed;
    }
    constexpr Field Default(uint32_t value) const
    {
        Field changed = *this;
        changed.byDefault = value;
        return changed;
    }
    constexpr Field Storable(Range value) const
    {
        Field changed = *this;
        changed.storable = value;
        return changed;
    }
    constexpr Field Sense(Range value) const
    {
        Field changed = *this;
        changed.sensible = value;
        return changed;
    }
    constexpr Field But(uint32_t value) const
    {
        Field changed = *this;
        changed.except = value;
        return changed;
    }
    constexpr Field In(std::span<const Word> value) const
    {
        Field changed = *this;
        changed.words = value;
        return changed;
    }
    constexpr Field SameAs(std::size_t value) const
    {
        Field changed = *this;
        changed.sameAs = value;
        return changed;
    }
    constexpr Field OfVlan() const
    {
        Field changed = *this;
        changed.isVlan = true;
        return changed;
    }
    constexpr Field Shown(Look value) const
    {
        Field changed = *this;
        changed.look = value;
        return changed;
    }

    constexpr bool IsNumber() const
    {
        return notation == Notation::kNumber || notation == Notation::kHex16;
    }
    constexpr uint32_t MaxOfWidth() const
    {
        return size >= sizeof(uint32_t) ? std::numeric_limits<uint32_t>::max() : (1U << (8U * size)) - 1U;
    }
    constexpr Range StorableRange() const
    {
        return {storable.min, storable.max < MaxOfWidth() ? storable.max : MaxOfWidth()};
    }
    // The numbers that make sense.
    constexpr Range SensibleRange() const
    {
        const Range range = StorableRange();
        return {range.min > sensible.min ? range.min : sensible.min,
                range.max < sensible.max ? range.max : sensible.max};
    }
    constexpr bool MakesSense(uint32_t number) const
    {
        return SensibleRange().Has(number) && (except == 0 || number != except);
    }
};

// The place of a record's member, for a row of a table.
#define FIELD_AT(record, member) offsetof(record, member), sizeof(record::member)

// Puts the defaults into a record whose keys are set.
void SetDefaults(std::span<const Field> fields, void* pRecord);
bool IsDefault(const Field& field, const void* pRecord);

// A field of at most four bytes.  Records are in the processor's byte order, little-endian on every node.
uint32_t NumberOf(const Field& field, const void* pRecord);
std::span<const uint8_t> BytesOf(const Field& field, const void* pRecord);

// The name of the member, which depends on the value of names, and its value as JSON text.
std::string MemberName(const Field& field, const void* pRecord);
void AppendValue(std::string& json, const Field& field, const void* pRecord);
void AppendNumber(std::string& json, uint64_t number);
void AppendQuoted(std::string& json, std::string_view plainText); // text without control characters
std::string WordText(const Word& word);                           // as JSON

// What a number should be: "a number from 1 to 4094", "false or true", "\"none\" or a number from 1 to 4095".
std::string NumberRule(const Field& field, const Range& range);

} // namespace tool
