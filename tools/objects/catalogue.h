// catalogue.h - the classes of objects: one row for each class, one row for each field of a class.
//
// Whatever a program or a person sees of an object - its name, its members, their order, words, ranges and titles -
// comes from here, and so do the schema and the tables of the documents.
#pragma once

#include "objects/configuration.h"
#include "objects/fields.h"

#include <span>
#include <string>
#include <string_view>

namespace tool {

inline constexpr uint32_t kSchema = 1; // of the JSON format

enum class Class : uint8_t {
    kSwitch,
    kNode, // the settings outside of all tables
    kManagement,
    kPort,
    kPep,
    kPriority,
    kRegistration,
    kDefaultRegistration,
    kTranslation,
    kQinQ,
    kVlan,
    kInnerTag,
    kMember
};

enum class Keys : uint8_t { kNone, kPort, kVlan }; // what the first key names

// The records of a class, whatever their type.
struct Records {
    const uint8_t* pFirst;
    std::size_t count;
    std::size_t size; // of a record, in bytes

    const void* At(std::size_t index) const
    {
        return pFirst + index * size;
    }
};

struct ObjectClass {
    Class id;
    uint16_t wClass;        // of the exchange; 0: none carries it alone
    std::string_view label; // how every output names an object: "port 1/3 LABEL 10"
    std::string_view one;   // in words
    std::string_view many;
    std::string_view member; // in the JSON format, of the document or of the port or VLAN
    std::string_view meaning;
    Keys keys;
    bool isList;          // else there is at most one
    bool isImplied;       // comes with its parent: a new parent with a usual one is no further difference
    std::size_t nrOfMost; // records in the whole node
    std::span<const Field> fields;
    std::size_t keyField; // index of the field that is the last key; kNoField: the first key is all
    Records (*records)(const Configuration&);
    void (*assign)(Configuration&, std::string_view bytes); // of all records
    uint64_t (*keyOf)(const void*);                         // null when there is one record at most
};

std::span<const ObjectClass> Catalogue(); // in the order of Class
const ObjectClass& RowOf(Class id);
const Field& FieldOf(Class id, std::string_view name);

// "port 1/3 cvid 10", "vlan 10", "switch": the one name of an object.
std::string ObjectName(const ObjectClass& row, const void* pRecord);
// The name without its last key, and that key; for objects that are told together.
std::string ObjectPrefix(const ObjectClass& row, const void* pRecord);
std::string LastKeyText(const ObjectClass& row, const void* pRecord); // empty when there is none

// The attributes of a switch, and the inner tag of a VLAN, that a file says nothing about.
SwctSwitchAttributes DefaultSwitch();
SwctVlanIfInnerTagRecord DefaultInnerTag(uint16_t vlanId);

// A record with these keys that has its defaults.
template <class Record, class Moid>
Record NewRecord(Class id, const Moid& sMoid)
{
    Record sRecord{};
    sRecord.sMoid = sMoid;
    SetDefaults(RowOf(id).fields, &sRecord);
    return sRecord;
}

// The members of the JSON format that hold other objects, and those that are no data.
namespace member {
inline constexpr std::string_view kSchemaNumber = "schema";
inline constexpr std::string_view kSchemaFile = "$schema";      // for editors, not looked at
inline constexpr std::string_view kDescription = "description"; // for people, not looked at
inline constexpr std::string_view kTagged = "tagged";
inline constexpr std::string_view kUntagged = "untagged";
inline constexpr std::string_view kOther = "other";
inline constexpr std::string_view kCVids = "cVids";
} // namespace member

} // namespace tool
