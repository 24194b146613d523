// audit.h - what a region must hold: every derived value recomputed from its source, every value within its range.
#pragma once

#include "check/picture.h"
#include "objects/configuration.h"

#include <string>
#include <vector>

namespace tool {

enum class Kind {
    kDamage, // no sequence of operations of the interface leaves it: a stray store, a broken writer
    kDrift   // the interface allows it, but some question about the table gets a wrong or useless answer
};

struct Finding {
    Kind kind;
    std::string table; // such as "vlan"
    std::string key;   // such as "100", "1/3 pep 2"
    std::string field;
    std::string stored;
    std::string recomputed; // or what would be right
    std::string cause;      // how it can have come about
    bool operator==(const Finding&) const = default;
};

using Findings = std::vector<Finding>;

// The whole audit.
Findings Audit(const Picture& picture, const Configuration& configuration);

// Its parts.
void AuditSwitch(const Picture& picture, Findings& findings);
void AuditVlans(const Picture& picture, Findings& findings);
void AuditPorts(const Picture& picture, Findings& findings);
void AuditEdgePort(Port port, const SwctCepData& data, Findings& findings);
void AuditNetworkPort(Port port, const SwctNetworkPortData& data, Findings& findings);
void AuditHistory(const Picture& picture, Findings& findings);
void AuditRanges(const Configuration& configuration, Findings& findings);

// One object under audit: adds findings about its fields.
class Subject {
public:
    Subject(Findings& findings, std::string table, std::string key)
        : m_findings(findings), m_table(std::move(table)), m_key(std::move(key))
    {
    }

    void Damage(const char* field, uint64_t stored, const std::string& right, const char* cause);
    void Drift(const char* field, uint64_t stored, const std::string& right, const char* cause);
    // A value that its writer chose: drift when it is outside of 'first' to 'last'.
    void Range(const char* field, uint64_t stored, uint64_t first, uint64_t last);
    void Text(Kind kind, const char* field, const std::string& stored, const std::string& right, const char* cause);

private:
    Findings& m_findings;
    std::string m_table;
    std::string m_key;
};

} // namespace tool
