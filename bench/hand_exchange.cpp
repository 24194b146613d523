// The exchange with the CDBM by hand: a write is one merge over the table, for records in key order.
#include "hand_region.h"

namespace hand {
namespace {

// The records of a request for ports: 'begin(data)' and 'end(data)' surround those of a port, 'store(record, key)'
// takes each, 'clear(first, last)' what lies between them.
template <class Record, class Begin, class StoreRecord, class ClearGap, class End>
void MergePorts(const ClassData& sClass, Begin begin, StoreRecord store, ClearGap clear, End end) noexcept
{
    const auto* p = reinterpret_cast<const Record*>(sClass.abRequest.data());
    const Record* pEnd = p + sClass.aRow.size();
    AskPorts([&](PortKey s) {
        begin(Pb(s));
        unsigned next = 0;
        for (; p != pEnd && p->sMoid.bSlot == s.bSlot && p->sMoid.bPort == s.bPort; ++p) {
            const unsigned index = kernels::LoadWord(reinterpret_cast<const uint8_t*>(p) + 4) - 1U;
            if (index != next) {
                clear(next, index);
            }
            store(*p, index);
            next = index + 1;
        }
        if (next != SWCT_PB_VID_MAX) {
            clear(next, SWCT_PB_VID_MAX);
        }
        end();
        return 0;
    });
}

BENCH_CALLED void WriteRegistrations(const ClassData& sClass) noexcept
{
    SwctCepData* pCep = nullptr;
    struct {
        uint16_t awCount[SWCT_PEP_MAX + 1]; // 0: of S-VIDs without a provider edge port
        uint16_t awFirst[SWCT_PEP_MAX + 1];
    } sSummary;
    MergePorts<SwctCVidRegistrationRecord>(
        sClass,
        [&](SwctPbData& sPort) {
            pCep = &sPort.sCep;
            std::memset(&sSummary, 0, sizeof sSummary);
        },
        [&](const SwctCVidRegistrationRecord& sRecord, unsigned index) {
            std::memcpy(&pCep->aCVidRegistration[index], &sRecord.sBody, sizeof sRecord.sBody);
            const unsigned pep = pCep->awPepIndexBySvid[sRecord.sBody.wSvid - 1];
            if (sSummary.awCount[pep]++ == 0) {
                sSummary.awFirst[pep] = static_cast<uint16_t>(index + 1);
            }
        },
        [&](unsigned first, unsigned last) {
            std::memset(static_cast<void*>(&pCep->aCVidRegistration[first]), 0, (last - first) * kRegistrationSize);
        },
        [&] {
            std::memcpy(pCep->awNbrOfCVidInPep, sSummary.awCount + 1, sizeof pCep->awNbrOfCVidInPep);
            std::memcpy(pCep->awFirstCVidInPep, sSummary.awFirst + 1, sizeof pCep->awFirstCVidInPep);
        });
}

BENCH_CALLED void WriteTranslations(const ClassData& sClass) noexcept
{
    SwctNetworkPortData* pNp = nullptr;
    MergePorts<SwctVidTranslationRecord>(
        sClass,
        [&](SwctPbData& sPort) {
            pNp = &sPort.sNp;
            std::memset(pNp->awLocalVidByRelayVid, 0, sizeof pNp->awLocalVidByRelayVid);
        },
        [&](const SwctVidTranslationRecord& sRecord, unsigned index) {
            std::memcpy(&pNp->aVidTranslation[index], &sRecord.sBody, sizeof sRecord.sBody);
            pNp->awLocalVidByRelayVid[sRecord.sBody.wRelayVid - 1] = static_cast<uint16_t>(index + 1);
        },
        [&](unsigned first, unsigned last) {
            std::memset(static_cast<void*>(&pNp->aVidTranslation[first]), 0, (last - first) * kTranslationSize);
        },
        [] {});
}

BENCH_CALLED void WriteVlans(const ClassData& sClass) noexcept
{
    const auto* p = reinterpret_cast<const SwctVlanRecord*>(sClass.abRequest.data());
    unsigned next = 0;
    const auto clear = [&next](unsigned last) {
        for (; next < last; ++next) {
            pRegion->sVlan[next].boExists = 0;
            pRegion->sVlan[next].sVlanData.wVlanId = 0;
        }
    };
    for (std::size_t i = 0; i < sClass.aRow.size(); ++i) {
        const unsigned index = p[i].sMoid.wVlanId - 1U;
        clear(index);
        SwctVlanEntry& sEntry = pRegion->sVlan[index];
        sEntry.boExists = 1;
        sEntry.dwNbrOfQinQOrPep = 0;
        sEntry.sVlanData = p[i].sBody;
        sEntry.sVlanData.dwRowState = 1;
        next = index + 1;
    }
    clear(SWCT_VLAN_MAX);
    pRegion->wNbrOfPopulatedVlans = static_cast<uint16_t>(sClass.aRow.size());
}

BENCH_CALLED void WriteMembers(const ClassData& sClass) noexcept
{
    const auto* p = reinterpret_cast<const SwctVlanPortRecord*>(sClass.abRequest.data());
    const auto* pEnd = p + sClass.aRow.size();
    for (unsigned index = 0; index < SWCT_VLAN_MAX; ++index) {
        uint32_t adwMember[SWCT_SLOT_MAX * SWCT_PORT_MAX] = {};
        for (; p != pEnd && p->sMoid.wVlanId == index + 1; ++p) {
            adwMember[p->sMoid.bSlot * SWCT_PORT_MAX + p->sMoid.bPort - SWCT_PORT_MAX - 1] = p->sBody.dwMembership;
        }
        std::memcpy(pRegion->sVlan[index].adwMembership, adwMember, sizeof adwMember);
    }
}

void StoreWord(uint8_t* p, uint64_t qw) noexcept
{
    std::memcpy(p, &qw, sizeof qw);
}

// Every membership is stored, and kept where it is one: what the branch predictor cannot know costs nothing.  Writes up
// to 16 bytes behind the reply.
BENCH_CALLED void ReadMembers(uint8_t* pReply) noexcept
{
    for (unsigned index = 0; index < SWCT_VLAN_MAX; ++index) {
        const SwctVlanEntry& sEntry = pRegion->sVlan[index];
        if (sEntry.boExists == 0) {
            continue;
        }
        const uint64_t qwVlan = SWCT_CLASS_VLAN_PORT | uint64_t{index + 1} << 16;
        for (uint64_t slot = 1; slot <= SWCT_SLOT_MAX; ++slot) {
            for (uint64_t port = 1; port <= SWCT_PORT_MAX; ++port) {
                const uint64_t qwMember = sEntry.adwMembership[slot - 1][port - 1];
                StoreWord(pReply, qwVlan | (slot | port << 8) * 0x1000100000000U);
                StoreWord(pReply + 8, 1 | qwMember << 32);
                pReply += qwMember != 0 ? 16 : 0;
            }
        }
    }
    std::memset(pReply, 0, sizeof(SwctVlanPortMoid));
}

template <uint16_t kClass, std::size_t kStride, class Table>
void ReadRecords(uint8_t* pReply, Table table) noexcept
{
    AskPorts([&](PortKey s) {
        const uint8_t* pTable = table(s);
        const uint64_t qwHead = kClass | uint64_t{s.bSlot} << 16 | uint64_t{s.bPort} << 24;
        kernels::VisitMasks<kStride>(pTable, 0, SWCT_PB_VID_MAX, kernels::InUse{}, [&](unsigned first, unsigned mask) {
            for (; mask != 0; mask &= mask - 1) {
                const unsigned index = first + static_cast<unsigned>(std::countr_zero(mask));
                StoreWord(pReply, qwHead | uint64_t{index + 1} << 32);
                std::memcpy(pReply + 6, pTable + index * kStride, kStride);
                pReply += 6 + kStride;
            }
            return false;
        });
        return 0;
    });
    std::memset(pReply, 0, 6);
}

BENCH_CALLED void ReadRegistrations(uint8_t* pReply) noexcept
{
    ReadRecords<SWCT_CLASS_CVID_REGISTRATION, kRegistrationSize>(pReply, Registrations);
}

BENCH_CALLED void ReadTranslations(uint8_t* pReply) noexcept
{
    ReadRecords<SWCT_CLASS_VID_TRANSLATION, kTranslationSize>(pReply, Translations);
}

// The VLANs that pass, one behind the other, and a terminator.
template <uint16_t kClass, class Body>
void ReadVlanRecords(uint8_t* pReply, Body body) noexcept
{
    for (unsigned index = 0; index < SWCT_VLAN_MAX; ++index) {
        if (pRegion->sVlan[index].boExists != 0) {
            const auto& sBody = body(pRegion->sVlan[index]);
            const uint32_t dwMoid = kClass | (index + 1) << 16;
            std::memcpy(pReply, &dwMoid, sizeof dwMoid);
            std::memcpy(pReply + sizeof dwMoid, &sBody, sizeof sBody);
            pReply += sizeof dwMoid + sizeof sBody;
        }
    }
    std::memset(pReply, 0, sizeof(SwctVlanMoid));
}

BENCH_CALLED void ReadVlans(uint8_t* pReply) noexcept
{
    ReadVlanRecords<SWCT_CLASS_VLAN>(
        pReply, [](const SwctVlanEntry& s) -> auto& { return s.sVlanData; });
}

// Of this data every VLAN has an inner tag.
BENCH_CALLED void ReadInnerTags(uint8_t* pReply) noexcept
{
    ReadVlanRecords<SWCT_CLASS_VLAN_IF_INNER_TAG>(
        pReply, [](const SwctVlanEntry& s) -> auto& { return s.sInnerTag; });
}

BENCH_CALLED void WriteInnerTags(const ClassData& sClass) noexcept
{
    const auto* p = reinterpret_cast<const SwctVlanIfInnerTagRecord*>(sClass.abRequest.data());
    for (std::size_t i = 0; i < sClass.aRow.size(); ++i) {
        pRegion->sVlan[p[i].sMoid.wVlanId - 1].sInnerTag = p[i].sBody;
    }
}

constexpr Exchange kExchange[] = {
    {SWCT_CLASS_VLAN, WriteVlans, ReadVlans},
    {SWCT_CLASS_VLAN_PORT, WriteMembers, ReadMembers},
    {SWCT_CLASS_VLAN_IF_INNER_TAG, WriteInnerTags, ReadInnerTags},
    {SWCT_CLASS_CVID_REGISTRATION, WriteRegistrations, ReadRegistrations},
    {SWCT_CLASS_VID_TRANSLATION, WriteTranslations, ReadTranslations},
};

} // namespace

const Exchange* FindExchange(uint16_t wClass) noexcept
{
    for (const Exchange& s : kExchange) {
        if (s.wClass == wClass) {
            return &s;
        }
    }
    return nullptr;
}

} // namespace hand
