// consumer.cpp - creates a region, changes objects one by one, and walks them.
#include <iostream>
#include <swct/swct.h>

int main()
{
    Swct_Init();
    for (const unsigned vlanId : {7U, 300U, 4094U}) {
        SwctVlan sVlan{};
        sVlan.wVlanId = static_cast<uint16_t>(vlanId);
        Swct_CreateVlan(&sVlan);
        Swct_AddVlanPort(sVlan.wVlanId, 2, 5, SWCT_MEMBERSHIP_TAGGED);
    }
    unsigned sum = 0;
    SwctVlanPortMoid sMoid{SWCT_CLASS_VLAN_PORT, 0, 0, 0};
    while (const auto* pNext = Swct_GetNextVlanPort(&sMoid)) {
        sMoid = *pNext;
        sum += sMoid.wVlanId;
    }
    const bool isRight = sum == 7 + 300 + 4094 && Swct_GetNbrOfPopulatedVlans() == 3;
    std::cout << (isRight ? "C++20: region written and read\n" : "C++20: FAILED\n");
    return isRight ? 0 : 1;
}
