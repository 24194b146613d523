// faults.h - collecting the faults of a configuration file, with the path of each.
#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

using Json = nlohmann::ordered_json;

enum class Severity { kWarning, kError };

// A place in a configuration file that breaks a rule.
struct ConfigFault {
    std::string path;   // such as "$.vlans[3].members.tagged[0]"; "column 7" of a text that is no JSON
    std::string value;  // as JSON, cut when it is long; empty when there is none to show
    std::string rule;   // what is wrong and what would be right
    std::string object; // such as "vlan 100"; empty when it is none
    std::size_t line;   // 0: unknown
    Severity severity;
};

enum class Strictness {
    kStrict, // every rule counts
    kLenient // a rule about what makes sense is a warning; what cannot be stored at all stays an error
};

inline constexpr std::size_t kFaultsKept = 100;         // the others are counted only
inline constexpr std::size_t kTextSizeMax = 64U << 20U; // bytes; a full node's text is below 20 MiB

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

struct ParseResult;

class Faults {
public:
    explicit Faults(Strictness strictness) : m_strictness(strictness) {}

    bool IsLenient() const
    {
        return m_strictness == Strictness::kLenient;
    }

    // What cannot be stored at all.
    void Error(const Path& path, const Json* pValue, std::string_view rule);
    // What can be stored and makes no sense.
    void Doubt(const Path& path, const Json* pValue, std::string_view rule);
    // The same for an object whose path is found only when somebody reads it.
    void DoubtAt(const std::function<std::string()>& path, std::string value, std::string rule);

    // A member of an object that has no such member; names the one that may be meant.
    void Unknown(const Path& object, const std::string& member, std::span<const std::string_view> known);
    // A text that is no JSON: the line and column take the place of a path.
    void NoJson(std::size_t line, std::string place, std::string rule);

    // An object whose key cannot be read: the rules between objects would only confuse.
    void LoseKey()
    {
        m_isKeyLost = true;
    }
    bool IsKeyLost() const
    {
        return m_isKeyLost;
    }

    // Moves what was collected into a result.
    void MoveTo(ParseResult& result);

private:
    void Add(const Path& path, const Json* pValue, std::string_view rule, Severity severity);
    void Add(std::string path, std::string value, std::string rule, Severity severity);

    Strictness m_strictness;
    bool m_isKeyLost = false;
    std::vector<ConfigFault> m_kept;
    std::size_t m_nrOfErrors = 0;
    std::size_t m_nrOfWarnings = 0;
};

} // namespace tool
