// fields.cpp - values of fields, and how they are written.
#include "objects/fields.h"

#include "objects/notation.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <vector>

namespace tool {

namespace {

const uint8_t* At(const void* pRecord, std::size_t offset)
{
    return static_cast<const uint8_t*>(pRecord) + offset;
}

} // namespace

void SetDefaults(std::span<const Field> fields, void* pRecord)
{
    auto* const pBytes = static_cast<uint8_t*>(pRecord);
    for (const Field& field : fields) {
        if (field.sameAs != kNoField) {
            std::memcpy(pBytes + field.offset, pBytes + field.sameAs, field.size);
        } else if (field.IsNumber() && field.presence != Presence::kRequired) {
            std::memcpy(pBytes + field.offset, &field.byDefault, field.size);
        }
    }
}

bool IsDefault(const Field& field, const void* pRecord)
{
    if (field.sameAs != kNoField) {
        return std::memcmp(At(pRecord, field.offset), At(pRecord, field.sameAs), field.size) == 0;
    }
    if (field.IsNumber()) {
        return NumberOf(field, pRecord) == field.byDefault;
    }
    const auto bytes = BytesOf(field, pRecord);
    return std::all_of(bytes.begin(), bytes.end(), [](uint8_t byte) { return byte == 0; });
}

uint32_t NumberOf(const Field& field, const void* pRecord)
{
    uint32_t number = 0;
    std::memcpy(&number, At(pRecord, field.offset), std::min(field.size, sizeof(number)));
    return number;
}

std::span<const uint8_t> BytesOf(const Field& field, const void* pRecord)
{
    return {At(pRecord, field.offset), field.size};
}

std::string MemberName(const Field& field, const void* pRecord)
{
    std::string name(field.name);
    if (field.notation == Notation::kName && !PlainName(BytesOf(field, pRecord))) {
        name += kBytesSuffix;
    }
    return name;
}

void AppendNumber(std::string& json, uint64_t number)
{
    char digits[20];
    json.append(digits, std::to_chars(digits, digits + sizeof(digits), number).ptr);
}

void AppendQuoted(std::string& json, std::string_view plainText)
{
    json += '"';
    for (const char character : plainText) {
        if (character == '"' || character == '\\') {
            json += '\\';
        }
        json += character;
    }
    json += '"';
}

std::string WordText(const Word& word)
{
    const bool isLiteral = word.text == "true" || word.text == "false";
    return isLiteral ? std::string(word.text) : '"' + std::string(word.text) + '"';
}

void AppendValue(std::string& json, const Field& field, const void* pRecord)
{
    const auto bytes = BytesOf(field, pRecord);
    switch (field.notation) {
    case Notation::kNumber: {
        const uint32_t number = NumberOf(field, pRecord);
        const auto word = std::find_if(field.words.begin(), field.words.end(),
                                       [number](const Word& candidate) { return candidate.value == number; });
        if (word != field.words.end()) {
            json += WordText(*word);
        } else {
            AppendNumber(json, number);
        }
        return;
    }
    case Notation::kHex16:
        return AppendQuoted(json, Hex16Text(NumberOf(field, pRecord)));
    case Notation::kPort:
        return AppendQuoted(json, PortText(bytes[0], bytes[1]));
    case Notation::kMac:
        return AppendQuoted(json, MacText(bytes));
    case Notation::kBytes:
        return AppendQuoted(json, HexBytesText(bytes));
    case Notation::kName:
        if (const auto name = PlainName(bytes)) {
            return AppendQuoted(json, *name);
        }
        return AppendQuoted(json, HexBytesText(WithoutZeroTail(bytes)));
    }
}

std::string NumberRule(const Field& field, const Range& range)
{
    std::vector<std::string> choices;
    for (const Word& word : field.words) {
        if (range.Has(word.value)) {
            choices.push_back(WordText(word));
        }
    }
    if (choices.size() != uint64_t{range.max} - range.min + 1) {
        std::string numbers = "a number from " + std::to_string(range.min) + " to " + std::to_string(range.max);
        if (field.except != 0) {
            numbers += " but not " + std::to_string(field.except);
        }
        choices.push_back(std::move(numbers));
    }
    std::string rule = choices.front();
    for (std::size_t index = 1; index < choices.size(); ++index) {
        rule += (index + 1 < choices.size() ? ", " : " or ") + choices[index];
    }
    return rule;
}

} // namespace tool
