// apply_changes.cpp - changes of single objects, made to a configuration.
#include "objects/changes.h"
#include "objects/failure.h"
#include "objects/keys.h"
#include "objects/records.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>
#include <map>
#include <optional>

namespace tool {

namespace {

uint64_t KeyIn(const ObjectClass& row, const void* pRecord)
{
    return row.keyOf == nullptr ? 0 : row.keyOf(pRecord);
}

// The record with a key, or null.
const void* FindRecord(const ObjectClass& row, const Configuration& configuration, uint64_t key)
{
    const Records records = row.records(configuration);
    std::size_t first = 0;
    for (std::size_t end = records.count; first < end;) {
        const std::size_t middle = first + (end - first) / 2;
        if (KeyIn(row, records.At(middle)) < key) {
            first = middle + 1;
        } else {
            end = middle;
        }
    }
    const bool isThere = first < records.count && KeyIn(row, records.At(first)) == key;
    return isThere ? records.At(first) : nullptr;
}

// What becomes of objects of a class, by key; without a record they go.
using Edits = std::map<uint64_t, std::optional<std::string>>;

class Applier {
public:
    Applier(const ObjectClass& row, const Configuration& configuration, Conflicts conflicts, std::string_view advice)
        : m_row(row), m_configuration(configuration), m_isForced(conflicts == Conflicts::kOverride), m_advice(advice)
    {
    }

    void Add(const ObjectChange& change)
    {
        const bool isFixed = m_row.keyOf == nullptr || m_row.id == Class::kPriority;
        if (isFixed && change.kind != DifferenceKind::kChanged) {
            throw Failure(kBadInput, fmt::format("{}: is always there: it can only be set",
                                                 ObjectName(m_row, change.objects.records.front().data())));
        }
        for (const std::string& record : change.objects.records) {
            const auto [it, isNew] = m_edits.try_emplace(KeyIn(m_row, record.data()), Edited(change, record));
            if (!isNew) {
                Fail(kBadInput, record, "is changed twice");
            }
        }
    }

    // All records of the class after the edits, or nothing when there is none.
    std::optional<std::string> Merged() const
    {
        if (m_edits.empty()) {
            return std::nullopt;
        }
        const Records records = m_row.records(m_configuration);
        std::string merged;
        merged.reserve((records.count + m_edits.size()) * records.size);
        auto edit = m_edits.begin();
        for (std::size_t i = 0; i < records.count || edit != m_edits.end();) {
            if (edit != m_edits.end() && (i == records.count || edit->first <= KeyIn(m_row, records.At(i)))) {
                i += i < records.count && edit->first == KeyIn(m_row, records.At(i)) ? 1 : 0;
                merged += edit->second.value_or("");
                ++edit;
            } else {
                merged.append(static_cast<const char*>(records.At(i++)), records.size);
            }
        }
        return merged;
    }

private:
    [[noreturn]] void Fail(int exitCode, const std::string& record, const std::string& why) const
    {
        throw Failure(exitCode, fmt::format("{}: {}", ObjectName(m_row, record.data()), why));
    }

    std::optional<std::string> Edited(const ObjectChange& change, const std::string& fresh) const
    {
        const void* const pStored = FindRecord(m_row, m_configuration, KeyIn(m_row, fresh.data()));
        const bool isNew = change.kind == DifferenceKind::kAdded;
        if (isNew != (pStored == nullptr) && !m_isForced) {
            Fail(isNew ? kBadInput : kNotThere, fresh,
                 fmt::format("{}; nothing was changed{}", isNew ? "is there already" : "is not there", m_advice));
        }
        if (pStored != nullptr && !m_isForced) {
            Check(change, fresh, pStored);
        }
        if (change.kind == DifferenceKind::kRemoved) {
            return std::nullopt;
        }
        std::string record =
            isNew || pStored == nullptr ? fresh : std::string(static_cast<const char*>(pStored), fresh.size());
        for (const MemberBytes& member : change.members) {
            record.replace(member.pField->offset, member.after.size(), member.after);
        }
        return record;
    }

    void Check(const ObjectChange& change, const std::string& fresh, const void* pStored) const
    {
        for (const MemberBytes& member : change.members) {
            const Field& field = *member.pField;
            if (member.before.empty() ||
                std::memcmp(static_cast<const char*>(pStored) + field.offset, member.before.data(), field.size) == 0) {
                continue;
            }
            std::string expected = fresh;
            expected.replace(field.offset, field.size, member.before);
            std::string is;
            std::string was;
            AppendValue(is, field, pStored);
            AppendValue(was, field, expected.data());
            Fail(kFindings, fresh,
                 fmt::format("{} is {}, and was to be {}; nothing was changed{}", field.name, is, was, m_advice));
        }
    }

    const ObjectClass& m_row;
    const Configuration& m_configuration;
    bool m_isForced;
    std::string_view m_advice;
    Edits m_edits;
};

// What comes with a new parent before a change says something else of it.
void AddImplied(Class id, const Configuration& before, Configuration& configuration)
{
    if (id == Class::kVlan) {
        for (const SwctVlanRecord& sVlan : configuration.aVlan) {
            if (Find(before.aVlan, KeyOf(sVlan.sMoid)) == nullptr) {
                configuration.aInnerTag.push_back(DefaultInnerTag(sVlan.sMoid.wVlanId));
            }
        }
        SortByKey(configuration.aInnerTag);
    } else if (id == Class::kPep) {
        for (const SwctProviderEdgePortRecord& sPep : configuration.aPep) {
            const SwctProviderEdgePortMoid sMoid = sPep.sMoid;
            for (uint32_t priority = 1; Find(before.aPep, KeyOf(sMoid)) == nullptr && priority <= SWCT_PRIORITY_MAX;
                 ++priority) {
                configuration.aServicePriority.push_back(
                    {{SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, sMoid.bSlot, sMoid.bPort, sMoid.wPepIndex, priority},
                     {priority, priority}});
            }
        }
        SortByKey(configuration.aServicePriority);
    }
}

// The name of what an object lies in when that is not there; else empty.
std::string MissingParent(const ObjectClass& row, const Configuration& c, const void* pRecord)
{
    const uint64_t key = row.keyOf == nullptr ? 0 : row.keyOf(pRecord);
    const auto first = static_cast<uint32_t>(key >> 32U);
    switch (row.id) {
    case Class::kPep:
    case Class::kRegistration:
    case Class::kDefaultRegistration:
    case Class::kTranslation:
        return Find(c.aPort, MakeKey(first, 0)) != nullptr ? "" : fmt::format("port {}/{}", first >> 8U, first & 255U);
    case Class::kPriority:
        return Find(c.aPep, key >> 16U << 16U) != nullptr ? "" : "provider edge port for it";
    case Class::kInnerTag:
    case Class::kMember:
        return Find(c.aVlan, MakeKey(first, 0)) != nullptr ? "" : fmt::format("vlan {}", first);
    default:
        return "";
    }
}

template <class Record>
void EraseOrphans(Class id, const Configuration& c, std::vector<Record>& records)
{
    const ObjectClass& row = RowOf(id);
    std::erase_if(records, [&](const Record& sRecord) { return !MissingParent(row, c, &sRecord).empty(); });
}

} // namespace

Configuration Apply(const Configuration& present, std::span<const ObjectChange> changes, Conflicts conflicts,
                    std::string_view advice)
{
    Configuration c = present;
    for (const ObjectClass& row : Catalogue()) {
        Applier applier(row, c, conflicts, advice);
        for (const ObjectChange& change : changes) {
            if (change.objects.pRow == &row) {
                applier.Add(change);
            }
        }
        if (const auto merged = applier.Merged()) {
            row.assign(c, *merged);
            AddImplied(row.id, present, c);
        }
    }
    EraseOrphans(Class::kPep, c, c.aPep);
    for (const ObjectChange& change : changes) {
        const ObjectClass& row = *change.objects.pRow;
        const auto* const pFirst = change.objects.records.front().data();
        const std::string missing = MissingParent(row, c, pFirst);
        // What is changed may go with a parent that these changes remove, but not for want of one.
        const bool isNeeded = change.kind == DifferenceKind::kAdded ||
                              (change.kind == DifferenceKind::kChanged && !MissingParent(row, present, pFirst).empty());
        if (!missing.empty() && isNeeded) {
            throw Failure(kBadInput, fmt::format("{}: there is no {}", ObjectName(row, pFirst), missing));
        }
    }
    EraseOrphans(Class::kPriority, c, c.aServicePriority);
    EraseOrphans(Class::kRegistration, c, c.aCVidRegistration);
    EraseOrphans(Class::kDefaultRegistration, c, c.aDefaultRegistration);
    EraseOrphans(Class::kTranslation, c, c.aVidTranslation);
    EraseOrphans(Class::kInnerTag, c, c.aInnerTag);
    EraseOrphans(Class::kMember, c, c.aVlanPort);
    return c;
}

} // namespace tool
