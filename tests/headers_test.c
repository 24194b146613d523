/* headers_test.c - the interface as a C program sees it: records, and operations of libpiovios.so with the stand-in. */
#include <stddef.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

#include "platform/standin.h"
#include "swct/swct.h"

static int iFailures = 0;

#define CHECK(condition)                                                          \
    do {                                                                          \
        if (!(condition)) {                                                       \
            (void)fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
            ++iFailures;                                                          \
        }                                                                         \
    } while (0)

_Static_assert(sizeof(SwctVlanRecord) == 130 && offsetof(SwctVlanRecord, sBody.dwRowState) == 111, "VLAN record");
_Static_assert(sizeof(SwctSwitchPortRecord) == 32 && offsetof(SwctSwitchPortRecord, sBody.dwPbPortType) == 18,
               "switch-port record");
_Static_assert(sizeof(SwctVlanIfInnerTagRecord) == 35 && offsetof(SwctVlanIfInnerTagRecord, sBody.wInnerVlanId) == 24,
               "inner-tag record");
_Static_assert(offsetof(SwctVlanPortRecord, sBody.dwMembership) == 12, "VLAN-port record");
_Static_assert(offsetof(SwctSwitchAttributes, abL2cpMacDestTunnel) == 141, "switch record");
_Static_assert(_Alignof(SwctMembership) == 1, "membership values lie anywhere");

int main(void)
{
    char acPrefix[64];
    (void)snprintf(acPrefix, sizeof acPrefix, "headers-test-%ld-", (long)getpid());
    Standin__SetShmPrefix(acPrefix);
    Swct_Init();
    CHECK(Swct_IsAttachedForWriting() == 1);

    /* Moids are passed by value, so both compilers must agree on where they travel. */
    const SwctVlan sVlan = {.wVlanId = 4095, .acName = "from C", .dwVlanIf = 1};
    SwctVlan sRead;
    memset(&sRead, 0, sizeof sRead);
    Swct_CreateVlan(&sVlan);
    Swct_ReadVlan((SwctVlanMoid){SWCT_CLASS_VLAN, 4095}, &sRead);
    CHECK(sRead.wVlanId == 4095 && strcmp(sRead.acName, "from C") == 0);
    const SwctVlanPortMoid sMoid = {SWCT_CLASS_VLAN_PORT, 4095, 3, 5};
    const SwctVlanPortAttributes sMember = {.dwMembership = SWCT_MEMBERSHIP_TAGGED};
    Swct_UpdateVlanPort(&sMember, sMoid);
    CHECK(Swct_IsVlanPortTagged(sMoid) == 1 && *Swct_GetVlanPortRPtr(4095, 3, 5) == SWCT_MEMBERSHIP_TAGGED);
    const SwctSwitchPort sCep = {.dwL2PortType = 1, .dwPbPortType = SWCT_PB_PORT_CEP};
    const SwctProviderEdgePort sPep = {.wSvid = 7};
    Swct_CreateSwitchPort(3, 5, &sCep);
    Swct_CreateProviderEdgePort((SwctProviderEdgePortMoid){SWCT_CLASS_PROVIDER_EDGE_PORT, 3, 5, 16}, &sPep);
    SwctServicePriorityRegenerationMoid sPriority = {SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, 3, 5, 16, 8};
    CHECK(Swct_DoesServicePriorityRegenerationExist(sPriority) == 1);
    sPriority.wPepIndex = 15;
    CHECK(Swct_DoesServicePriorityRegenerationExist(sPriority) == 0);
    const SwctVlanMoid sTerminator = {0, 0};
    CHECK(Swct_SetConfig(SWCT_CLASS_VLAN, &sTerminator) == 0 && Swct_GetNbrOfPopulatedVlans() == 0);
    CHECK(sTmpL3MacAddress.abByte[0] == 0);

    CHECK(Standin__RemoveShm("/swct-data") != 0);
    return iFailures != 0;
}
