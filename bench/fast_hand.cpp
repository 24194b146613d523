// By hand, several records at a time; writes are one merge over the table, for records in key order.
#include "hand.h"
#include "kernels.h"

namespace {

constexpr std::size_t kRegistrationSize = sizeof(SwctCVidRegistration);
constexpr std::size_t kTranslationSize = sizeof(SwctVidTranslation);

template <class Type>
uint8_t* Bytes(Type& object) noexcept
{
    return reinterpret_cast<uint8_t*>(&object);
}

SwctPbData& Pb(PortKey s) noexcept
{
    return pRegion->sPbData[s.bSlot % SWCT_SLOT_MAX][s.bPort - 1];
}

const uint8_t* Registrations(PortKey s) noexcept
{
    return Bytes(Pb(s).sCep.aCVidRegistration);
}

const uint8_t* Translations(PortKey s) noexcept
{
    return Bytes(Pb(s).sNp.aVidTranslation);
}

constexpr auto kIsUsed = [](const uint8_t* p) { return kernels::LoadWord(p) != 0; };
constexpr auto kIsRelayed = [](const uint8_t* p) { return p[8] == 1 && kernels::LoadWord(p) != 0; };

template <std::size_t kStride, std::size_t kOffset, class Confirm>
unsigned FindNth(const uint8_t* p, unsigned nth, uint16_t wKey, Confirm confirm) noexcept
{
    const unsigned found = kernels::Find<kStride>(p, 0, SWCT_PB_VID_MAX, nth, kernels::WordIs<kOffset>(wKey), confirm);
    return found < SWCT_PB_VID_MAX ? found + 1 : 0;
}

// Whether 'ask(port)' is not 0 for a port.
template <class Ask>
uint32_t AskPorts(Ask ask) noexcept
{
    for (uint8_t bSlot = 1; bSlot <= SWCT_SLOT_MAX; ++bSlot) {
        for (uint8_t bPort = 1; bPort <= SWCT_PORT_MAX; ++bPort) {
            if (ask(PortKey{bSlot, bPort}) != 0) {
                return 1;
            }
        }
    }
    return 0;
}

// The Moid of a port's object as its six bytes: two stores of it, of which a copy can be loaded at once.
template <class Moid>
void StoreMoid(Moid* pTo, uint16_t wClass, PortKey s, unsigned key) noexcept
{
    const uint32_t dwHead = uint32_t{wClass} | uint32_t{s.bSlot} << 16 | uint32_t{s.bPort} << 24;
    const auto wKey = static_cast<uint16_t>(key);
    std::memcpy(pTo, &dwHead, sizeof dwHead);
    std::memcpy(Bytes(*pTo) + sizeof dwHead, &wKey, sizeof wKey);
}

template <class Moid, uint16_t kClass, std::size_t kStride, class Table>
Moid* NextRecord(const Moid* pPrevious, unsigned vid, Table table) noexcept
{
    static Moid sNext;
    PortKey s{pPrevious->bSlot, pPrevious->bPort};
    if (s.bSlot == 0) {
        s = {1, 1};
    }
    for (;;) {
        const uint8_t* p = table(s);
        // The next one first: where there is no gap, nothing else is looked at.
        if (vid < SWCT_PB_VID_MAX && !kIsUsed(p + vid * kStride)) {
            vid = kernels::Find<kStride>(p, vid + 1, SWCT_PB_VID_MAX, 1, kernels::InUse{},
                                         [](const uint8_t*) { return true; });
        }
        if (vid < SWCT_PB_VID_MAX) {
            StoreMoid(&sNext, kClass, s, vid + 1);
            return &sNext;
        }
        vid = 0;
        if (++s.bPort > SWCT_PORT_MAX) {
            s.bPort = 1;
            if (++s.bSlot > SWCT_SLOT_MAX) {
                return nullptr;
            }
        }
    }
}

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

struct FastHand {
    static unsigned MembersOf(unsigned index) noexcept
    {
        const SwctVlanEntry& sEntry = pRegion->sVlan[index];
        return sEntry.boExists != 0 ? kernels::Members(reinterpret_cast<const uint8_t*>(&sEntry.adwMembership)) : 0;
    }
    BENCH_CALLED static void GetPortList(uint16_t wVid, SwctPortList* pPortList) noexcept
    {
        uint8_t abList[64] = {};
        unsigned mask = MembersOf(wVid - 1U);
        const unsigned count = static_cast<unsigned>(std::popcount(mask));
        uint8_t* p = abList + 1;
        for (unsigned slot = 1; slot <= SWCT_SLOT_MAX; ++slot) {
            for (unsigned port = 1; port <= SWCT_PORT_MAX; ++port, mask >>= 1) {
                const uint32_t dwEntry = slot | port << 8;
                std::memcpy(p, &dwEntry, sizeof dwEntry);
                p += mask % 2 != 0 ? 3 : 0;
            }
        }
        std::memset(p, 0, 4);
        abList[0] = static_cast<uint8_t>(count);
        std::memcpy(pPortList, abList, sizeof *pPortList);
    }
    static uint64_t PortList(Key s) noexcept
    {
        SwctPortList sList;
        GetPortList(s.wVid, &sList);
        return uint64_t{sList.bNbrOfPorts} + sList.asPort[2].bPort;
    }
    BENCH_CALLED static uint32_t CepSvids(PortKey s, uint8_t* pBitmap) noexcept
    {
        kernels::BitmapOfValues<kRegistrationSize>(Registrations(s) + 2, pBitmap);
        return 0;
    }
    BENCH_CALLED static uint32_t CVids(PortKey s, uint16_t wSvid, uint8_t* pBitmap) noexcept
    {
        return kernels::Bitmap<kRegistrationSize, false>(Registrations(s), kernels::InUseWith(wSvid), pBitmap);
    }
    BENCH_CALLED static uint32_t CVlans(uint8_t* pBitmap) noexcept
    {
        std::memset(pBitmap, 0, SWCT_VLAN_BITMAP_SIZE);
        AskPorts([pBitmap](PortKey s) {
            kernels::Bitmap<kRegistrationSize, true>(Registrations(s), kernels::InUse{}, pBitmap);
            return 0;
        });
        return 0;
    }
    BENCH_CALLED static uint32_t DefaultCVids(PortKey s, uint8_t* pBitmap) noexcept
    {
        return kernels::Bitmap<kRegistrationSize, false>(Registrations(s), kernels::WordIs<0>(0), pBitmap);
    }
    BENCH_CALLED static uint32_t HasRegistrations(uint16_t wVid) noexcept
    {
        return AskPorts(
            [wVid](PortKey s) { return FindNth<kRegistrationSize, 2>(Registrations(s), 1, wVid, kIsUsed); });
    }
    BENCH_CALLED static uint32_t IsRelayed(uint16_t wVid) noexcept
    {
        return AskPorts(
            [wVid](PortKey s) { return FindNth<kRegistrationSize, 6>(Registrations(s), 1, wVid, kIsRelayed); });
    }
    BENCH_CALLED static uint16_t CVidOfRelay(PortKey s, uint16_t wVid) noexcept
    {
        return static_cast<uint16_t>(FindNth<kRegistrationSize, 6>(Registrations(s), 1, wVid, kIsRelayed));
    }
    BENCH_CALLED static uint16_t FirstCVid(PortKey s, uint16_t wSvid) noexcept
    {
        const unsigned found = FindNth<kRegistrationSize, 2>(Registrations(s), 1, wSvid, kIsUsed);
        return static_cast<uint16_t>(found != 0 ? found : unsigned{SWCT_VID_NONE});
    }
    BENCH_CALLED static uint16_t SecondCVid(PortKey s, uint16_t wSvid) noexcept
    {
        return static_cast<uint16_t>(FindNth<kRegistrationSize, 2>(Registrations(s), 2, wSvid, kIsUsed));
    }
    BENCH_CALLED static uint32_t HasTranslations(uint16_t wVid) noexcept
    {
        return AskPorts([wVid](PortKey s) { return FindNth<kTranslationSize, 2>(Translations(s), 1, wVid, kIsUsed); });
    }
    BENCH_CALLED static uint16_t LowestLocalVid(PortKey s, uint16_t wVid) noexcept
    {
        return static_cast<uint16_t>(FindNth<kTranslationSize, 2>(Translations(s), 1, wVid, kIsUsed));
    }
    BENCH_CALLED static uint16_t SecondLocalVid(PortKey s, uint16_t wVid) noexcept
    {
        return static_cast<uint16_t>(FindNth<kTranslationSize, 2>(Translations(s), 2, wVid, kIsUsed));
    }
    BENCH_CALLED static SwctVlanMoid* NextVlan(const SwctVlanMoid* pMoidPrevious) noexcept
    {
        static SwctVlanMoid sNext;
        for (unsigned vid = pMoidPrevious->wVlanId + 1U; vid < SWCT_VLAN_MAX; ++vid) {
            if (pRegion->sVlan[vid - 1].boExists != 0) {
                const uint32_t dwMoid = SWCT_CLASS_VLAN | vid << 16;
                std::memcpy(&sNext, &dwMoid, sizeof sNext);
                return &sNext;
            }
        }
        return nullptr;
    }
    BENCH_CALLED static SwctVlanPortMoid* NextVlanPort(const SwctVlanPortMoid* pMoidPrevious) noexcept
    {
        static SwctVlanPortMoid sNext;
        unsigned vid = pMoidPrevious->wVlanId;
        unsigned done = 0; // members up to the previous one
        if (vid == 0) {
            vid = 1;
        } else {
            done = pMoidPrevious->bSlot * SWCT_PORT_MAX + pMoidPrevious->bPort - SWCT_PORT_MAX;
        }
        for (; vid < SWCT_VLAN_MAX; ++vid, done = 0) {
            const unsigned mask = MembersOf(vid - 1) >> done;
            if (mask != 0) {
                const auto index = static_cast<unsigned>(std::countr_zero(mask)) + done;
                const uint32_t dwHead = SWCT_CLASS_VLAN_PORT | vid << 16;
                const auto wPort = static_cast<uint16_t>((1 + index / SWCT_PORT_MAX) | (1 + index % SWCT_PORT_MAX) << 8);
                std::memcpy(&sNext, &dwHead, sizeof dwHead);
                std::memcpy(Bytes(sNext) + sizeof dwHead, &wPort, sizeof wPort);
                return &sNext;
            }
        }
        return nullptr;
    }
    BENCH_CALLED static auto* NextRegistration(const SwctCVidRegistrationMoid* p) noexcept
    {
        return NextRecord<SwctCVidRegistrationMoid, SWCT_CLASS_CVID_REGISTRATION, kRegistrationSize>(p, p->wCVid,
                                                                                                     Registrations);
    }
    BENCH_CALLED static auto* NextTranslation(const SwctVidTranslationMoid* p) noexcept
    {
        return NextRecord<SwctVidTranslationMoid, SWCT_CLASS_VID_TRANSLATION, kTranslationSize>(p, p->wLocalVid,
                                                                                                Translations);
    }
    // Looks for the next C-VID of an S-VID whose first one goes.
    BENCH_CALLED static void DeleteRegistration(PortKey s, uint16_t wCVid) noexcept
    {
        SwctCepData& sCep = Pb(s).sCep;
        SwctCVidRegistration& sRecord = sCep.aCVidRegistration[wCVid - 1];
        const uint16_t wSvid = sRecord.wSvid;
        const unsigned pep = wSvid - 1U < SWCT_VLAN_MAX ? unsigned{sCep.awPepIndexBySvid[wSvid - 1]} : 0;
        std::memset(static_cast<void*>(&sRecord), 0, sizeof sRecord);
        if (pep == 0) {
            return;
        }
        sCep.awNbrOfCVidInPep[pep - 1] = static_cast<uint16_t>(sCep.awNbrOfCVidInPep[pep - 1] - 1);
        if (sCep.awFirstCVidInPep[pep - 1] == wCVid) {
            sCep.awFirstCVidInPep[pep - 1] =
                static_cast<uint16_t>(FindNth<kRegistrationSize, 2>(Registrations(s), 1, wSvid, kIsUsed));
        }
    }
    static bool Writes(uint16_t wClass) noexcept
    {
        return wClass == SWCT_CLASS_VLAN || wClass == SWCT_CLASS_VLAN_PORT || Reads(wClass);
    }
    static bool Reads(uint16_t wClass) noexcept
    {
        return wClass == SWCT_CLASS_VLAN_PORT || wClass == SWCT_CLASS_CVID_REGISTRATION ||
               wClass == SWCT_CLASS_VID_TRANSLATION;
    }
    static void Write(const ClassData& sClass) noexcept
    {
        const auto write = sClass.wClass == SWCT_CLASS_VLAN                ? WriteVlans
                           : sClass.wClass == SWCT_CLASS_VLAN_PORT         ? WriteMembers
                           : sClass.wClass == SWCT_CLASS_CVID_REGISTRATION ? WriteRegistrations
                                                                           : WriteTranslations;
        write(sClass);
    }
    static void Read(const ClassData& sClass, uint8_t* pReply) noexcept
    {
        const auto read = sClass.wClass == SWCT_CLASS_VLAN_PORT           ? ReadMembers
                          : sClass.wClass == SWCT_CLASS_CVID_REGISTRATION ? ReadRegistrations
                                                                          : ReadTranslations;
        read(pReply);
    }
};

FastHand hand;

} // namespace

std::vector<Work> FastHandWorks(const Scene& sScene)
{
    return WorksOf(hand, sScene);
}
