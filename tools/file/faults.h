// faults.h - collecting the faults of a configuration file, with the path of each.
#pragma once

#include "objects/configuration.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// A place in a JSON document, linked to the places that it lies in.  It becomes text only where there is a fault.
class Path {
public:
    Path() = default; // the whole document
    Path(const Path& parent, std::string_view member) : m_parent(&parent), m_member(member) {}
    Path(const Path& parent, std::size_t index) : m_parent(&parent), m_index(index) {}
    std::string Text() const;

private:
    const Path* m_parent = nullptr;
    std::string_view m_member; // empty: an index
    std::size_t m_index = 0;
};

class Faults {
public:
    explicit Faults(Strictness strictness) : m_strictness(strictness) {}

    bool IsLenient() const
    {
        return m_strictness == Strictness::kLenient;
    }

    // What cannot be stored at all.
    void Error(const Path& path, const nlohmann::ordered_json* pValue, std::string_view rule);
    // What can be stored and makes no sense.
    void Doubt(const Path& path, const nlohmann::ordered_json* pValue, std::string_view rule);

    // A member of an object that has no such member; names the one that may be meant.
    void Unknown(const Path& object, const std::string& member, std::span<const std::string_view> known);
    // A text that is no JSON: the line and column take the place of a path.
    void NoJson(std::string place, std::string rule);

    // Moves what was collected into a result.
    void MoveTo(ParseResult& result);

private:
    void Add(const Path& path, const nlohmann::ordered_json* pValue, std::string_view rule, Severity severity);

    Strictness m_strictness;
    std::vector<ConfigFault> m_kept;
    std::size_t m_nrOfErrors = 0;
    std::size_t m_nrOfWarnings = 0;
};

} // namespace tool
