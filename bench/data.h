// data.h - what is measured on: the classes at their full size, as requests for the library and as rows for the stores.
#pragma once

#include <cstdint>
#include <vector>

// The two layouts of the provider-bridge data exclude each other.
enum class Scene {
    kQuestions,    // 4094 VLANs, 24,564 memberships, 15 customer edge ports with 61,410 registrations, full rings
    kFullClasses,  // the same with 61,410 memberships
    kNetworkPorts, // 15 network ports with 61,410 translations
};

// A record for a store: its keys in one word, the value of a secondary index (0 without one), the body.
struct Row {
    uint32_t dwKey;
    uint32_t dwIndex;
    const uint8_t* pBody;
};

struct ClassData {
    uint16_t wClass;
    std::size_t moidSize;
    std::size_t bodySize;
    std::vector<uint8_t> abRequest; // records and a terminator
    std::vector<Row> aRow;          // ascending keys
};

// A port that is a member of no VLAN, of one, of all.
struct PortKey {
    uint8_t bSlot;
    uint8_t bPort;
};
inline constexpr PortKey kPortOfNoVlan{3, 4};
inline constexpr PortKey kPortOfOneVlan{3, 5};
inline constexpr PortKey kPortOfAllVlans{1, 3};

inline constexpr uint16_t kUnusedVid = 4093; // S-VID and relay VID of no object

constexpr uint32_t PortField(PortKey sPort) noexcept
{
    return uint32_t{sPort.bSlot} << 8 | sPort.bPort;
}

constexpr uint32_t ObjectKey(PortKey sPort, uint32_t dwKey) noexcept
{
    return PortField(sPort) << 16 | dwKey;
}

// The S-VID to which a C-VID is registered: that of one of 16 provider edge ports.
constexpr uint16_t SvidOf(unsigned vid) noexcept
{
    return static_cast<uint16_t>(200 + 200 * (vid % 16));
}

// Fills the region through the library and returns the same as classes; the history comes last.
std::vector<ClassData> BuildScene(Scene eScene);
