// cdbm_example.cpp - sends the bytes that docs/cdbm.md shows, and expects them back.
//
//   cdbm-example docs/cdbm.md
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "platform/standin.h"
#include "swct/swct.h"

namespace {

std::vector<uint8_t> ReadBytes(std::istream& document)
{
    std::vector<uint8_t> abBytes;
    std::string line;
    while (std::getline(document, line) && line != "```hex") {
    }
    while (std::getline(document, line) && line != "```") {
        std::istringstream words(line.substr(0, line.find('#')));
        for (unsigned value; words >> std::hex >> value;) {
            abBytes.push_back(static_cast<uint8_t>(value));
        }
    }
    return abBytes;
}

} // namespace

int main(int argc, char** argv)
{
    std::ifstream document(argc == 2 ? argv[1] : "");
    const std::vector<uint8_t> abSent = ReadBytes(document);
    SwctVlan sVlan{};
    sVlan.wVlanId = 100;
    std::vector<uint8_t> abBack(abSent.size(), 0xAA);
    Swct_Init();
    Swct_CreateVlan(&sVlan);
    const bool isRight = abSent.size() == 2 * sizeof(SwctVlanPortRecord) + sizeof(SwctVlanPortMoid) &&
                         Swct_SetConfig(SWCT_CLASS_VLAN_PORT, abSent.data()) == 0 &&
                         Swct_IsVlanPortTagged({SWCT_CLASS_VLAN_PORT, 100, 1, 1}) == 1 &&
                         Swct_IsPortMemberOfVlanId(1, 3, 100) == 1 &&
                         Swct_GetConfig(SWCT_CLASS_VLAN_PORT, abBack.data(), 3) == 0 && abBack == abSent;
    Standin__RemoveShm("/swct-data");
    if (!isRight) {
        std::fprintf(stderr, "the example in bytes of docs/cdbm.md does not hold\n");
    }
    return isRight ? 0 : 1;
}
