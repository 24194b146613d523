// bridge_fixture.h - a region in switch mode 1, short ways to fill its ports, and the batteries that every table of
// questions and changes keyed by slot, port and one more key has to pass.
#pragma once

#include <gmock/gmock.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "support/platform.h"
#include "swct/swct.h"

using Bytes = std::initializer_list<uint8_t>;
using Vids = std::initializer_list<uint16_t>;

// What of a port an operation asks for before it looks at the port's tables.
enum class Needs {
    kNothing,
    kStored,   // the stored provider-bridge type, whether or not the port exists
    kExisting, // a port of the type
    kManaged,  // and switch mode 1
};

// One operation, its keys left open.  'wKey' serves as C-VID, S-VID, local VID, PEP index and priority at once.
struct KeyedCall {
    const char* pName;
    Needs eNeeds;
    bool boHasKey;   // takes 'wKey'
    uint64_t absent; // the answer to a bad key
    uint64_t (*call)(uint8_t bSlot, uint8_t bPort, uint16_t wKey);
};
#define CALL(needs, hasKey, absent, ...)                                           \
    KeyedCall                                                                      \
    {                                                                              \
#__VA_ARGS__, Needs::needs, hasKey, absent,                                \
            []([[maybe_unused]] uint8_t bSlot, [[maybe_unused]] uint8_t bPort,     \
               [[maybe_unused]] uint16_t wKey) -> uint64_t { return __VA_ARGS__; } \
    }
#define ASK(needs, absent, ...) CALL(needs, true, absent, __VA_ARGS__)
#define ASK_PORT(needs, absent, ...) CALL(needs, false, absent, __VA_ARGS__)
#define CHANGE(needs, ...) CALL(needs, true, 0, (__VA_ARGS__, 0))
#define CHANGE_PORT(needs, ...) CALL(needs, false, 0, (__VA_ARGS__, 0))
// The first 16 bits of a caller's record 'p' that an operation may have filled.
#define FILL(Record, ...) FirstWord<Record>([=](Record* p) { __VA_ARGS__; })

constexpr uint16_t kKey = 5; // the key under which a good port holds everything
constexpr uint16_t kUntouched = 0xEEEE;
constexpr uint16_t kBadKeys[] = {0, 4095, 4096, 65535};

template <class Record, class Fill>
uint16_t FirstWord(Fill fill)
{
    Record sRecord;
    std::memset(&sRecord, 0xEE, sizeof sRecord);
    fill(nullptr); // does nothing
    fill(&sRecord);
    uint16_t wFirst;
    std::memcpy(&wFirst, &sRecord, sizeof wFirst);
    return wFirst;
}

// "class:slot/port" and the further keys; "null".
template <class Moid>
std::string Text(const Moid* pMoid)
{
    if (pMoid == nullptr) {
        return "null";
    }
    std::string text =
        std::to_string(pMoid->wClassId) + ":" + std::to_string(pMoid->bSlot) + "/" + std::to_string(pMoid->bPort);
    const auto append = [&text](uint32_t dwKey) { text += "/" + std::to_string(dwKey); };
    if constexpr (requires { pMoid->wCVid; }) {
        append(pMoid->wCVid);
    } else if constexpr (requires { pMoid->wLocalVid; }) {
        append(pMoid->wLocalVid);
    } else if constexpr (requires { pMoid->wPepIndex; }) {
        append(pMoid->wPepIndex);
    }
    if constexpr (requires { pMoid->dwPriority; }) {
        append(pMoid->dwPriority);
    }
    return text;
}

// What an iterator hands out from a start on; cut off when it does not end.
template <class Moid, class Iterator>
std::vector<std::string> Walk(Iterator next, Moid sStart)
{
    std::vector<std::string> found;
    for (const Moid* pMoid = next(&sStart); pMoid != nullptr && found.size() < 200; pMoid = next(pMoid)) {
        found.push_back(Text(pMoid));
    }
    return found;
}

// The same sequence in every run, so that a failure can be repeated.
inline std::mt19937 FixedRandom()
{
    return std::mt19937(4711); // NOLINT(cert-msc32-c,cert-msc51-cpp)
}

// A caller's VLAN bitmap, and room behind it that has to stay zero.
struct Bitmap {
    explicit Bitmap(uint8_t bFill)
    {
        std::memset(abBits, bFill, SWCT_VLAN_BITMAP_SIZE);
    }
    std::vector<unsigned> Bits() const
    {
        std::vector<unsigned> bits;
        for (unsigned bit = 0; bit < 8 * sizeof abBits; ++bit) {
            if ((abBits[bit / 8] >> bit % 8 & 1) != 0) {
                bits.push_back(bit);
            }
        }
        return bits;
    }
    uint8_t abBits[SWCT_VLAN_BITMAP_SIZE + 16] = {};
};

class BridgeTest : public testing::Test {
protected:
    void SetUp() override
    {
        thePlatform.Reset();
        Swct_CdbmOpen();
        Swct_Switch_SetSwitchMode(SWCT_SWITCH_MODE_PROVIDER_BRIDGE);
    }
    static void AddPort(uint8_t bSlot, uint8_t bPort, uint32_t dwPbPortType, uint32_t dwIngressFiltering = 0)
    {
        const SwctSwitchPort sPort{1, 0, dwIngressFiltering, 1, dwPbPortType, {}, 0};
        Swct_CreateSwitchPort(bSlot, bPort, &sPort);
    }
    static void AddPep(uint8_t bSlot, uint8_t bPort, uint16_t wPepIndex, uint16_t wSvid)
    {
        const SwctProviderEdgePort sRecord{wSvid, {}};
        Swct_CreateProviderEdgePort({SWCT_CLASS_PROVIDER_EDGE_PORT, bSlot, bPort, wPepIndex}, &sRecord);
    }
    static void Register(uint8_t bSlot, uint8_t bPort, uint16_t wCVid, uint16_t wSvid, uint16_t wRelayCVid = 0)
    {
        const SwctCVidRegistration sRecord{wCVid, wSvid, 0, 0, wRelayCVid, wRelayCVid != 0, {}};
        Swct_CreateCVidRegistration({SWCT_CLASS_CVID_REGISTRATION, bSlot, bPort, wCVid}, &sRecord);
    }
    static void SetDefault(uint8_t bSlot, uint8_t bPort, uint16_t wSvid, uint8_t boUntaggedPep = 0)
    {
        const SwctDefaultCVidRegistration sRecord{wSvid, boUntaggedPep};
        Swct_CreateDefaultCVidRegistration({SWCT_CLASS_DEFAULT_CVID_REGISTRATION, bSlot, bPort}, &sRecord);
    }
    static void Translate(uint8_t bSlot, uint8_t bPort, uint16_t wLocalVid, uint16_t wRelayVid, uint32_t dwStatus = 3)
    {
        const SwctVidTranslation sRecord{wLocalVid, wRelayVid, {}, dwStatus};
        Swct_CreateVidTranslation({SWCT_CLASS_VID_TRANSLATION, bSlot, bPort, wLocalVid}, &sRecord);
    }
    static SwctCepData& Cep(uint8_t bSlot, uint8_t bPort)
    {
        return Swct_GetPbDataWPtr(bSlot, bPort)->sCep;
    }
    static std::string Region()
    {
        return {reinterpret_cast<const char*>(thePlatform.pRegion), sizeof(SwctData)};
    }
    static void RestoreRegion(const std::string& region)
    {
        std::memcpy(static_cast<void*>(thePlatform.pRegion), region.data(), region.size());
    }

    // The same port, hidden step by step: in another switch mode, then no port, then of no type.
    template <class IsThere>
    static void CheckNeeds(const KeyedCall& call, uint8_t bSlot, uint8_t bPort, IsThere isThere)
    {
        const std::string good = Region();
        SwctSwitchPort& sPort = *Swct_GetSwitchPortWPtr(bSlot, bPort);
        Swct_Switch_SetSwitchMode(Swct_GetSwitchMode() % 2 + 1);
        EXPECT_EQ(isThere(), call.eNeeds < Needs::kManaged) << call.pName << " in another switch mode";
        sPort.dwL2PortType = 0;
        EXPECT_EQ(isThere(), call.eNeeds < Needs::kExisting) << call.pName << " without a port";
        sPort.dwPbPortType = 4;
        EXPECT_EQ(isThere(), call.eNeeds < Needs::kStored) << call.pName << " on a port of another type";
        RestoreRegion(good);
    }

    // Asked about 'kKey' of a good port the answer is there; about a bad port, or without a view, it is absent; any key
    // may be asked about.
    template <std::size_t kCalls>
    static void CheckQuestions(const KeyedCall (&calls)[kCalls], uint8_t bSlot, uint8_t bPort)
    {
        for (const KeyedCall& call : calls) {
            EXPECT_NE(call.call(bSlot, bPort, kKey), call.absent) << call.pName;
            for (const auto& [bBadSlot, bBadPort] : kBadPorts) {
                EXPECT_EQ(call.call(bBadSlot, bBadPort, kKey), call.absent) << call.pName << " with a bad port";
            }
            for (const uint16_t wKey : kBadKeys) {
                const uint64_t answer = call.call(bSlot, bPort, wKey);
                EXPECT_TRUE(!call.boHasKey || answer == call.absent) << call.pName << " with the bad key " << wKey;
            }
            CheckNeeds(call, bSlot, bPort, [&] { return call.call(bSlot, bPort, kKey) != call.absent; });
        }
        thePlatform.Reset(0xFF);
        for (const KeyedCall& call : calls) {
            EXPECT_EQ(call.call(bSlot, bPort, kKey), call.absent) << call.pName << " without a view";
        }
    }

    // A change of 'kKey' on a good port changes the region; with a bad port or key none does.
    template <std::size_t kCalls>
    static void CheckChanges(const KeyedCall (&calls)[kCalls], uint8_t bSlot, uint8_t bPort)
    {
        const std::string before = Region();
        for (const KeyedCall& call : calls) {
            for (const auto& [bBadSlot, bBadPort] : kBadPorts) {
                call.call(bBadSlot, bBadPort, kKey);
            }
            for (const uint16_t wKey : kBadKeys) {
                call.boHasKey ? call.call(bSlot, bPort, wKey) : 0;
            }
            EXPECT_TRUE(Region() == before) << call.pName << " with a bad key";
            call.call(bSlot, bPort, kKey);
            EXPECT_TRUE(Region() != before) << call.pName;
            RestoreRegion(before);
            CheckNeeds(call, bSlot, bPort, [&] {
                const std::string hidden = Region();
                call.call(bSlot, bPort, kKey);
                const bool isChanged = Region() != hidden;
                RestoreRegion(hidden); // a second time it would change nothing
                return isChanged;
            });
        }
    }

private:
    static constexpr std::pair<uint8_t, uint8_t> kBadPorts[] = {{0, 1}, {4, 1}, {255, 1}, {1, 0}, {1, 6}, {1, 255}};
};
