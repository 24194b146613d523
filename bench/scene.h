// scene.h - what is measured on: configurations of a full node, as requests for the library and as rows for the stores.
//
// Every configuration comes in three shapes.  Regular data has a short period, so that a branch predictor never misses:
// a shape that flatters.  Random data has the same size and no period.  Sparse data is random with one object in
// sixteen.  A scene has two configurations of its shape, for writers that push now the one and now the other.
#pragma once

#include <cstdint>
#include <vector>

enum class Shape { kRegular, kRandom, kSparse };
inline constexpr const char* kShapeNames[] = {"regular", "random", "sparse"};

struct PortKey {
    uint8_t bSlot;
    uint8_t bPort;
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

// Keys of one question, drawn without an order.
struct Key {
    uint8_t bSlot;
    uint8_t bPort;
    uint16_t wVid;
    uint16_t wSvid; // of a provider edge port, if the port has it
};

// The two layouts of the provider-bridge data exclude each other: customer edge ports with registrations, or network
// ports with translations.
struct Scene {
    Shape eShape;
    bool boNetworkPorts;
    std::vector<ClassData> aClass;
    std::vector<ClassData> aOther; // the second configuration: a part of the objects is gone, others have other values
    std::vector<Key> aKey;

    const ClassData* Find(uint16_t wClass) const;
};

inline constexpr PortKey kPort{1, 3};          // the port of questions about one port
inline constexpr PortKey kPortOfNoVlan{3, 4};  // member of no VLAN
inline constexpr PortKey kPortOfOneVlan{3, 5}; // member of VLAN 4094 only; only its last record has kLastVid
inline constexpr uint16_t kUnusedVid = 4093;   // S-VID and relay VID of no object
inline constexpr uint16_t kLastVid = 4001;     // S-VID and relay VID of the last record of the last port
inline constexpr uint16_t kRareVid = 4002;     // ... of the last record of every other port
inline constexpr uint16_t kPairVid = 4003;     // ... of the first and the last but one record of every port
inline constexpr uint16_t kDefaultVid = 4004;  // S-VID of what is not registered

constexpr uint32_t PortField(PortKey sPort) noexcept
{
    return uint32_t{sPort.bSlot} << 8 | sPort.bPort;
}

constexpr uint32_t ObjectKey(PortKey sPort, uint32_t dwKey) noexcept
{
    return PortField(sPort) << 16 | dwKey;
}

// The classes and keys, without a region.
Scene MakeScene(Shape eShape, bool boNetworkPorts);
