// diff.cpp - what differs between two configurations, object by object.
#include "objects/catalogue.h"
#include "objects/configuration.h"
#include "objects/notation.h"
#include "objects/records.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tool {

namespace {

// An object as a person calls it: "port 1/2 c-vid" and, where objects of the same text differ in it, the last key.
struct Label {
    std::string text;
    std::optional<uint16_t> number = std::nullopt;
    std::string port{};
};

std::string PortLabel(uint8_t slot, uint8_t port)
{
    return "port " + PortText(slot, port);
}

Label LabelOf(const SwctPortMoid& sMoid)
{
    const char* pSuffix = sMoid.wClassId == SWCT_CLASS_QINQ_PORT                   ? " qinq"
                          : sMoid.wClassId == SWCT_CLASS_DEFAULT_CVID_REGISTRATION ? " default registration"
                                                                                   : "";
    return {PortLabel(sMoid.bSlot, sMoid.bPort) + pSuffix};
}
Label LabelOf(const SwctVlanMoid& sMoid)
{
    if (sMoid.wClassId == SWCT_CLASS_VLAN_IF_INNER_TAG) {
        return {"vlan " + std::to_string(sMoid.wVlanId) + " inner tag"};
    }
    return {"vlan", sMoid.wVlanId};
}
Label LabelOf(const SwctVlanPortMoid& sMoid)
{
    return {"vlan " + std::to_string(sMoid.wVlanId) + " member", std::nullopt, PortText(sMoid.bSlot, sMoid.bPort)};
}
Label LabelOf(const SwctCVidRegistrationMoid& sMoid)
{
    return {PortLabel(sMoid.bSlot, sMoid.bPort) + " c-vid", sMoid.wCVid};
}
Label LabelOf(const SwctVidTranslationMoid& sMoid)
{
    return {PortLabel(sMoid.bSlot, sMoid.bPort) + " local vid", sMoid.wLocalVid};
}
Label LabelOf(const SwctProviderEdgePortMoid& sMoid)
{
    return {PortLabel(sMoid.bSlot, sMoid.bPort) + " pep", sMoid.wPepIndex};
}
Label LabelOf(const SwctServicePriorityRegenerationMoid& sMoid)
{
    return {PortLabel(sMoid.bSlot, sMoid.bPort) + " pep " + std::to_string(sMoid.wPepIndex) + " priority",
            static_cast<uint16_t>(sMoid.dwPriority)};
}

class DifferenceList {
public:
    // Compares two records of an object; a null one is not there.
    void Compare(const Label& label, std::span<const Field> fields, const void* pBefore, const void* pAfter)
    {
        Difference difference;
        difference.kind = pBefore == nullptr  ? DifferenceKind::kAdded
                          : pAfter == nullptr ? DifferenceKind::kRemoved
                                              : DifferenceKind::kChanged;
        for (const Field& field : fields) {
            AddMember(difference.members, field, pBefore, pAfter);
        }
        if (difference.kind != DifferenceKind::kChanged || !difference.members.empty()) {
            Add(label, std::move(difference));
        }
    }

    std::vector<Difference> Take()
    {
        return std::move(m_differences);
    }

private:
    static void AddMember(std::vector<MemberChange>& members, const Field& field, const void* pBefore,
                          const void* pAfter)
    {
        const bool isOptional = field.presence == Presence::kOptional;
        MemberChange change;
        if (pBefore != nullptr && !(pAfter == nullptr && isOptional && IsDefault(field, pBefore))) {
            change.before = MemberValue(field, pBefore);
        }
        if (pAfter != nullptr && !(pBefore == nullptr && isOptional && IsDefault(field, pAfter))) {
            change.after = MemberValue(field, pAfter);
        }
        if (change.before != change.after) {
            change.member = MemberName(field, pAfter != nullptr ? pAfter : pBefore);
            members.push_back(std::move(change));
        }
    }

    // Neighbours to which the same has happened become one: "port 1/2 c-vid 10-19,30", "vlan 10 member 1/1 2/1".
    void Add(const Label& label, Difference&& difference)
    {
        if (m_label.empty() || m_label != label.text || !IsSameChange(difference, m_differences.back())) {
            m_differences.push_back(std::move(difference));
            m_label = label.text;
            m_numbers.clear();
            m_ports.clear();
        }
        if (label.number) {
            AppendVid(m_numbers, *label.number);
        }
        m_ports += label.port.empty() ? "" : ' ' + label.port;
        m_differences.back().object = m_label + (label.number ? ' ' + VidListText(m_numbers) : m_ports);
    }

    static bool IsSameChange(const Difference& left, const Difference& right)
    {
        const auto isSameMember = [](const MemberChange& a, const MemberChange& b) {
            return a.member == b.member && a.before == b.before && a.after == b.after;
        };
        return left.kind == right.kind && std::equal(left.members.begin(), left.members.end(), right.members.begin(),
                                                     right.members.end(), isSameMember);
    }

    std::vector<Difference> m_differences;
    // Of the last difference: what its objects have in common, and what they differ in.
    std::string m_label;
    std::vector<VidRange> m_numbers;
    std::string m_ports;
};

// Walks two lists that are in key order.  The first field of a table is the key, unless it has no place in the Moid:
// keys are in the label already.
template <class Record>
void CompareClass(DifferenceList& list, std::span<const Field> fields, std::span<const Record> before,
                  std::span<const Record> after)
{
    const auto data = fields.subspan(fields[0].offset < sizeof(Record::sMoid) ? 1 : 0);
    auto itBefore = before.begin();
    auto itAfter = after.begin();
    while (itBefore != before.end() || itAfter != after.end()) {
        const bool hasBefore =
            itBefore != before.end() && (itAfter == after.end() || KeyOf(itBefore->sMoid) <= KeyOf(itAfter->sMoid));
        const bool hasAfter =
            itAfter != after.end() && (itBefore == before.end() || KeyOf(itAfter->sMoid) <= KeyOf(itBefore->sMoid));
        if (!hasBefore || !hasAfter || !IsSame(*itBefore, *itAfter)) {
            list.Compare(LabelOf(hasBefore ? itBefore->sMoid : itAfter->sMoid), data, hasBefore ? &*itBefore : nullptr,
                         hasAfter ? &*itAfter : nullptr);
        }
        itBefore += hasBefore ? 1 : 0;
        itAfter += hasAfter ? 1 : 0;
    }
}

// A tag for the VLANs that only the other side has, so that a new VLAN with the usual tag is one difference.
std::vector<SwctVlanIfInnerTagRecord> InnerTags(const Configuration& own, const Configuration& other)
{
    auto tags = own.aInnerTag;
    for (const SwctVlanRecord& sVlan : other.aVlan) {
        if (Find(own.aVlan, KeyOf(sVlan.sMoid)) == nullptr) {
            tags.push_back(DefaultInnerTag(sVlan.sMoid.wVlanId));
        }
    }
    SortByKey(tags);
    return tags;
}

// The same for the priorities of provider edge ports: each regenerated as it is.
std::vector<SwctServicePriorityRegenerationRecord> Priorities(const Configuration& own, const Configuration& other)
{
    auto priorities = own.aServicePriority;
    for (const SwctProviderEdgePortRecord& sPep : other.aPep) {
        if (Find(own.aPep, KeyOf(sPep.sMoid)) == nullptr) {
            for (uint32_t priority = 1; priority <= SWCT_PRIORITY_MAX; ++priority) {
                priorities.push_back({{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, sPep.sMoid.bSlot, sPep.sMoid.bPort,
                                       sPep.sMoid.wPepIndex, priority},
                                      {priority, priority}});
            }
        }
    }
    SortByKey(priorities);
    return priorities;
}

std::string ValueText(const Json& value)
{
    return value.is_null() ? "none" : value.dump();
}

const char* KindText(DifferenceKind kind)
{
    return kind == DifferenceKind::kAdded ? "added" : kind == DifferenceKind::kRemoved ? "removed" : "changed";
}

} // namespace

std::vector<Difference> Diff(const Configuration& before, const Configuration& after)
{
    DifferenceList list;
    const auto compare = [&list](std::span<const Field> fields, const auto& all, const auto& allAfter,
                                 uint32_t number) {
        CompareClass(list, fields, OfFirstKey(all, number), OfFirstKey(allAfter, number));
    };
    list.Compare({"switch"}, kSwitchFields, &before.sSwitch, &after.sSwitch);
    list.Compare({"hrlb"}, {&kHrlbField, 1}, &before.dwHrlb, &after.dwHrlb);

    const auto prioritiesBefore = Priorities(before, after);
    const auto prioritiesAfter = Priorities(after, before);
    ForEachPort([&](uint8_t slot, uint8_t port) {
        const uint32_t number = PortNumber(slot, port);
        compare(kPortFields, before.aPort, after.aPort, number);
        compare(kPepFields, before.aPep, after.aPep, number);
        compare({&kRegeneratedPriorityField, 1}, prioritiesBefore, prioritiesAfter, number);
        compare(kCVidRegistrationFields, before.aCVidRegistration, after.aCVidRegistration, number);
        compare(kDefaultRegistrationFields, before.aDefaultRegistration, after.aDefaultRegistration, number);
        compare(kVidTranslationFields, before.aVidTranslation, after.aVidTranslation, number);
        compare(kQinQFields, before.aQinQ, after.aQinQ, number);
    });

    const auto tagsBefore = InnerTags(before, after);
    const auto tagsAfter = InnerTags(after, before);
    for (uint32_t vlanId = 1; vlanId <= SWCT_VLAN_MAX; ++vlanId) {
        compare(kVlanFields, before.aVlan, after.aVlan, vlanId);
        compare(kInnerTagFields, tagsBefore, tagsAfter, vlanId);
        compare({&kMembershipField, 1}, before.aVlanPort, after.aVlanPort, vlanId);
    }
    return list.Take();
}

Json ToJson(const Difference& difference)
{
    Json members = Json::object();
    for (const MemberChange& change : difference.members) {
        members[change.member] = {{"before", change.before}, {"after", change.after}};
    }
    return {{"object", difference.object}, {"change", KindText(difference.kind)}, {"members", std::move(members)}};
}

std::string ToText(const Difference& difference)
{
    std::string text = difference.object + ": " + KindText(difference.kind);
    const char* pSeparator = ": ";
    for (const MemberChange& change : difference.members) {
        text += pSeparator + change.member + ' ';
        pSeparator = ", ";
        switch (difference.kind) {
        case DifferenceKind::kAdded:
            text += ValueText(change.after);
            break;
        case DifferenceKind::kRemoved:
            text += ValueText(change.before);
            break;
        case DifferenceKind::kChanged:
            text += ValueText(change.before) + " -> " + ValueText(change.after);
        }
    }
    return text;
}

} // namespace tool
