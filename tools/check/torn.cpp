#include "check/torn.h"

#include "file/parse.h"
#include "objects/catalogue.h"
#include "state/checkpoints.h"
#include "state/folder.h"
#include "state/lock.h"
#include "state/records.h"

#include <cstring>
#include <fmt/format.h>

namespace tool {

namespace {

// Steps through the records of a class in one configuration, by key.
class RowWalk {
public:
    RowWalk(const ObjectClass& row, const Configuration& configuration)
        : m_row(row), m_records(row.records(configuration))
    {
    }

    uint64_t Key() const
    {
        return m_index == m_records.count ? UINT64_MAX
               : m_row.keyOf == nullptr   ? 0
                                          : m_row.keyOf(m_records.At(m_index));
    }
    // The record with this key, passed by that; null when there is none.
    const void* Take(uint64_t key)
    {
        return Key() == key ? m_records.At(m_index++) : nullptr;
    }
    bool IsSame(const void* pLeft, const void* pRight) const
    {
        return pLeft == pRight ||
               (pLeft != nullptr && pRight != nullptr && std::memcmp(pLeft, pRight, m_records.size) == 0);
    }

private:
    const ObjectClass& m_row;
    Records m_records;
    std::size_t m_index = 0;
};

struct Sides {
    Configuration before;
    Configuration now;
    Configuration after;
};

void Compare(const ObjectClass& row, const Sides& sides, const std::string& doer, Findings& findings)
{
    RowWalk before(row, sides.before);
    RowWalk now(row, sides.now);
    RowWalk after(row, sides.after);
    std::size_t nrAsBefore = 0;
    std::size_t nrAsAfter = 0;
    Findings neither;
    for (uint64_t key = 0; (key = std::min({before.Key(), now.Key(), after.Key()})) != UINT64_MAX;) {
        const void* const pBefore = before.Take(key);
        const void* const pNow = now.Take(key);
        const void* const pAfter = after.Take(key);
        if (now.IsSame(pBefore, pNow) && now.IsSame(pNow, pAfter)) {
            continue;
        }
        if (now.IsSame(pBefore, pNow)) {
            ++nrAsBefore;
        } else if (now.IsSame(pNow, pAfter)) {
            ++nrAsAfter;
        } else {
            const void* const pAny = pNow != nullptr ? pNow : pBefore != nullptr ? pBefore : pAfter;
            neither.push_back({Kind::kTorn, ObjectName(row, pAny), "", "", "",
                               fmt::format("is neither as before {} nor as after it", doer)});
        }
    }
    if (nrAsBefore + nrAsAfter + neither.size() > 0) {
        findings.push_back({Kind::kTorn, std::string(row.many), "", "", "",
                            fmt::format("{} was cut short: of what it changes here {} as before, {} as after, {} "
                                        "neither; 'piovios rollback' mends it",
                                        doer, nrAsBefore, nrAsAfter, neither.size())});
        findings.insert(findings.end(), neither.begin(), neither.end());
    }
}

} // namespace

Findings TornBy(const Picture& picture)
{
    Findings findings;
    const auto record = IsCopy() ? std::nullopt : ReadRecord(RecordKind::kWrite);
    const auto region = FindRegion();
    if (!record || !record->isOfThisRegion || !region || LockHolder(*region)) {
        return findings;
    }
    Sides sides{{}, ReadConfiguration(picture), {}};
    const std::string now = ToText(sides.now);
    const std::string before = ReadState(FileBefore(RecordKind::kWrite)).value_or("");
    const std::string after = ReadState(FileAfter(RecordKind::kWrite)).value_or("");
    if (now == before || now == after || before.empty()) {
        return findings;
    }
    sides.before = ReadStateText(FileBefore(RecordKind::kWrite), before);
    sides.after = after.empty() ? Configuration{} : ReadStateText(FileAfter(RecordKind::kWrite), after);
    for (const ObjectClass& row : Catalogue()) {
        Compare(row, sides, DoerText(*record), findings);
    }
    return findings;
}

} // namespace tool
