/* consumer.c - creates a region, configures it as a CDBM would, and asks. */
#include <stdio.h>
#include <swct/swct.h>

int main(void)
{
    static const SwctVlanRecord kVlans[2] = {{{SWCT_CLASS_VLAN, 100}, {.wVlanId = 100, .acName = "c"}}};
    SwctVlanRecord asBack[2] = {{.sMoid = {0, 0}}};
    /* Moids are passed by value, so both compilers must agree on where they travel. */
    const SwctServicePriorityRegenerationMoid sPriority = {SWCT_CLASS_SERVICE_PRIORITY_REGENERATION, 3, 5, 16, 8};
    const SwctSwitchPort sCep = {.dwL2PortType = 1, .dwPbPortType = SWCT_PB_PORT_CEP};
    const SwctProviderEdgePort sPep = {.wSvid = 7};
    Swct_Init();
    Swct_CreateSwitchPort(3, 5, &sCep);
    Swct_CreateProviderEdgePort((SwctProviderEdgePortMoid){SWCT_CLASS_PROVIDER_EDGE_PORT, 3, 5, 16}, &sPep);
    const int boOk = Swct_IsAttachedForWriting() && Swct_SetConfig(SWCT_CLASS_VLAN, kVlans) == 0 &&
                     Swct_GetConfig(SWCT_CLASS_VLAN, asBack, 1) == 0 && asBack[0].sMoid.wVlanId == 100 &&
                     Swct_DoesServicePriorityRegenerationExist(sPriority) && Swct_DoesVlanExist(100) &&
                     !Swct_DoesVlanExist(101) && sTmpL3MacAddress.abByte[0] == 0;
    puts(boOk ? "C11: region written and read" : "C11: FAILED");
    return !boOk;
}
