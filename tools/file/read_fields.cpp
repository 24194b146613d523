// read_fields.cpp - members of a JSON object into a record.
#include "file/read_fields.h"

#include "objects/notation.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

namespace tool {

namespace {

bool IsWord(const Json& value, const Word& word)
{
    if (value.is_boolean()) {
        return word.text == (value.get<bool>() ? "true" : "false");
    }
    const auto* const pText = value.get_ptr<const std::string*>();
    return pText != nullptr && *pText == word.text && word.text != "true" && word.text != "false";
}

const Json::object_t::value_type* MemberOf(const Json::object_t& object, std::string_view name)
{
    const auto it =
        std::find_if(object.begin(), object.end(), [name](const auto& member) { return member.first == name; });
    return it == object.end() ? nullptr : &*it;
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

bool ReadNameBytes(Faults& faults, const Path& path, const Json::object_t& object, const Field& field, void* pRecord)
{
    const auto* const pMember = MemberOf(object, std::string(field.name).append(kBytesSuffix));
    if (pMember == nullptr) {
        return true;
    }
    const Path memberPath(path, pMember->first);
    if (MemberOf(object, field.name) != nullptr) {
        faults.Error(memberPath, &pMember->second, "goes without \"" + std::string(field.name) + "\"");
        return false;
    }
    return ReadBytes(faults, memberPath, pMember->second, {static_cast<uint8_t*>(pRecord) + field.offset, field.size});
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

const Json* FindMember(const Json& object, std::string_view name)
{
    const auto* const pMember = object.is_object() ? MemberOf(object.get_ref<const Json::object_t&>(), name) : nullptr;
    return pMember == nullptr ? nullptr : &pMember->second;
}

bool ReadField(Faults& faults, const Path& path, const Json& value, const Field& field, void* pRecord)
{
    const std::span<uint8_t> bytes(static_cast<uint8_t*>(pRecord) + field.offset, field.size);
    uint32_t number = 0;
    switch (field.notation) {
    case Notation::kNumber:
    case Notation::kHex16:
        if (field.notation == Notation::kNumber ? !ReadNumber(faults, path, value, field, number)
                                                : !ReadHex16(faults, path, value, number)) {
            return false;
        }
        std::memcpy(bytes.data(), &number, field.size);
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

bool ReadNumber(Faults& faults, const Path& path, const Json& value, const Field& field, uint32_t& number)
{
    const auto word = std::find_if(field.words.begin(), field.words.end(),
                                   [&value](const Word& candidate) { return IsWord(value, candidate); });
    const Range storable = field.StorableRange();
    std::optional<uint64_t> given;
    if (word != field.words.end()) {
        given = word->value;
    } else if (value.is_number_unsigned()) {
        given = value.get<uint64_t>();
    }
    if (!given || *given < storable.min || *given > storable.max) {
        faults.Error(path, &value,
                     "must be " + NumberRule(field, faults.IsLenient() ? storable : field.SensibleRange()));
        return false;
    }
    number = static_cast<uint32_t>(*given);
    if (!field.MakesSense(number)) {
        faults.Doubt(path, &value, "must be " + NumberRule(field, field.SensibleRange()));
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
        const auto* const pMember = MemberOf(members, field.name);
        if (pMember != nullptr) {
            isUsable &= ReadField(faults, Path(path, pMember->first), pMember->second, field, pRecord);
        } else if (field.presence == Presence::kRequired) {
            faults.Error(path, nullptr, "has no \"" + std::string(field.name) + "\"");
            isUsable = false;
        } else if (field.sameAs != kNoField) {
            std::memcpy(static_cast<uint8_t*>(pRecord) + field.offset, static_cast<uint8_t*>(pRecord) + field.sameAs,
                        field.size);
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

} // namespace tool
