// The exchange with the CDBM.  By hand: clear what the request replaces, then copy record by record.  Only the classes
// with thousands of records have a limit.
#include <cstring>
#include <iterator>

#include "swct/swct.h"
#include "works.h"

bool boCheckExchange = false;

namespace {

SwctPbData& Pb(uint8_t bSlot, uint8_t bPort) noexcept
{
    return pRegion->sPbData[bSlot % SWCT_SLOT_MAX][bPort - 1];
}

template <class Clear>
void ClearPorts(Clear clear) noexcept
{
    for (auto& aPort : pRegion->sPbData) {
        for (SwctPbData& sPort : aPort) {
            clear(sPort);
        }
    }
}

template <class Record, class Store>
void ForEach(const void* pRecords, std::size_t count, Store store) noexcept
{
    const auto* p = static_cast<const Record*>(pRecords);
    for (std::size_t i = 0; i < count; ++i) {
        store(p[i], p[i].sMoid);
    }
}

BENCH_CALLED void WriteVlans(const void* pRecords, std::size_t count) noexcept
{
    for (SwctVlanEntry& sEntry : pRegion->sVlan) {
        sEntry.boExists = 0;
        sEntry.sVlanData.wVlanId = 0;
    }
    ForEach<SwctVlanRecord>(pRecords, count, [](const auto& sRecord, SwctVlanMoid s) {
        SwctVlanEntry& sEntry = pRegion->sVlan[s.wVlanId - 1];
        sEntry.boExists = 1;
        sEntry.dwNbrOfQinQOrPep = 0;
        sEntry.sVlanData = sRecord.sBody;
        sEntry.sVlanData.dwRowState = 1;
    });
    pRegion->wNbrOfPopulatedVlans = static_cast<uint16_t>(count);
}

BENCH_CALLED void WriteMembers(const void* pRecords, std::size_t count) noexcept
{
    for (SwctVlanEntry& sEntry : pRegion->sVlan) {
        std::memset(sEntry.adwMembership, 0, sizeof sEntry.adwMembership);
    }
    ForEach<SwctVlanPortRecord>(pRecords, count, [](const auto& sRecord, SwctVlanPortMoid s) {
        pRegion->sVlan[s.wVlanId - 1].adwMembership[s.bSlot - 1][s.bPort - 1] = sRecord.sBody.dwMembership;
    });
}

BENCH_CALLED void WriteInnerTags(const void* pRecords, std::size_t count) noexcept
{
    ForEach<SwctVlanIfInnerTagRecord>(pRecords, count, [](const auto& sRecord, SwctVlanMoid s) {
        pRegion->sVlan[s.wVlanId - 1].sInnerTag = sRecord.sBody;
    });
}

BENCH_CALLED void WriteRegistrations(const void* pRecords, std::size_t count) noexcept
{
    ClearPorts([](SwctPbData& sPort) {
        std::memset(sPort.sCep.aCVidRegistration, 0, sizeof sPort.sCep.aCVidRegistration);
        std::memset(sPort.sCep.awNbrOfCVidInPep, 0, sizeof sPort.sCep.awNbrOfCVidInPep);
        std::memset(sPort.sCep.awFirstCVidInPep, 0, sizeof sPort.sCep.awFirstCVidInPep);
    });
    ForEach<SwctCVidRegistrationRecord>(pRecords, count, [](const auto& sRecord, SwctCVidRegistrationMoid s) {
        SwctCepData& sCep = Pb(s.bSlot, s.bPort).sCep;
        sCep.aCVidRegistration[s.wCVid - 1] = sRecord.sBody;
        const unsigned pep = sCep.awPepIndexBySvid[sRecord.sBody.wSvid - 1] - 1U;
        ++sCep.awNbrOfCVidInPep[pep];
        if (sCep.awFirstCVidInPep[pep] == 0 || sCep.awFirstCVidInPep[pep] > s.wCVid) {
            sCep.awFirstCVidInPep[pep] = s.wCVid;
        }
    });
}

BENCH_CALLED void WriteTranslations(const void* pRecords, std::size_t count) noexcept
{
    ClearPorts([](SwctPbData& sPort) { std::memset(&sPort.sNp, 0, sizeof sPort.sNp); });
    ForEach<SwctVidTranslationRecord>(pRecords, count, [](const auto& sRecord, SwctVidTranslationMoid s) {
        SwctNetworkPortData& sNp = Pb(s.bSlot, s.bPort).sNp;
        sNp.aVidTranslation[s.wLocalVid - 1] = sRecord.sBody;
        sNp.awLocalVidByRelayVid[sRecord.sBody.wRelayVid - 1] = s.wLocalVid;
    });
}

// Writes records one behind the other, and a terminator.
struct Reply {
    uint8_t* pEnd;

    template <class Moid, class Body>
    void Add(const Moid& sMoid, const Body& sBody) noexcept
    {
        std::memcpy(pEnd, &sMoid, sizeof sMoid);
        std::memcpy(pEnd + sizeof sMoid, &sBody, sizeof sBody);
        pEnd += sizeof sMoid + sizeof sBody;
    }
};

// 'add(reply, entry, VLAN id)' adds what a VLAN has.
template <class Moid, class AddVlan>
void ReplyByVlan(uint8_t* pBuffer, AddVlan add) noexcept
{
    Reply reply{pBuffer};
    for (uint16_t w = 1; w <= SWCT_VLAN_MAX; ++w) {
        if (pRegion->sVlan[w - 1].boExists != 0) {
            add(reply, pRegion->sVlan[w - 1], w);
        }
    }
    std::memset(reply.pEnd, 0, sizeof(Moid));
}

BENCH_CALLED void ReadVlans(uint8_t* pBuffer) noexcept
{
    ReplyByVlan<SwctVlanMoid>(pBuffer, [](Reply& reply, const SwctVlanEntry& sEntry, uint16_t wVlanId) {
        reply.Add(SwctVlanMoid{SWCT_CLASS_VLAN, wVlanId}, sEntry.sVlanData);
    });
}

BENCH_CALLED void ReadInnerTags(uint8_t* pBuffer) noexcept
{
    ReplyByVlan<SwctVlanMoid>(pBuffer, [](Reply& reply, const SwctVlanEntry& sEntry, uint16_t wVlanId) {
        if (sEntry.sInnerTag.dwInnerTagEnable != 0) {
            reply.Add(SwctVlanMoid{SWCT_CLASS_VLAN_IF_INNER_TAG, wVlanId}, sEntry.sInnerTag);
        }
    });
}

BENCH_CALLED void ReadMembers(uint8_t* pBuffer) noexcept
{
    ReplyByVlan<SwctVlanPortMoid>(pBuffer, [](Reply& reply, const SwctVlanEntry& sEntry, uint16_t wVlanId) {
        for (uint8_t bSlot = 1; bSlot <= SWCT_SLOT_MAX; ++bSlot) {
            for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
                const uint32_t dwMembership = sEntry.adwMembership[bSlot - 1][bPort - 1];
                if (dwMembership != 0) {
                    reply.Add(SwctVlanPortMoid{SWCT_CLASS_VLAN_PORT, wVlanId, bSlot, bPort},
                              SwctVlanPortAttributes{bSlot, bPort, 1, dwMembership});
                }
            }
        }
    });
}

// The records in use, by their first field, of a table in the data of every port.
template <class Moid, uint16_t kClass, class Table>
void ReplyByPort(uint8_t* pBuffer, Table table) noexcept
{
    Reply reply{pBuffer};
    for (uint8_t bSlot = 1; bSlot <= SWCT_SLOT_MAX; ++bSlot) {
        for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
            const auto& aRecord = table(Pb(bSlot, bPort));
            for (uint16_t w = 0; w < std::size(aRecord); ++w) {
                if (Load<uint16_t>(reinterpret_cast<const uint8_t*>(&aRecord[w])) != 0) {
                    reply.Add(Moid{kClass, bSlot, bPort, static_cast<uint16_t>(w + 1)}, aRecord[w]);
                }
            }
        }
    }
    std::memset(reply.pEnd, 0, sizeof(Moid));
}

BENCH_CALLED void ReadRegistrations(uint8_t* pBuffer) noexcept
{
    ReplyByPort<SwctCVidRegistrationMoid, SWCT_CLASS_CVID_REGISTRATION>(
        pBuffer, [](const SwctPbData& s) -> auto& { return s.sCep.aCVidRegistration; });
}

BENCH_CALLED void ReadTranslations(uint8_t* pBuffer) noexcept
{
    ReplyByPort<SwctVidTranslationMoid, SWCT_CLASS_VID_TRANSLATION>(
        pBuffer, [](const SwctPbData& s) -> auto& { return s.sNp.aVidTranslation; });
}

struct Limit {
    uint16_t wClass;
    void (*pWrite)(const void* pRecords, std::size_t count) noexcept;
    void (*pRead)(uint8_t* pBuffer) noexcept;
};

constexpr Limit kLimits[] = {
    {SWCT_CLASS_VLAN, WriteVlans, ReadVlans},
    {SWCT_CLASS_VLAN_PORT, WriteMembers, ReadMembers},
    {SWCT_CLASS_VLAN_IF_INNER_TAG, WriteInnerTags, ReadInnerTags},
    {SWCT_CLASS_CVID_REGISTRATION, WriteRegistrations, ReadRegistrations},
    {SWCT_CLASS_VID_TRANSLATION, WriteTranslations, ReadTranslations},
};

const Limit* FindLimit(uint16_t wClass)
{
    for (const Limit& sLimit : kLimits) {
        if (sLimit.wClass == wClass) {
            return &sLimit;
        }
    }
    return nullptr;
}

uint64_t SumOf(const void* pBytes, std::size_t size)
{
    const auto* p = static_cast<const uint8_t*>(pBytes);
    uint64_t qwSum = 0;
    for (std::size_t i = 0; boCheckExchange && i < size; ++i) {
        qwSum = qwSum * 31 + p[i];
    }
    return qwSum;
}

uint8_t abReply[2U << 20];

Work WriteWork(const ClassData& sClass, const std::string& size, const Limit* pLimit)
{
    const auto* pClass = &sClass;
    Work work{"write class " + size, 0, 1, {}, {}, {}};
    work.library = [pClass] {
        Swct_SetConfig(pClass->wClass, pClass->abRequest.data());
        return SumOf(pRegion, sizeof *pRegion);
    };
    work.rival = [pClass](Store& store) {
        store.Replace(*pClass);
        return SumOf(pRegion, sizeof *pRegion); // checked by reading it
    };
    if (pLimit != nullptr) {
        work.wanted = kWrite;
        work.limit = [pClass, pLimit] {
            pLimit->pWrite(pClass->abRequest.data(), pClass->aRow.size());
            return SumOf(pRegion, sizeof *pRegion);
        };
    }
    return work;
}

Work ReadWork(const ClassData& sClass, const std::string& size, const Limit* pLimit)
{
    const auto* pClass = &sClass;
    const std::size_t recordSize = sClass.moidSize + sClass.bodySize;
    const std::size_t replySize = sClass.aRow.size() * recordSize + sClass.moidSize;
    Work work{"read class " + size, 0, 1, {}, {}, {}};
    work.library = [pClass, replySize] {
        Swct_GetConfig(pClass->wClass, abReply, 100000);
        return SumOf(abReply, replySize);
    };
    work.rival = [pClass, recordSize, replySize](Store& store) {
        uint8_t* pEnd = abReply;
        const uint8_t* pMoid = pClass->abRequest.data(); // where a Moid comes from makes no difference
        store.Scan(pClass->wClass, 0, UINT32_MAX, [&](uint32_t, const uint8_t* pBody) {
            std::memcpy(pEnd, pMoid, pClass->moidSize);
            std::memcpy(pEnd + pClass->moidSize, pBody, pClass->bodySize);
            pEnd += recordSize;
            pMoid += recordSize;
            return true;
        });
        std::memset(pEnd, 0, pClass->moidSize);
        return SumOf(abReply, replySize);
    };
    if (pLimit != nullptr) {
        work.wanted = kPass;
        work.limit = [pLimit, replySize] {
            pLimit->pRead(abReply);
            return SumOf(abReply, replySize);
        };
    }
    return work;
}

} // namespace

std::vector<Work> Exchange(const std::vector<ClassData>& aClass)
{
    std::vector<Work> works;
    for (const ClassData& sClass : aClass) {
        if (sClass.wClass == SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_15M) {
            continue;
        }
        const std::string size = std::to_string(sClass.wClass) + " (" + std::to_string(sClass.aRow.size()) + " of " +
                                 std::to_string(sClass.moidSize + sClass.bodySize) + " bytes)";
        works.push_back(WriteWork(sClass, size, FindLimit(sClass.wClass)));
        works.push_back(ReadWork(sClass, size, FindLimit(sClass.wClass)));
    }
    return works;
}
