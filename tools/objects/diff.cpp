// diff.cpp - what differs between two configurations, object by object.
#include "objects/catalogue.h"
#include "objects/notation.h"
#include "objects/records.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace tool {

namespace {

// The longest record that a class whose objects come with their parents has.
using RecordBuffer = std::array<uint8_t, 64>;

// Compares one class, in key order.
class ClassDiff {
public:
    ClassDiff(const ObjectClass& row, const Configuration& before, const Configuration& after,
              std::vector<Difference>& differences)
        : m_row(row), m_before(row.records(before)), m_after(row.records(after)), m_configurationBefore(before),
          m_configurationAfter(after), m_differences(differences)
    {
    }

    void Run()
    {
        for (std::size_t i = 0, j = 0; i < m_before.count || j < m_after.count;) {
            const bool isFirst = j == m_after.count || (i < m_before.count && Key(m_before, i) <= Key(m_after, j));
            const bool isSecond = i == m_before.count || (j < m_after.count && Key(m_after, j) <= Key(m_before, i));
            const void* const pBefore = isFirst ? m_before.At(i++) : nullptr;
            const void* const pAfter = isSecond ? m_after.At(j++) : nullptr;
            if (pBefore == nullptr || pAfter == nullptr || std::memcmp(pBefore, pAfter, m_before.size) != 0) {
                Compare(pBefore, pAfter);
            }
        }
        for (std::size_t i = 0; m_row.id == Class::kInnerTag && i < m_configurationAfter.aVlan.size(); ++i) {
            const SwctVlanMoid sMoid = m_configurationAfter.aVlan[i].sMoid;
            const bool isNew = Find(m_configurationBefore.aVlan, KeyOf(sMoid)) == nullptr;
            if (isNew && Find(m_configurationAfter.aInnerTag, KeyOf(sMoid)) == nullptr) { // it would come with its VLAN
                const SwctVlanIfInnerTagRecord sUsual = DefaultInnerTag(sMoid.wVlanId);
                Compare(&sUsual, nullptr);
            }
        }
    }

private:
    uint64_t Key(const Records& records, std::size_t index) const
    {
        return m_row.keyOf == nullptr ? 0 : m_row.keyOf(records.At(index));
    }

    // Whether the parent of an object is in a configuration: a PEP for a priority, a VLAN for an inner tag.
    bool HasParent(const Configuration& configuration, const void* pRecord) const
    {
        const uint64_t key = m_row.keyOf(pRecord);
        return m_row.id == Class::kPriority ? Find(configuration.aPep, key >> 16U << 16U) != nullptr
                                            : Find(configuration.aVlan, key) != nullptr;
    }

    // What comes with its parent counts as usual on the side that has no parent.
    const void* Usual(const void* pOther, const Configuration& configuration, RecordBuffer& buffer) const
    {
        if (!m_row.isImplied || HasParent(configuration, pOther)) {
            return nullptr;
        }
        buffer = {};
        // The keys are the Moid, which lies before all other fields.
        std::memcpy(buffer.data(), pOther,
                    m_row.id == Class::kPriority ? sizeof(SwctServicePriorityRegenerationMoid) : sizeof(SwctVlanMoid));
        SetDefaults(m_row.fields, buffer.data());
        return buffer.data();
    }

    void Compare(const void* pBefore, const void* pAfter)
    {
        const void* const pAny = pAfter != nullptr ? pAfter : pBefore;
        RecordBuffer buffer{};
        if (pBefore == nullptr) {
            pBefore = Usual(pAfter, m_configurationBefore, buffer);
        } else if (pAfter == nullptr) {
            pAfter = Usual(pBefore, m_configurationAfter, buffer);
        }
        Difference difference;
        difference.kind = pBefore == nullptr  ? DifferenceKind::kAdded
                          : pAfter == nullptr ? DifferenceKind::kRemoved
                                              : DifferenceKind::kChanged;
        for (std::size_t i = 0; i < m_row.fields.size(); ++i) {
            // Keys are in the name already.
            if (i != m_row.keyField && !(m_row.id == Class::kPort && i == 0)) {
                AddMember(difference.members, m_row.fields[i], pBefore, pAfter);
            }
        }
        if (difference.kind != DifferenceKind::kChanged || !difference.members.empty()) {
            Add(std::move(difference), pAny);
        }
    }

    static void AddMember(std::vector<MemberChange>& members, const Field& field, const void* pBefore,
                          const void* pAfter)
    {
        const bool isOptional = field.presence == Presence::kOptional;
        MemberChange change;
        if (pBefore != nullptr && !(pAfter == nullptr && isOptional && IsDefault(field, pBefore))) {
            AppendValue(change.before, field, pBefore);
        }
        if (pAfter != nullptr && !(pBefore == nullptr && isOptional && IsDefault(field, pAfter))) {
            AppendValue(change.after, field, pAfter);
        }
        // A number that is nothing but the key again.
        const bool isKeyAgain = field.sameAs != kNoField && (pBefore == nullptr || IsDefault(field, pBefore)) &&
                                (pAfter == nullptr || IsDefault(field, pAfter)) && field.IsNumber();
        if (change.before == change.after || (isKeyAgain && (pBefore == nullptr || pAfter == nullptr))) {
            return;
        }
        change.member = MemberName(field, pAfter != nullptr ? pAfter : pBefore);
        if (pBefore != nullptr && MemberName(field, pBefore) != change.member) { // a text and bytes are two members
            members.push_back({MemberName(field, pBefore), std::exchange(change.before, ""), ""});
        }
        members.push_back(std::move(change));
    }

    // Neighbours to which the same has happened become one: "port 1/2 cvid 10-19,30", "vlan 10 member 1/1 2/1".
    void Add(Difference&& difference, const void* pRecord)
    {
        std::string prefix = ObjectPrefix(m_row, pRecord);
        const bool isNeighbour = !m_prefix.empty() && m_prefix == prefix && m_row.keyField != kNoField &&
                                 m_differences.back().kind == difference.kind &&
                                 m_differences.back().members == difference.members;
        if (!isNeighbour) {
            m_differences.push_back(std::move(difference));
            m_prefix = std::move(prefix);
            m_numbers.clear();
            m_ports.clear();
            Place(m_differences.back(), pRecord);
        }
        Difference& told = m_differences.back();
        if (m_row.keys == Keys::kVlan) {
            told.lastVlan = static_cast<uint16_t>(Parent(pRecord));
        }
        if (m_row.keyField == kNoField) {
            told.object = m_prefix;
            return;
        }
        const Field& key = m_row.fields[m_row.keyField];
        if (key.notation == Notation::kPort) {
            m_ports += ' ' + LastKeyText(m_row, pRecord);
            told.object = m_prefix + m_ports;
            told.slot = told.port = 0; // several
            if (!isNeighbour) {
                told.slot = BytesOf(key, pRecord)[0];
                told.port = BytesOf(key, pRecord)[1];
            }
        } else {
            AppendVid(m_numbers, static_cast<uint16_t>(NumberOf(key, pRecord)));
            told.object = m_prefix + ' ' + VidListText(m_numbers);
        }
    }

    uint32_t Parent(const void* pRecord) const
    {
        return m_row.keyOf == nullptr ? 0 : static_cast<uint32_t>(m_row.keyOf(pRecord) >> 32U);
    }

    void Place(Difference& difference, const void* pRecord) const
    {
        const uint32_t parent = Parent(pRecord);
        if (m_row.keys == Keys::kPort) {
            difference.slot = static_cast<uint8_t>(parent >> 8U);
            difference.port = static_cast<uint8_t>(parent);
        } else if (m_row.keys == Keys::kVlan) {
            difference.firstVlan = static_cast<uint16_t>(parent);
        }
    }

    const ObjectClass& m_row;
    Records m_before;
    Records m_after;
    const Configuration& m_configurationBefore;
    const Configuration& m_configurationAfter;
    std::vector<Difference>& m_differences;
    // Of the last difference: what its objects have in common, and what they differ in.
    std::string m_prefix;
    std::vector<VidRange> m_numbers;
    std::string m_ports;
};

// A section for the node, then one for each port, then one for each VLAN.
uint32_t SectionOf(const Difference& difference)
{
    constexpr uint32_t kVlans = 1U << 16U;
    return difference.firstVlan != 0 ? kVlans + difference.firstVlan : PortNumber(difference.slot, difference.port);
}

std::string ValueText(const std::string& value)
{
    return value.empty() ? "none" : value;
}

} // namespace

std::vector<Difference> Diff(const Configuration& before, const Configuration& after)
{
    std::vector<Difference> differences;
    for (const ObjectClass& row : Catalogue()) {
        ClassDiff(row, before, after, differences).Run();
    }
    std::stable_sort(differences.begin(), differences.end(), [](const Difference& left, const Difference& right) {
        return SectionOf(left) < SectionOf(right);
    });
    return differences;
}

const char* KindText(DifferenceKind kind)
{
    return kind == DifferenceKind::kAdded ? "added" : kind == DifferenceKind::kRemoved ? "removed" : "changed";
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
