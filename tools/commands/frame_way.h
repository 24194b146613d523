// frame_way.h - what the tables decide about a frame: the VLAN that it belongs to and the ports that it leaves by, or
// the step at which it ends.  docs/tool.md has the rules.  Only decisions: explain.cpp has the words for them.
#pragma once

#include "objects/keys.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tool {

// A frame as the port receives it.  VIDs are 1 to 4095.
struct Frame {
    Port port;
    uint16_t vid = 0;      // of the first tag; 0: no tag
    uint16_t innerVid = 0; // of the tag behind it; 0: not known, or none
};

// Which frames a port admits.  The region has a number for it; what the number means, only the site can say.
enum class Admission { kNotKnown, kAll, kOnlyTagged, kOnlyUntagged };

// Why a frame ends.
enum class Drop {
    kNone,
    kNoPort,         // the port does not exist
    kReservedVid,    // no tag has VID 4095
    kNotAdmitted,    // frame admission
    kNoPvid,         // an untagged frame on a port whose PVID is none
    kNoRegistration, // the C-VID is not registered and the port has no default registration
    kNoPep,          // no provider edge port for the S-VID
    kNoRelayVid,     // the VID is translated to what is no VID
    kNoProviderVid,  // QinQ is enabled with provider VID none
    kNoVlan,         // the VLAN does not exist
    kNoMember,       // ingress filtering: the port is no member of the VLAN
    kNoWayOut        // no other port carries the VLAN
};

// Whether a frame leaves with the tag of its VLAN; on a customer edge port, with that of its C-VLAN.
enum class Tagging { kTagged, kUntagged, kByCVid, kOther };

struct Exit {
    Port port;
    Tagging tagging = Tagging::kTagged;
    uint16_t vid = 0;       // in that tag; 0: no tag, or it depends on the C-VID
    uint16_t innerVid = 0;  // of the customer's tag behind it, or of the first tag when it is untagged; 0: not known
    uint16_t pep = 0;       // of a customer edge port
    uint16_t cVids = 0;     // of a customer edge port: C-VIDs that the frame may belong to there
    uint16_t localVids = 0; // translations of the port to this VLAN; 'vid' is the lowest
    bool isOuterTagOff = false; // a QinQ port takes its provider tag off
    bool isMember = true;       // of the VLAN, in the membership table
};

// A port that the VLAN's tables name and that the frame does not reach.
struct Missed {
    Port port;
    Drop why = Drop::kNone; // kNoPort, kNoPep, kNoRegistration
};

struct FrameWay {
    uint32_t switchMode = 0;
    bool isPort = false;
    bool isCep = false; // in force: the port's VIDs are C-VIDs
    uint32_t admissionValue = 0;
    uint32_t filteringValue = 0;
    bool isByPvid = false; // an untagged frame
    uint16_t vid = 0;      // of the tag or the PVID, as the port reads it

    bool isRegistered = false;      // of a customer edge port
    bool isOwnRegistration = false; // else the default one
    uint16_t sVid = 0;
    uint16_t pep = 0;
    bool isUntaggedPep = false;
    bool isUntaggedCep = false;
    uint16_t relayCVid = 0;      // in force; 0: none
    bool isRelayIgnored = false; // one is set whose VID no tag can have

    bool isTranslated = false; // of a network port; also when the relay VID is no VID
    uint16_t relayVid = 0;

    bool isQinQ = false;
    uint16_t providerVid = 0;

    uint16_t vlan = 0; // that the node relays it in; 0: it did not come so far
    uint16_t cVid = 0; // of the tag behind the VLAN's; 0: not known, or none
    bool isVlan = false;
    uint32_t membership = 0; // of the port in the VLAN
    std::vector<Exit> exits;
    std::vector<Missed> missed;
    Drop drop = Drop::kNone; // kNone: carried
};

// Needs the read view.
FrameWay WayOf(const Frame& frame, Admission admission);

// The step and the reason as programs read them: "registration", "no-registration".
std::string_view StepOf(Drop drop);
std::string_view NameOf(Drop drop);
std::string_view NameOf(Tagging tagging);

} // namespace tool
