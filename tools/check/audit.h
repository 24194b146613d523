// audit.h - what a region must hold: every derived value recomputed from its source, every value within its range,
// every object where it belongs.
#pragma once

#include "check/rings.h"
#include "objects/configuration.h"
#include "objects/picture.h"

#include <string>
#include <string_view>
#include <vector>

namespace tool {

enum class Kind {
    kDrift,    // a value that is derived from others differs from them, or bytes that nobody uses are not zero
    kMeaning,  // a value out of its range
    kDangling, // an object that needs another one that is not there; the rules of a configuration file
    kTorn      // neither whole as before a write nor as after it
};

struct Finding {
    Kind kind;
    std::string object; // as every output names it: "vlan 100", "port 1/3 pep 2"
    std::string field;  // as save names it; empty: the object itself
    std::string stored; // JSON; empty when it is not one value
    std::string right;  // what it should be
    std::string cause;  // how it can have come about
    bool operator==(const Finding&) const = default;
};

using Findings = std::vector<Finding>;

// One object under audit: its name is made only when there is something to say.
template <class Name>
class Subject {
public:
    Subject(Findings& findings, Name name) : m_findings(findings), m_name(name) {}

    void Drift(std::string_view field, uint64_t stored, uint64_t right, std::string_view cause)
    {
        Tell(Kind::kDrift, field, std::to_string(stored), std::to_string(right), cause);
    }
    void Meaning(std::string_view field, uint64_t stored, std::string right)
    {
        Tell(Kind::kMeaning, field, std::to_string(stored), std::move(right),
             "a writer stored a value without a meaning");
    }
    void Tell(Kind kind, std::string_view field, std::string stored, std::string right, std::string_view cause)
    {
        m_findings.push_back(
            {kind, m_name(), std::string(field), std::move(stored), std::move(right), std::string(cause)});
    }

private:
    Findings& m_findings;
    Name m_name;
};

// The whole audit: of the node, of the ports, of the VLANs, of the history.
Findings Audit(const Picture& picture, const std::vector<RingCopy>& rings15m, const std::vector<RingCopy>& rings24h);

// Its parts.
void AuditVlans(const Picture& picture, Findings& findings);
void AuditBridgeData(Port port, const Picture& picture, Findings& findings);
void AuditRing(const char* ringName, const RingCopy& ring, Findings& findings);
void AuditObjects(const Configuration& configuration, Findings& findings); // ranges and rules, by the catalogue

} // namespace tool
