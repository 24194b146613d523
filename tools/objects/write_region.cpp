// write_region.cpp - a configuration into a region that holds another one: only what differs is stored.
//
// The wanted tables are made aside, derived values and carried bytes included, and compared with the region, so damage
// is mended too.  A field goes from its old value to its new one by one store; what both configurations have is never
// away.  Where objects are found through others the class writes of the library do the work, which know the order.
// Other operations would not leave the wanted bytes: creating a VLAN stamps the time, deleting one counts a statistic,
// a class write of VLANs clears every usage counter, deleting a translation takes the index entry that another one
// needs.
#include "objects/catalogue.h"
#include "objects/picture.h"
#include "objects/records.h"
#include "region/region_layout.h"

#include <cstring>

namespace tool {

namespace {

constexpr std::size_t kFew = 16; // that are changed by single operations, each of which may search a table

// The whole record: some of its numbers no operation stores by themselves.
SwctData& Region()
{
    return *reinterpret_cast<SwctData*>(reinterpret_cast<uint8_t*>(Swct_GetVlanEntryWPtr(1)) -
                                        offsetof(SwctData, sVlan));
}

// 'size' bytes of numbers, 'width' bytes each; none of them in pieces.
void PutNumbers(std::size_t width, void* pStoredNumbers, const void* pRightNumbers, std::size_t size)
{
    auto* const pStored = static_cast<uint8_t*>(pStoredNumbers);
    const auto* const pRight = static_cast<const uint8_t*>(pRightNumbers);
    if (std::memcmp(pStored, pRight, size) == 0) {
        return;
    }
    for (std::size_t at = 0; at < size; at += width) {
        if (std::memcmp(pStored + at, pRight + at, width) != 0) {
            std::memcpy(pStored + at, pRight + at, width);
        }
    }
}

// The fields of a record that differ, each by one store, then the bytes that no field names.
template <class Body>
void Put(Class id, Body& sStored, const Body& sRight)
{
    if (IsSame(sStored, sRight)) {
        return;
    }
    static const Configuration kNone;
    const std::size_t bodyAt = RowOf(id).records(kNone).size - sizeof(Body);
    auto* const pStored = reinterpret_cast<uint8_t*>(&sStored);
    const auto* const pRight = reinterpret_cast<const uint8_t*>(&sRight);
    for (const Field& field : RowOf(id).fields) {
        if (field.offset >= bodyAt &&
            std::memcmp(pStored + field.offset - bodyAt, pRight + field.offset - bodyAt, field.size) != 0) {
            std::memcpy(pStored + field.offset - bodyAt, pRight + field.offset - bodyAt, field.size);
        }
    }
    if (!IsSame(sStored, sRight)) {
        std::memcpy(pStored, pRight, sizeof(Body));
    }
}

enum class Step { kComeOrChange, kGo };

template <class Body, std::size_t kSize>
void PutTable(Class id, Step step, Body (&aStored)[kSize], const Body (&aRight)[kSize])
{
    for (std::size_t i = 0; i < kSize; ++i) {
        if (IsAllZero(aRight[i]) == (step == Step::kGo)) {
            Put(id, aStored[i], aRight[i]);
        }
    }
}

void PutSettings(const Picture& right)
{
    SwctSwitchAttributes& sStored = Region().sSwitch.sAttributes;
    SwctSwitchAttributes sSwitch = right.sSwitch;
    sSwitch.dwSwitchUpTime = sStored.dwSwitchUpTime;
    Put(Class::kSwitch, sStored, sSwitch);
    if (Swct_GetHrlb() != right.dwHrlb) {
        Swct_SetHrlb(right.dwHrlb);
    }
    if (Swct_GetMgmtVlanIntfSlot() != right.bManagementSlot) {
        Swct_SetMgmtVlanIntfSlot(right.bManagementSlot);
    }
    if (Swct_GetMgmtVlanIntfVlanId() != right.wManagementVlan) {
        Swct_SetMgmtVlanIntfVlanId(right.wManagementVlan);
    }
    if (Swct_GetMgmtVlanIntfVlanPcp() != right.dwManagementPriority) {
        Swct_SetMgmtVlanIntfVlanPcp(right.dwManagementPriority);
    }
}

// The two layouts of a port's provider-bridge data share their storage: what a port holds under another type than it
// gets goes before the type comes.
void PutPorts(const Picture& right)
{
    for (const Port port : AllPorts()) {
        SwctSwitchPort& sStored = *Swct_GetSwitchPortWPtr(port.slot, port.port);
        const SwctSwitchPort& sRight = right.aPort[IndexOf(port)];
        SwctPbData& sData = *Swct_GetPbDataWPtr(port.slot, port.port);
        if (LayoutOf(sStored.dwPbPortType) != LayoutOf(sRight.dwPbPortType) && !IsAllZero(sData)) {
            std::memset(&sData, 0, sizeof(sData));
        }
        Put(Class::kPort, sStored, sRight);
    }
}

// Those that come exist when they are whole; they have no members yet.
void PutVlans(Step step, const Picture& right)
{
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX; ++vlan) {
        const SwctVlanEntry& sRight = right.aVlan[vlan - 1U];
        SwctVlanEntry& sStored = *Swct_GetVlanEntryWPtr(vlan);
        if ((sRight.boExists == 0) != (step == Step::kGo) || IsSame(sStored, sRight)) {
            continue;
        }
        if (step == Step::kGo) {
            PutNumbers(sizeof(uint32_t), sStored.adwMembership, sRight.adwMembership, sizeof(sRight.adwMembership));
            sStored.boExists = sRight.boExists;
        }
        Put(Class::kVlan, sStored.sVlanData, sRight.sVlanData);
        Put(Class::kInnerTag, sStored.sInnerTag, sRight.sInnerTag);
        sStored.boExists = sRight.boExists;
    }
}

template <class Record>
bool IsSameList(const std::vector<Record>& left, const std::vector<Record>& right)
{
    return left.size() == right.size() &&
           (left.empty() || std::memcmp(left.data(), right.data(), left.size() * sizeof(Record)) == 0);
}

template <class Record>
void PushClass(uint16_t wClass, std::vector<Record> records)
{
    records.push_back({}); // the terminator
    Swct_SetConfig(wClass, records.data());
}

// Calls change(before, after) for each record that differs; null: there is none.
template <class Record, class Change>
void ForEachChange(const std::vector<Record>& before, const std::vector<Record>& after, Change change)
{
    for (auto left = before.begin(), right = after.begin(); left != before.end() || right != after.end();) {
        const bool isLeft = right == after.end() || (left != before.end() && KeyOf(left->sMoid) <= KeyOf(right->sMoid));
        const bool isRight =
            left == before.end() || (right != after.end() && KeyOf(right->sMoid) <= KeyOf(left->sMoid));
        if (!isLeft || !isRight || !IsSame(*left, *right)) {
            change(isLeft ? &*left : nullptr, isRight ? &*right : nullptr);
        }
        left += isLeft ? 1 : 0;
        right += isRight ? 1 : 0;
    }
}

void ChangeRegistrations(const Configuration& present, const Configuration& wanted)
{
    using Record = SwctCVidRegistrationRecord;
    std::size_t count = 0;
    ForEachChange(present.aCVidRegistration, wanted.aCVidRegistration,
                  [&count](const Record*, const Record*) { ++count; });
    if (count > kFew) {
        PushClass(SWCT_CLASS_CVID_REGISTRATION, wanted.aCVidRegistration);
        return;
    }
    ForEachChange(present.aCVidRegistration, wanted.aCVidRegistration, [](const Record* pBefore, const Record* pAfter) {
        if (pAfter == nullptr) {
            Swct_DeleteCVidRegistration(pBefore->sMoid);
        } else if (pBefore == nullptr) {
            Swct_CreateCVidRegistration(pAfter->sMoid, &pAfter->sBody);
        } else {
            Swct_WriteCVidRegistration(pAfter->sMoid, &pAfter->sBody);
        }
    });
}

void PutCep(SwctCepData& sStored, const SwctCepData& sRight)
{
    PutTable(Class::kPep, Step::kComeOrChange, sStored.aProviderEdgePort, sRight.aProviderEdgePort);
    PutTable(Class::kRegistration, Step::kComeOrChange, sStored.aCVidRegistration, sRight.aCVidRegistration);
    Put(Class::kDefaultRegistration, sStored.sDefaultCVidRegistration, sRight.sDefaultCVidRegistration);
    PutNumbers(sizeof(uint32_t), sStored.adwServicePriorityRegeneration, sRight.adwServicePriorityRegeneration,
               sizeof(sRight.adwServicePriorityRegeneration));
    PutNumbers(sizeof(uint16_t), sStored.awPepIndexBySvid, sRight.awPepIndexBySvid, sizeof(sRight.awPepIndexBySvid));
    PutNumbers(sizeof(uint16_t), sStored.awFirstCVidInPep, sRight.awFirstCVidInPep, sizeof(sRight.awFirstCVidInPep));
    PutNumbers(sizeof(uint16_t), sStored.awNbrOfCVidInPep, sRight.awNbrOfCVidInPep, sizeof(sRight.awNbrOfCVidInPep));
    sStored.bUnused = sRight.bUnused;
    PutTable(Class::kRegistration, Step::kGo, sStored.aCVidRegistration, sRight.aCVidRegistration);
    PutTable(Class::kPep, Step::kGo, sStored.aProviderEdgePort, sRight.aProviderEdgePort);
}

void PutBridgeData(const Picture& right)
{
    for (const Port port : AllPorts()) {
        SwctPbData& sStored = *Swct_GetPbDataWPtr(port.slot, port.port);
        const SwctPbData& sRight = right.aBridgeData[IndexOf(port)];
        if (!IsSame(sStored, sRight)) {
            switch (LayoutOf(right.aPort[IndexOf(port)].dwPbPortType)) {
            case PbLayout::kCep:
                PutCep(sStored.sCep, sRight.sCep);
                break;
            case PbLayout::kNetworkPort:
                PutTable(Class::kTranslation, Step::kComeOrChange, sStored.sNp.aVidTranslation,
                         sRight.sNp.aVidTranslation);
                PutNumbers(sizeof(uint16_t), sStored.sNp.awLocalVidByRelayVid, sRight.sNp.awLocalVidByRelayVid,
                           sizeof(sRight.sNp.awLocalVidByRelayVid));
                PutTable(Class::kTranslation, Step::kGo, sStored.sNp.aVidTranslation, sRight.sNp.aVidTranslation);
                break;
            case PbLayout::kNone:
                break;
            }
            PutNumbers(1, &sStored, &sRight, sizeof(sRight)); // what the layout gives no meaning
        }
        Put(Class::kQinQ, *Swct_GetQinQPortWPtr(port.slot, port.port), right.aQinQ[IndexOf(port)]);
    }
}

void PutUsers(const Picture& right)
{
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX; ++vlan) {
        SwctVlanEntry& sStored = *Swct_GetVlanEntryWPtr(vlan);
        const uint32_t users = right.aVlan[vlan - 1U].dwNbrOfQinQOrPep;
        if (sStored.dwNbrOfQinQOrPep != users) {
            sStored.dwNbrOfQinQOrPep = users;
        }
    }
}

void PutMembers(const Picture& right)
{
    for (uint16_t vlan = 1; vlan <= SWCT_VLAN_MAX; ++vlan) {
        const SwctVlanEntry& sRight = right.aVlan[vlan - 1U];
        PutNumbers(sizeof(uint32_t), Swct_GetVlanEntryWPtr(vlan)->adwMembership, sRight.adwMembership,
                   sizeof(sRight.adwMembership));
    }
}

} // namespace

// Ports before all that their type gives a meaning, VLANs before what uses them, PEPs before the registrations that
// they count.  Memberships of a VLAN that comes are last: until then no frame of it has a way out.
void WriteToRegion(const Configuration& present, const Configuration& wanted)
{
    const auto right = PictureOf(wanted);
    PutSettings(*right);
    PutPorts(*right);
    PutVlans(Step::kComeOrChange, *right);
    if (!IsSameList(present.aPep, wanted.aPep)) {
        PushClass(SWCT_CLASS_PROVIDER_EDGE_PORT, wanted.aPep); // counts its users on top of those before
        PutUsers(*right);
    }
    ChangeRegistrations(present, wanted);
    PutBridgeData(*right);
    PutUsers(*right);
    PutMembers(*right);
    PutVlans(Step::kGo, *right);
    if (Swct_GetNbrOfPopulatedVlans() != right->wNbrOfPopulatedVlans) {
        Region().wNbrOfPopulatedVlans = right->wNbrOfPopulatedVlans;
    }
}

} // namespace tool
