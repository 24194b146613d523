// fields.cpp - reading and writing records by tables of fields.
#include "objects/fields.h"

#include "objects/notation.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

namespace tool {

namespace {

constexpr std::string_view kBytesSuffix = "Bytes";

uint32_t MaxOfWidth(const Field& field)
{
    return field.size == sizeof(uint32_t) ? std::numeric_limits<uint32_t>::max()
                                          : (1U << (8U * static_cast<unsigned>(field.size))) - 1U;
}

const uint8_t* At(const void* pRecord, std::size_t offset)
{
    return static_cast<const uint8_t*>(pRecord) + offset;
}

uint8_t* At(void* pRecord, std::size_t offset)
{
    return static_cast<uint8_t*>(pRecord) + offset;
}

// Records are in the processor's byte order, and that is little-endian on every node.
uint32_t LoadNumber(const void* pRecord, const Field& field)
{
    uint32_t number = 0;
    std::memcpy(&number, At(pRecord, field.offset), field.size);
    return number;
}

void StoreNumber(void* pRecord, const Field& field, uint32_t number)
{
    std::memcpy(At(pRecord, field.offset), &number, field.size);
}

std::span<const uint8_t> BytesOf(const Field& field, const void* pRecord)
{
    return {At(pRecord, field.offset), field.size};
}

bool IsZero(std::span<const uint8_t> bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](uint8_t byte) { return byte == 0; });
}

Json WordValue(const Word& word)
{
    if (word.text == "true" || word.text == "false") {
        return word.text == "true";
    }
    return word.text;
}

// "must be a number from 1 to 4094", "must be false or true", "must be \"none\" or a number from 1 to 4095".
std::string NumberRule(const Field& field, const Range& range)
{
    const uint32_t max = std::min(range.max, MaxOfWidth(field));
    std::vector<std::string> choices;
    for (const Word& word : field.words) {
        if (word.value >= range.min && word.value <= max) {
            choices.push_back(WordValue(word).dump());
        }
    }
    if (choices.size() != uint64_t{max} - range.min + 1) {
        choices.push_back("a number from " + std::to_string(range.min) + " to " + std::to_string(max));
    }
    std::string rule = "must be " + choices.front();
    for (std::size_t index = 1; index < choices.size(); ++index) {
        rule += (index + 1 < choices.size() ? ", " : " or ") + choices[index];
    }
    return rule;
}

bool ReadHex16(Faults& faults, const Path& path, const Json& value, uint32_t& number)
{
    if (value.is_string() && ParseHex16(value.get_ref<const std::string&>(), number)) {
        return true;
    }
    faults.Error(path, &value, "must be four hexadecimal digits, such as \"0x88A8\"");
    return false;
}

bool ReadBytes(Faults& faults, const Path& path, const Json& value, std::span<uint8_t> bytes)
{
    if (value.is_string() && ParseHexBytes(value.get_ref<const std::string&>(), bytes)) {
        return true;
    }
    faults.Error(path, &value,
                 "must be pairs of hexadecimal digits, at most " + std::to_string(bytes.size()) + " bytes");
    return false;
}

bool ReadName(Faults& faults, const Path& path, const Json& value, std::span<uint8_t> bytes)
{
    const auto* const pText = value.get_ptr<const std::string*>();
    if (pText == nullptr || pText->size() >= bytes.size() || !IsPlainText(*pText)) {
        faults.Error(path, &value,
                     "must be text of at most " + std::to_string(bytes.size() - 1) +
                         " bytes without control characters");
        return false;
    }
    std::fill(std::copy(pText->begin(), pText->end(), bytes.begin()), bytes.end(), uint8_t{0});
    return true;
}

bool ReadMac(Faults& faults, const Path& path, const Json& value, std::span<uint8_t> bytes)
{
    if (value.is_string() && ParseMac(value.get_ref<const std::string&>(), bytes)) {
        return true;
    }
    faults.Error(path, &value, "must be a MAC address, such as \"02:00:5e:10:00:01\"");
    return false;
}

bool ReadPortField(Faults& faults, const Path& path, const Json& value, std::span<uint8_t> bytes)
{
    if (value.is_string() && ParsePort(value.get_ref<const std::string&>(), bytes[0], bytes[1])) {
        return true;
    }
    faults.Error(path, &value, kPortRule);
    return false;
}

bool ReadField(Faults& faults, const Path& path, const Json& value, const Field& field, void* pRecord)
{
    const std::span<uint8_t> bytes(At(pRecord, field.offset), field.size);
    uint32_t number = 0;
    switch (field.notation) {
    case Notation::kNumber:
    case Notation::kHex16:
        if (field.notation == Notation::kNumber ? !ReadNumber(faults, path, value, field, number)
                                                : !ReadHex16(faults, path, value, number)) {
            return false;
        }
        StoreNumber(pRecord, field, number);
        if (field.sameAs != kNoField && !IsDefault(field, pRecord)) {
            faults.Doubt(path, &value, "differs from the number of the object that it is in");
        }
        return true;
    case Notation::kPort:
        return ReadPortField(faults, path, value, bytes);
    case Notation::kMac:
        return ReadMac(faults, path, value, bytes);
    case Notation::kBytes:
        return ReadBytes(faults, path, value, bytes);
    case Notation::kName:
        return ReadName(faults, path, value, bytes);
    }
    return false;
}

// The member of a field, and for names the member with the bytes instead.
const Json::object_t::value_type* FindMember(const Json::object_t& object, std::string_view name)
{
    const auto it =
        std::find_if(object.begin(), object.end(), [name](const auto& member) { return member.first == name; });
    return it == object.end() ? nullptr : &*it;
}

bool ReadNameBytes(Faults& faults, const Path& path, const Json::object_t& object, const Field& field, void* pRecord)
{
    const auto* const pMember = FindMember(object, std::string(field.name).append(kBytesSuffix));
    if (pMember == nullptr) {
        return true;
    }
    const Path memberPath(path, pMember->first);
    if (FindMember(object, field.name) != nullptr) {
        faults.Error(memberPath, &pMember->second, "goes without \"" + std::string(field.name) + "\"");
        return false;
    }
    return ReadBytes(faults, memberPath, pMember->second, {At(pRecord, field.offset), field.size});
}

std::vector<std::string_view> KnownMembers(std::span<const Field> fields, std::span<const std::string_view> others)
{
    std::vector<std::string_view> known;
    for (const Field& field : fields) {
        known.push_back(field.name);
    }
    known.insert(known.end(), others.begin(), others.end());
    return known;
}

bool IsKnown(std::string_view member, std::span<const Field> fields, std::span<const std::string_view> others)
{
    const auto isMember = [member](const Field& field) {
        return field.name == member || (field.notation == Notation::kName && member.starts_with(field.name) &&
                                        member.substr(field.name.size()) == kBytesSuffix);
    };
    return std::any_of(fields.begin(), fields.end(), isMember) ||
           std::find(others.begin(), others.end(), member) != others.end();
}

} // namespace

bool IsDefault(const Field& field, const void* pRecord)
{
    if (field.sameAs != kNoField) {
        return std::memcmp(At(pRecord, field.offset), At(pRecord, field.sameAs), field.size) == 0;
    }
    if (field.notation == Notation::kNumber || field.notation == Notation::kHex16) {
        return LoadNumber(pRecord, field) == field.byDefault;
    }
    return IsZero(BytesOf(field, pRecord));
}

void SetDefaults(std::span<const Field> fields, void* pRecord)
{
    for (const Field& field : fields) {
        if (field.notation == Notation::kNumber || field.notation == Notation::kHex16) {
            StoreNumber(pRecord, field, field.byDefault);
        }
    }
}

bool ReadNumber(Faults& faults, const Path& path, const Json& value, const Field& field, uint32_t& number)
{
    const auto word = std::find_if(field.words.begin(), field.words.end(),
                                   [&value](const Word& candidate) { return WordValue(candidate) == value; });
    const Range storable{field.storable.min, std::min(field.storable.max, MaxOfWidth(field))};
    const Range sensible{std::max(storable.min, field.sensible.min), std::min(storable.max, field.sensible.max)};
    std::optional<uint64_t> given;
    if (word != field.words.end()) {
        given = word->value;
    } else if (value.is_number_unsigned()) {
        given = value.get<uint64_t>();
    }
    if (!given || *given < storable.min || *given > storable.max) {
        faults.Error(path, &value, NumberRule(field, faults.IsLenient() ? storable : sensible));
        return false;
    }
    number = static_cast<uint32_t>(*given);
    if (number < sensible.min || number > sensible.max) {
        faults.Doubt(path, &value, NumberRule(field, sensible));
    }
    return true;
}

bool ReadFields(Faults& faults, const Path& path, const Json& object, std::span<const Field> fields, void* pRecord,
                std::span<const std::string_view> others)
{
    if (!object.is_object()) {
        faults.Error(path, &object, "must be an object {...}");
        return false;
    }
    const auto& members = object.get_ref<const Json::object_t&>();
    bool isUsable = true;
    for (const Field& field : fields) {
        const auto* const pMember = FindMember(members, field.name);
        if (pMember != nullptr) {
            isUsable &= ReadField(faults, Path(path, pMember->first), pMember->second, field, pRecord);
        } else if (field.presence == Presence::kRequired) {
            faults.Error(path, nullptr, "has no \"" + std::string(field.name) + "\"");
            isUsable = false;
        } else if (field.sameAs != kNoField) {
            std::memcpy(At(pRecord, field.offset), At(pRecord, field.sameAs), field.size);
        }
        if (field.notation == Notation::kName) {
            isUsable &= ReadNameBytes(faults, path, members, field, pRecord);
        }
    }
    for (const auto& member : members) {
        if (!IsKnown(member.first, fields, others)) {
            faults.Unknown(path, member.first, KnownMembers(fields, others));
        }
    }
    return isUsable;
}

std::string MemberName(const Field& field, const void* pRecord)
{
    std::string name(field.name);
    if (field.notation == Notation::kName && !PlainName(BytesOf(field, pRecord))) {
        name += kBytesSuffix;
    }
    return name;
}

Json MemberValue(const Field& field, const void* pRecord)
{
    const auto bytes = BytesOf(field, pRecord);
    const uint32_t number = field.size <= sizeof(uint32_t) ? LoadNumber(pRecord, field) : 0;
    switch (field.notation) {
    case Notation::kNumber:
        for (const Word& word : field.words) {
            if (word.value == number) {
                return WordValue(word);
            }
        }
        return number;
    case Notation::kHex16:
        return Hex16Text(number);
    case Notation::kPort:
        return PortText(bytes[0], bytes[1]);
    case Notation::kMac:
        return MacText(bytes);
    case Notation::kBytes:
        return HexBytesText(bytes);
    case Notation::kName:
        if (const auto name = PlainName(bytes)) {
            return *name;
        }
        return HexBytesText(WithoutZeroTail(bytes));
    }
    return nullptr;
}

void WriteFields(std::span<const Field> fields, const void* pRecord, Json& object)
{
    for (const Field& field : fields) {
        if (field.presence != Presence::kOptional || !IsDefault(field, pRecord)) {
            object.get_ref<Json::object_t&>().emplace_back(MemberName(field, pRecord), MemberValue(field, pRecord));
        }
    }
}

} // namespace tool
