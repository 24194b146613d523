// A class is rewritten under its readers: whatever field they read is that of the one configuration or of the other.
//   hitless [--seconds N]     how long each class is pushed; a quarter of a second by default
#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "platform/standin.h"
#include "region/region_layout.h"
#include "swct/swct.h"

namespace {

double seconds = 0.25;

struct Field {
    std::size_t offset;
    std::size_t size;
};

// The fields of a record that lies at 'base': single values, entries of u16 and u32 arrays, else bytes.
void AddFields(std::vector<Field>& fields, std::size_t base, const std::string& record)
{
    for (const LayoutRecord& sRecord : kLayout) {
        for (std::size_t i = 0; sRecord.pName == record && i < sRecord.nbrOfRows; ++i) {
            const LayoutRow& sRow = sRecord.pRows[i];
            const std::string row = sRow.pName;
            const std::string name = row.substr(row.rfind('.') + 1);
            const bool boIsTable =
                name[0] == 'a' && std::isupper(static_cast<unsigned char>(name[1])) != 0; // has rows of its own
            const std::size_t entry = name.starts_with("aw")                      ? 2
                                      : name.starts_with("adw") || sRow.size == 4 ? 4
                                      : sRow.size == 2                            ? 2
                                                                                  : 1;
            for (std::size_t at = 0; !boIsTable && at < sRow.size; at += entry) {
                fields.push_back({base + sRow.offset + at, entry});
            }
        }
    }
}

std::size_t PortData(unsigned port)
{
    return offsetof(SwctData, sPbData) + port * sizeof(SwctPbData);
}

// What a push of a class may change.
std::vector<Field> FieldsOf(uint16_t wClass)
{
    std::vector<Field> fields;
    for (unsigned i = 0; (wClass == 205 || wClass == 206) && i < SWCT_VLAN_MAX; ++i) {
        AddFields(fields, offsetof(SwctData, sVlan) + i * sizeof(SwctVlanEntry), "SwctVlanEntry");
    }
    if (wClass == 205) {
        fields.push_back({offsetof(SwctData, wNbrOfPopulatedVlans), 2});
    }
    for (unsigned port = 0; port < 15; ++port) {
        if (wClass == 177) {
            AddFields(fields, offsetof(SwctData, sSwitchPort) + port * sizeof(SwctSwitchPort), "SwctSwitchPort");
        } else if (wClass == 514) {
            AddFields(fields, offsetof(SwctData, sQinQPort) + port * sizeof(SwctQinQPort), "SwctQinQPort");
        } else if (wClass == 437) {
            AddFields(fields, PortData(port), "SwctNetworkPortData");
            for (unsigned i = 0; i < SWCT_PB_VID_MAX; ++i) {
                AddFields(fields, PortData(port) + i * sizeof(SwctVidTranslation), "SwctVidTranslation");
            }
        } else if (wClass == 369 || wClass == 469 || wClass == 538) {
            AddFields(fields, PortData(port), "SwctCepData");
            AddFields(fields, PortData(port) + offsetof(SwctCepData, sDefaultCVidRegistration),
                      "SwctDefaultCVidRegistration");
            for (unsigned i = 0; i < SWCT_PEP_MAX; ++i) {
                AddFields(fields,
                          PortData(port) + offsetof(SwctCepData, aProviderEdgePort) + i * sizeof(SwctProviderEdgePort),
                          "SwctProviderEdgePort");
            }
            for (unsigned i = 0; wClass == 369 && i < SWCT_PB_VID_MAX; ++i) {
                AddFields(fields, PortData(port) + i * sizeof(SwctCVidRegistration), "SwctCVidRegistration");
            }
        }
    }
    return fields;
}

std::mt19937 theRandom(369); // NOLINT(cert-msc32-c,cert-msc51-cpp): each run the same

// Records of a class in key order, each key with a probability, the body at random; keys as wide as the class has them.
template <class Record, class SetKey>
std::vector<uint8_t> Request(uint16_t wClass, unsigned keys, unsigned percent, SetKey setKey)
{
    std::vector<uint8_t> request;
    for (unsigned key = 0; key < keys; ++key) {
        Record sRecord;
        for (std::size_t i = 0; i < sizeof sRecord; ++i) {
            reinterpret_cast<uint8_t*>(&sRecord)[i] = static_cast<uint8_t>(theRandom());
        }
        sRecord.sMoid.wClassId = wClass;
        setKey(sRecord, key);
        if (theRandom() % 100 < percent) {
            request.insert(request.end(), reinterpret_cast<uint8_t*>(&sRecord),
                           reinterpret_cast<uint8_t*>(&sRecord + 1));
        }
    }
    request.insert(request.end(), 16, 0);
    return request;
}

constexpr auto kSetPort = [](auto& sRecord, unsigned port) {
    sRecord.sMoid.bSlot = static_cast<uint8_t>(port / 5 + 1);
    sRecord.sMoid.bPort = static_cast<uint8_t>(port % 5 + 1);
};

uint16_t RandomSvid()
{
    return static_cast<uint16_t>(100 + theRandom() % 24);
}

// Of another type the records of a port would be counted again with each push.
std::vector<uint8_t> AllPorts(uint32_t dwPbPortType)
{
    return Request<SwctSwitchPortRecord>(177, 15, 100, [dwPbPortType](auto& sRecord, unsigned key) {
        kSetPort(sRecord, key);
        sRecord.sBody.dwPbPortType = dwPbPortType;
    });
}

std::vector<uint8_t> RequestOf(uint16_t wClass)
{
    switch (wClass) {
    case 177:
        return Request<SwctSwitchPortRecord>(177, 15, 80, kSetPort);
    case 205:
        return Request<SwctVlanRecord>(205, 4095, 80, [](auto& sRecord, unsigned key) {
            sRecord.sMoid.wVlanId = static_cast<uint16_t>(key + 1);
            sRecord.sBody.wVlanId = static_cast<uint16_t>(key + 1);
        });
    case 206:
        return Request<SwctVlanPortRecord>(206, 15 * 4095, 60, [](auto& sRecord, unsigned key) {
            kSetPort(sRecord, key % 15);
            sRecord.sMoid.wVlanId = static_cast<uint16_t>(key / 15 + 1);
            sRecord.sBody.dwMembership = theRandom() % 2 + 1;
        });
    case 369:
        return Request<SwctCVidRegistrationRecord>(369, 15 * 4094, 70, [](auto& sRecord, unsigned key) {
            kSetPort(sRecord, key / 4094);
            sRecord.sMoid.wCVid = sRecord.sBody.wCVid = static_cast<uint16_t>(key % 4094 + 1);
            sRecord.sBody.wSvid = RandomSvid();
        });
    case 437:
        return Request<SwctVidTranslationRecord>(437, 15 * 4094, 70, [](auto& sRecord, unsigned key) {
            kSetPort(sRecord, key / 4094);
            sRecord.sMoid.wLocalVid = sRecord.sBody.wLocalVid = static_cast<uint16_t>(key % 4094 + 1);
            sRecord.sBody.wRelayVid = static_cast<uint16_t>(theRandom() % 4095);
            sRecord.sBody.dwStatus = static_cast<uint32_t>(theRandom() % 3);
        });
    case 469:
        return Request<SwctProviderEdgePortRecord>(469, 15 * 16, 80, [](auto& sRecord, unsigned key) {
            kSetPort(sRecord, key / 16);
            sRecord.sMoid.wPepIndex = static_cast<uint16_t>(key % 16 + 1);
            sRecord.sBody.wSvid = RandomSvid();
        });
    case 514:
        return Request<SwctQinQPortRecord>(514, 15, 80, kSetPort);
    default:
        return Request<SwctDefaultCVidRegistrationRecord>(538, 15, 80, kSetPort);
    }
}

class HitlessTest : public testing::TestWithParam<uint16_t> {
protected:
    HitlessTest()
    {
        Standin__SetShmPrefix(("hitless-" + std::to_string(getpid()) + "-").c_str());
        Swct_Init();
    }
    ~HitlessTest() override
    {
        Standin__RemoveShm("/swct-data");
    }
};

TEST_P(HitlessTest, EveryFieldIsOldOrNew)
{
    const uint16_t wClass = GetParam();
    const uint32_t dwType = wClass == 437 ? SWCT_PB_PORT_PNP : SWCT_PB_PORT_CEP;
    Swct_SetConfig(177, AllPorts(dwType).data());
    if (wClass == 369) {
        Swct_SetConfig(469, RequestOf(469).data());
    }
    const auto* pRegion = reinterpret_cast<const uint8_t*>(Swct_GetVlanEntryRPtr(1)) - offsetof(SwctData, sVlan);
    const std::vector<uint8_t> requests[2] = {RequestOf(wClass), RequestOf(wClass)};
    std::vector<uint8_t> images[2];
    for (const unsigned i : {0U, 1U, 0U, 1U}) {
        Swct_SetConfig(wClass, requests[i].data());
        images[i].assign(pRegion, pRegion + sizeof(SwctData));
    }

    const pid_t iWriter = fork();
    if (iWriter == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (unsigned i = 0;; ++i) {
            Swct_SetConfig(wClass, requests[i % 2].data());
        }
    }
    const std::vector<Field> fields = FieldsOf(wClass);
    uint64_t reads = 0;
    uint64_t faults = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (std::chrono::steady_clock::now() < end) {
        for (std::size_t i = theRandom() % fields.size(), n = 0; n < 20000; i = (i + 1) % fields.size(), ++n) {
            const auto [offset, size] = fields[i];
            if (offset % 32 + size > 32) {
                continue; // the machine stores such a field in two pieces
            }
            uint32_t dwRead = 0;
            switch (size) { // one load
            case 1:
                dwRead = *static_cast<const volatile uint8_t*>(pRegion + offset);
                break;
            case 2: {
                uint16_t wRead = 0;
                std::memcpy(&wRead, pRegion + offset, sizeof wRead);
                dwRead = wRead;
                break;
            }
            default:
                std::memcpy(&dwRead, pRegion + offset, sizeof dwRead);
            }
            ++reads;
            if (std::memcmp(&dwRead, &images[0][offset], size) != 0 &&
                std::memcmp(&dwRead, &images[1][offset], size) != 0 && ++faults <= 3) {
                ADD_FAILURE() << "class " << wClass << ", offset " << offset << ", " << size << " bytes: " << dwRead;
            }
        }
    }
    kill(iWriter, SIGKILL);
    waitpid(iWriter, nullptr, 0);
    EXPECT_EQ(faults, 0U);
    std::printf("| class %u pushed | %.1f million reads of %zu fields, each old or new |\n", wClass,
                static_cast<double>(reads) / 1e6, fields.size());
}

INSTANTIATE_TEST_SUITE_P(Classes, HitlessTest, testing::Values(177, 205, 206, 369, 437, 469, 514, 538),
                         testing::PrintToStringParamName());

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (argc == 3 && std::string(argv[1]) == "--seconds") {
        seconds = std::atof(argv[2]);
    }
    return RUN_ALL_TESTS();
}
