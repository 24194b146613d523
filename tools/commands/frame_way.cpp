#include "commands/frame_way.h"

#include "swct/swct.h"

#include <array>

namespace tool {

namespace {

// What ingress filtering holds when a port accepts frames of VLANs that it is no member of (false of the management
// standard); on a customer edge port the same value makes its default C-VID registration an object.
constexpr uint32_t kFilteringOff = SWCT_INGRESS_FILTERING_DEFAULT_CVID;

bool IsVid(uint16_t vid)
{
    return vid >= 1 && vid <= SWCT_PB_VID_MAX;
}

bool IsBridging()
{
    return Swct_GetSwitchMode() == SWCT_SWITCH_MODE_PROVIDER_BRIDGE;
}

bool IsCepInForce(Port port)
{
    return IsBridging() && Swct_IsCep(port.slot, port.port) != 0;
}

bool IsQinQInForce(Port port)
{
    const SwctPortMoid moid{SWCT_CLASS_QINQ_PORT, port.slot, port.port};
    return Swct_DoesQinQPortExist(moid) != 0 && Swct_IsQinQEnabledOnPort(moid) != 0;
}

uint16_t ProviderVidOf(Port port)
{
    return static_cast<uint16_t>(Swct_GetQinQPortPVid(port.slot, port.port));
}

// Of an existing VLAN.
uint32_t MembershipIn(uint16_t vlan, Port port)
{
    const SwctMembership* membership = Swct_GetVlanPortRPtr(vlan, port.slot, port.port);
    return membership != nullptr && Swct_DoesVlanExist(vlan) != 0 ? *membership : 0;
}

// 0: none.  An index entry whose PEP has another S-VID leads nowhere.
uint16_t PepOf(Port port, uint16_t sVid)
{
    SwctProviderEdgePortMoid moid{};
    const bool isFound = Swct_GetProviderEdgePortMoidForSVid(port.slot, port.port, sVid, &moid) != 0;
    return isFound && Swct_ProviderEdgePort_GetSVid(moid) == sVid ? moid.wPepIndex : uint16_t{0};
}

// What a customer edge port does with a C-VID.
struct Registration {
    bool isFound = false;
    bool isOwn = false; // else the default one
    SwctCVidRegistration record{};

    bool IsRelaySet() const
    {
        return isOwn && record.boRelayCVid == 1;
    }
    // The C-VID in the tag that the PEP gets from this port.
    uint16_t VidAtPep() const
    {
        return IsRelaySet() && IsVid(record.wRelayCVid) ? record.wRelayCVid : record.wCVid;
    }
};

Registration RegistrationOf(Port port, uint16_t cVid)
{
    Registration registration;
    registration.isFound = Swct_GetCVidRegistration(port.slot, port.port, cVid, &registration.record) != 0;
    SwctCVidRegistration own{};
    Swct_ReadCVidRegistration({SWCT_CLASS_CVID_REGISTRATION, port.slot, port.port, cVid}, &own);
    registration.isOwn = IsVid(own.wSvid);
    registration.record.wCVid = cVid;
    return registration;
}

// How frames of an S-VLAN leave a customer edge port.  With a known C-tag it is the lowest C-VID whose frames have that
// tag at the PEP; else any C-VID of the S-VLAN.
bool LeavesCep(Exit& exit, uint16_t sVid, uint16_t cVidAtPep)
{
    uint16_t untagged = 0;
    for (uint16_t cVid = 1; cVid <= SWCT_PB_VID_MAX; ++cVid) {
        const Registration registration = RegistrationOf(exit.port, cVid);
        if (!registration.isFound || registration.record.wSvid != sVid ||
            (cVidAtPep != 0 && registration.VidAtPep() != cVidAtPep)) {
            continue;
        }
        ++exit.cVids;
        if (registration.record.boUntaggedCep != 0) {
            ++untagged;
        }
        exit.vid = cVid;
        if (cVidAtPep != 0) {
            break;
        }
    }
    if (untagged != 0) {
        exit.tagging = untagged == exit.cVids ? Tagging::kUntagged : Tagging::kByCVid;
    }
    if (exit.cVids != 1 || exit.tagging == Tagging::kUntagged) {
        exit.vid = 0;
    }
    return exit.cVids != 0;
}

// How frames of a VLAN leave any other port that is a member of it.
void LeavesMember(Exit& exit, uint16_t vlan, uint16_t cVid, uint32_t membership)
{
    exit.innerVid = cVid;
    exit.isOuterTagOff = IsQinQInForce(exit.port) && ProviderVidOf(exit.port) == vlan;
    if (membership != SWCT_MEMBERSHIP_TAGGED || exit.isOuterTagOff) {
        const bool isKnown = membership == SWCT_MEMBERSHIP_UNTAGGED || exit.isOuterTagOff;
        exit.tagging = isKnown ? Tagging::kUntagged : Tagging::kOther;
        return;
    }
    exit.vid = vlan;
    for (uint16_t localVid = 1; IsBridging() && localVid <= SWCT_PB_VID_MAX; ++localVid) {
        SwctVidTranslation record{};
        Swct_ReadVidTranslation({SWCT_CLASS_VID_TRANSLATION, exit.port.slot, exit.port.port, localVid}, &record);
        if (record.wLocalVid != 0 && record.wRelayVid == vlan && exit.localVids++ == 0) {
            exit.vid = localVid;
        }
    }
}

// Every port but the one that the frame came in by.
void FindExits(FrameWay& way, Port ingress)
{
    for (const Port port : AllPorts()) {
        const uint32_t membership = MembershipIn(way.vlan, port);
        const bool isCep = IsCepInForce(port);
        const uint16_t pep = isCep ? PepOf(port, way.vlan) : uint16_t{0};
        if (port == ingress || (membership == 0 && pep == 0)) {
            continue;
        }
        Exit exit{.port = port, .pep = pep, .isMember = membership != 0};
        if (Swct_DoesSwitchPortExist(port.slot, port.port) == 0) {
            way.missed.push_back({port, Drop::kNoPort});
        } else if (isCep && pep == 0) {
            way.missed.push_back({port, Drop::kNoPep});
        } else if (isCep && !LeavesCep(exit, way.vlan, way.cVid)) {
            way.missed.push_back({port, Drop::kNoRegistration});
        } else {
            if (!isCep) {
                LeavesMember(exit, way.vlan, way.cVid, membership);
            }
            way.exits.push_back(exit);
        }
    }
}

bool IsAdmitted(Admission admission, bool isTagged)
{
    return admission != (isTagged ? Admission::kOnlyUntagged : Admission::kOnlyTagged);
}

// The C-VLAN half of a customer edge port: from the C-VID to the S-VLAN.
Drop EnterByCep(FrameWay& way, Port port)
{
    const Registration registration = RegistrationOf(port, way.vid);
    if (!registration.isFound) {
        return Drop::kNoRegistration;
    }
    const uint16_t vidAtPep = registration.VidAtPep();
    way.isRegistered = true;
    way.isOwnRegistration = registration.isOwn;
    way.sVid = registration.record.wSvid;
    way.relayCVid = registration.IsRelaySet() && IsVid(registration.record.wRelayCVid) ? vidAtPep : uint16_t{0};
    way.isRelayIgnored = registration.IsRelaySet() && way.relayCVid == 0;
    way.isUntaggedPep = registration.record.boUntaggedPep != 0;
    way.isUntaggedCep = registration.record.boUntaggedCep != 0;
    way.pep = PepOf(port, way.sVid);
    way.vlan = way.sVid;
    way.cVid = way.isUntaggedPep ? uint16_t{0} : vidAtPep;
    return way.pep == 0 ? Drop::kNoPep : Drop::kNone;
}

Drop EnterByQinQ(FrameWay& way, Port port, const Frame& frame)
{
    way.isQinQ = true;
    way.providerVid = ProviderVidOf(port);
    way.cVid = frame.vid; // what was the first tag is behind the provider's now
    way.vlan = IsVid(way.providerVid) ? way.providerVid : uint16_t{0};
    return way.vlan == 0 ? Drop::kNoProviderVid : Drop::kNone;
}

Drop EnterByVid(FrameWay& way, Port port, const Frame& frame)
{
    way.vlan = way.vid;
    way.cVid = frame.innerVid;
    if (way.isByPvid || !IsBridging()) {
        return Drop::kNone; // only the VID of a tag is translated
    }
    SwctVidTranslation record{};
    Swct_ReadVidTranslation({SWCT_CLASS_VID_TRANSLATION, port.slot, port.port, way.vid}, &record);
    way.isTranslated = record.wLocalVid != 0;
    way.relayVid = way.isTranslated ? record.wRelayVid : uint16_t{0};
    if (way.relayVid != 0) { // relay VID 0 is how the lookups say "none"
        way.vlan = IsVid(way.relayVid) ? way.relayVid : uint16_t{0};
    }
    return way.vlan == 0 ? Drop::kNoRelayVid : Drop::kNone;
}

// From the port to the VLAN.
Drop Enter(FrameWay& way, const Frame& frame, Admission admission)
{
    const auto& [slot, port] = frame.port;
    way.switchMode = Swct_GetSwitchMode();
    way.isPort = Swct_DoesSwitchPortExist(slot, port) != 0;
    if (!way.isPort) {
        return Drop::kNoPort;
    }
    way.isCep = IsCepInForce(frame.port);
    way.admissionValue = Swct_GetVlanFrameAdmit(slot, port);
    way.filteringValue = Swct_SwitchPort_GetIngressFiltering(slot, port);
    way.isByPvid = frame.vid == 0;
    way.vid = way.isByPvid ? static_cast<uint16_t>(Swct_SwitchPort_GetPvid(slot, port)) : frame.vid;
    if (frame.vid > SWCT_PB_VID_MAX || frame.innerVid > SWCT_PB_VID_MAX) {
        return Drop::kReservedVid;
    }
    if (!IsAdmitted(admission, !way.isByPvid)) {
        return Drop::kNotAdmitted;
    }
    if (IsQinQInForce(frame.port)) {
        return EnterByQinQ(way, frame.port, frame);
    }
    if (!IsVid(way.vid)) {
        return Drop::kNoPvid;
    }
    return way.isCep ? EnterByCep(way, frame.port) : EnterByVid(way, frame.port, frame);
}

} // namespace

FrameWay WayOf(const Frame& frame, Admission admission)
{
    FrameWay way;
    way.drop = Enter(way, frame, admission);
    if (way.vlan == 0 || way.drop != Drop::kNone) {
        return way;
    }
    way.isVlan = Swct_DoesVlanExist(way.vlan) != 0;
    way.membership = MembershipIn(way.vlan, frame.port);
    if (!way.isVlan) {
        way.drop = Drop::kNoVlan;
    } else if (way.membership == 0 && !way.isCep && way.filteringValue != kFilteringOff) {
        way.drop = Drop::kNoMember; // a customer edge port enters by its PEP
    } else {
        FindExits(way, frame.port);
        way.drop = way.exits.empty() ? Drop::kNoWayOut : Drop::kNone;
    }
    return way;
}

namespace {

struct DropNames {
    std::string_view step;
    std::string_view reason;
};

// [Drop]
constexpr std::array<DropNames, 12> kDropNames = {{{"", ""},
                                                   {"port", "no-port"},
                                                   {"tag", "reserved-vid"},
                                                   {"admission", "not-admitted"},
                                                   {"pvid", "no-pvid"},
                                                   {"registration", "no-registration"},
                                                   {"pep", "no-pep"},
                                                   {"translation", "no-relay-vid"},
                                                   {"qinq", "no-provider-vid"},
                                                   {"vlan", "no-vlan"},
                                                   {"ingress", "no-member"},
                                                   {"members", "no-way-out"}}};
static_assert(kDropNames.size() == static_cast<std::size_t>(Drop::kNoWayOut) + 1);

// [Tagging]
constexpr std::array<std::string_view, 4> kTaggingNames = {"tagged", "untagged", "by-cvid", "other"};

} // namespace

std::string_view StepOf(Drop drop)
{
    return kDropNames.at(static_cast<std::size_t>(drop)).step;
}

std::string_view NameOf(Drop drop)
{
    return kDropNames.at(static_cast<std::size_t>(drop)).reason;
}

std::string_view NameOf(Tagging tagging)
{
    return kTaggingNames.at(static_cast<std::size_t>(tagging));
}

} // namespace tool
