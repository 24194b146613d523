// audit_ranges.cpp - values that a writer chose, against the ranges that a configuration file is held to.
#include "check/audit.h"

#include "objects/catalogue.h"

#include <fmt/format.h>
#include <limits>

namespace tool {

namespace {

void AuditRecord(const char* table, const std::string& key, std::span<const Field> fields, const void* record,
                 Findings& findings)
{
    for (const Field& field : fields) {
        const auto [min, max] = field.sensible;
        const bool isKey = field.name == "id"; // VLAN 4095 makes no sense in a file, but may exist
        if (isKey || (min == 0 && max == std::numeric_limits<uint32_t>::max())) {
            continue;
        }
        const Json value = MemberValue(field, record); // a word is always in range
        if (value.is_number() && (value < min || value > max)) {
            Subject(findings, table, key).Range(std::string(field.name).c_str(), value.get<uint32_t>(), min, max);
        }
    }
}

} // namespace

void AuditRanges(const Configuration& configuration, Findings& findings)
{
    const auto auditAll = [&findings](const char* table, std::span<const Field> fields, const auto& records,
                                      auto keyOf) {
        for (const auto& record : records) {
            AuditRecord(table, keyOf(record.sMoid), fields, &record, findings);
        }
    };
    const auto vlan = [](const auto& moid) { return std::to_string(moid.wVlanId); };
    const auto port = [](const auto& moid) { return fmt::format("{}/{}", moid.bSlot, moid.bPort); };
    AuditRecord("switch", "-", kSwitchFields, &configuration.sSwitch, findings);
    auditAll("vlan", kVlanFields, configuration.aVlan, vlan);
    auditAll("inner-tag", kInnerTagFields, configuration.aInnerTag, vlan);
    auditAll("port", kPortFields, configuration.aPort, port);
    auditAll("qinq", kQinQFields, configuration.aQinQ, port);
    auditAll("pep", kPepFields, configuration.aPep,
             [port](const auto& moid) { return fmt::format("{} pep {}", port(moid), +moid.wPepIndex); });
    auditAll("cvid", kCVidRegistrationFields, configuration.aCVidRegistration,
             [port](const auto& moid) { return fmt::format("{} cvid {}", port(moid), +moid.wCVid); });
    auditAll("cvid", kDefaultRegistrationFields, configuration.aDefaultRegistration,
             [port](const auto& moid) { return port(moid) + " default"; });
    auditAll("translation", kVidTranslationFields, configuration.aVidTranslation,
             [port](const auto& moid) { return fmt::format("{} vid {}", port(moid), +moid.wLocalVid); });
}

} // namespace tool
