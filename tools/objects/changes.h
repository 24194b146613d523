// changes.h - changes of single objects, by the names that differences have, and what they make of a configuration.
#pragma once

#include "objects/catalogue.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// The objects that one name stands for: "vlan 10", "port 1/3 cvid 10-19,30", "vlan 10 member 1/1 2/1".
struct NamedObjects {
    const ObjectClass* pRow;
    std::vector<std::string> records; // bytes: the keys, and the defaults of everything else; in key order
};

// Throws a Failure that says what is no name of an object.
NamedObjects ParseObject(std::string_view name);

// Whether a field is a key, which the name of the object says.
bool IsKey(const ObjectClass& row, const Field& field);

// A member's value as the bytes of its field; empty: there is none.
struct MemberBytes {
    const Field* pField;
    std::string before;
    std::string after;
};

// What happens to all objects of a name.
struct ObjectChange {
    DifferenceKind kind;
    NamedObjects objects;
    std::vector<MemberBytes> members;
};

enum class Conflicts { kRefuse, kOverride };
inline constexpr std::string_view kForceAdvice = ", --force applies it all the same"; // of commands that have it

// The configuration after the changes, each object of which is changed once.  What an object that goes leaves behind
// goes with it.  Throws a Failure that names the first object that is not as its change says it was.
// 'advice' is what that says at its end.
Configuration Apply(const Configuration& present, std::span<const ObjectChange> changes, Conflicts conflicts,
                    std::string_view advice = {});

} // namespace tool
