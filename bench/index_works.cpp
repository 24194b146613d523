#include <algorithm>
#include <array>
#include <map>

#include "rivals.h"

namespace {

using Bitmap = std::array<uint8_t, SWCT_VLAN_BITMAP_SIZE>;

void SetBit(Bitmap& abBitmap, unsigned vid) noexcept
{
    abBitmap[vid / 8] = static_cast<uint8_t>(abBitmap[vid / 8] | 1U << vid % 8);
}

// Objects in ascending order of (port, value, key): the nth with a value is found by halving.
struct ByValue {
    std::vector<uint64_t> aqw;

    void Add(PortKey s, uint16_t wValue, uint16_t wKey)
    {
        aqw.push_back(uint64_t{ObjectKey(s, wValue)} << 16 | wKey);
    }
    uint16_t Nth(PortKey s, uint16_t wValue, unsigned nth) const
    {
        const uint64_t qwFirst = uint64_t{ObjectKey(s, wValue)} << 16;
        const auto found = std::lower_bound(aqw.begin(), aqw.end(), qwFirst);
        const std::size_t index = static_cast<std::size_t>(found - aqw.begin()) + nth - 1;
        return index < aqw.size() && aqw[index] >> 16 == qwFirst >> 16 ? static_cast<uint16_t>(aqw[index]) : 0;
    }
};

// The Moids in walk order: where the position is one of them, the next is behind it.
template <class Moid>
struct Order {
    std::vector<Moid> aMoid;

    const Moid* Next(const Moid* pPrevious) const
    {
        const auto isBefore = [](const Moid& sA, const Moid& sB) { return NumberOf(sA) < NumberOf(sB); };
        const bool boIsOurs = pPrevious >= aMoid.data() && pPrevious < aMoid.data() + aMoid.size();
        const Moid* pEnd = aMoid.data() + aMoid.size();
        const Moid* pNext = boIsOurs ? pPrevious + 1 : std::upper_bound(aMoid.data(), pEnd, *pPrevious, isBefore);
        return pNext != pEnd ? pNext : nullptr;
    }
};

// clang-format off
struct Index {
    std::map<uint16_t, std::vector<uint8_t>> replies;
    Bitmap abVlans;
    Bitmap aabPortVlans[16][16];
    uint16_t aawMembers[16][16]; // how many, and the last
    uint16_t aawLastVlan[16][16];
    Bitmap aabSvids[16][16];
    ByValue svids;
    ByValue locals;
    std::array<uint8_t, 4096> aboSvid;
    std::array<uint8_t, 4096> aboLocal;
    Order<SwctVlanMoid> vlans;
    Order<SwctVlanPortMoid> members;
    Order<SwctCVidRegistrationMoid> registrations;
    Order<SwctVidTranslationMoid> translations;

    uint32_t PortVlans(PortKey s, uint8_t* pBitmap) const
    { std::memcpy(pBitmap, aabPortVlans[s.bSlot][s.bPort].data(), sizeof(Bitmap)); return 0; }
    uint32_t Vlans(uint8_t* pBitmap) const { std::memcpy(pBitmap, abVlans.data(), sizeof(Bitmap)); return 0; }
    uint32_t CepSvids(PortKey s, uint8_t* pBitmap) const
    { std::memcpy(pBitmap, aabSvids[s.bSlot][s.bPort].data(), sizeof(Bitmap)); return 0; }
    uint32_t AnyVlan(PortKey s) const { return aawMembers[s.bSlot][s.bPort] != 0; }
    uint16_t JustOneVlan(PortKey s) const
    { return aawMembers[s.bSlot][s.bPort] == 1 ? aawLastVlan[s.bSlot][s.bPort] : 0; }
    uint32_t HasRegistrations(uint16_t wVid) const { return aboSvid[wVid]; }
    uint16_t FirstCVid(PortKey s, uint16_t wSvid) const
    {
        const uint16_t wFound = svids.Nth(s, wSvid, 1);
        return wFound != 0 ? wFound : static_cast<uint16_t>(SWCT_VID_NONE);
    }
    uint16_t SecondCVid(PortKey s, uint16_t wSvid) const { return svids.Nth(s, wSvid, 2); }
    uint32_t HasTranslations(uint16_t wVid) const { return aboLocal[wVid]; }
    uint16_t LowestLocalVid(PortKey s, uint16_t wVid) const { return locals.Nth(s, wVid, 1); }
    uint16_t SecondLocalVid(PortKey s, uint16_t wVid) const { return locals.Nth(s, wVid, 2); }
    const SwctVlanMoid* NextVlan(const SwctVlanMoid* p) const { return vlans.Next(p); }
    const SwctVlanPortMoid* NextVlanPort(const SwctVlanPortMoid* p) const { return members.Next(p); }
    const SwctCVidRegistrationMoid* NextRegistration(const SwctCVidRegistrationMoid* p) const
    { return registrations.Next(p); }
    const SwctVidTranslationMoid* NextTranslation(const SwctVidTranslationMoid* p) const
    { return translations.Next(p); }

    template <class Record, class Moid, class Add>
    static void Each(const ClassData& sClass, Order<Moid>& order, Add add)
    {
        const auto* p = reinterpret_cast<const Record*>(sClass.abRequest.data());
        order.aMoid.clear();
        for (std::size_t i = 0; i < sClass.aRow.size(); ++i) {
            order.aMoid.push_back(p[i].sMoid);
            add(p[i].sMoid, p[i].sBody);
        }
    }
    static bool Writes(uint16_t wClass)
    {
        return wClass == SWCT_CLASS_VLAN || wClass == SWCT_CLASS_VLAN_PORT || wClass == SWCT_CLASS_CVID_REGISTRATION ||
               wClass == SWCT_CLASS_VID_TRANSLATION;
    }
    static bool Reads(uint16_t wClass) { return Writes(wClass); }
    void Write(const ClassData& sClass)
    {
        replies[sClass.wClass].assign(sClass.abRequest.begin(),
                                      sClass.abRequest.end() - static_cast<std::ptrdiff_t>(sClass.bodySize));
        if (sClass.wClass == SWCT_CLASS_VLAN) {
            abVlans = {};
            Each<SwctVlanRecord>(sClass, vlans, [&](SwctVlanMoid s, const SwctVlan&) { SetBit(abVlans, s.wVlanId); });
        } else if (sClass.wClass == SWCT_CLASS_VLAN_PORT) {
            std::memset(aabPortVlans, 0, sizeof aabPortVlans);
            std::memset(aawMembers, 0, sizeof aawMembers);
            Each<SwctVlanPortRecord>(sClass, members, [&](SwctVlanPortMoid s, const SwctVlanPortAttributes&) {
                SetBit(aabPortVlans[s.bSlot][s.bPort], s.wVlanId);
                ++aawMembers[s.bSlot][s.bPort];
                aawLastVlan[s.bSlot][s.bPort] = s.wVlanId;
            });
        } else if (sClass.wClass == SWCT_CLASS_CVID_REGISTRATION) {
            WriteRegistrations(sClass);
        } else {
            locals.aqw.clear();
            aboLocal = {};
            Each<SwctVidTranslationRecord>(sClass, translations,
                                           [&](SwctVidTranslationMoid s, const SwctVidTranslation& sBody) {
                                               locals.Add({s.bSlot, s.bPort}, sBody.wRelayVid, s.wLocalVid);
                                               aboLocal[sBody.wRelayVid] = 1;
                                           });
            std::sort(locals.aqw.begin(), locals.aqw.end());
        }
    }
    void WriteRegistrations(const ClassData& sClass)
    {
        svids.aqw.clear();
        aboSvid = {};
        std::memset(aabSvids, 0, sizeof aabSvids);
        Each<SwctCVidRegistrationRecord>(sClass, registrations,
                                         [&](SwctCVidRegistrationMoid s, const SwctCVidRegistration& sBody) {
                                             const PortKey sPort{s.bSlot, s.bPort};
                                             svids.Add(sPort, sBody.wSvid, s.wCVid);
                                             aboSvid[sBody.wSvid] = 1;
                                             SetBit(aabSvids[s.bSlot][s.bPort], sBody.wSvid);
                                         });
        std::sort(svids.aqw.begin(), svids.aqw.end());
    }
    void Read(const ClassData& sClass, uint8_t* pReply) const
    {
        const std::vector<uint8_t>& abReply = replies.at(sClass.wClass);
        std::memcpy(pReply, abReply.data(), abReply.size());
    }
};

// clang-format on
Index theIndex;

} // namespace

std::vector<Work> IndexWorks(const Scene& sScene)
{
    for (const ClassData& sClass : sScene.aClass) {
        if (Index::Writes(sClass.wClass)) {
            theIndex.Write(sClass);
        }
    }
    std::vector<Work> works = WorksOf(theIndex, sScene);
    std::erase_if(works, [](const Work& sWork) { return sWork.name.find("gaps") != std::string::npos; });
    for (Work& sWork : works) {
        sWork.boChanges = false; // nothing of the region
    }
    return works;
}
