/* reader.c - a reader in C: attaches, walks the VLANs, and prints their member ports. */
#include <stdio.h>
#include <swct/swct.h>

static void PrintVlan(uint16_t wVlanId)
{
    SwctVlan sVlan;
    SwctPortList sPorts;
    Swct_ReadVlan((SwctVlanMoid){SWCT_CLASS_VLAN, wVlanId}, &sVlan);
    Swct_GetPortMembersOfVlan(wVlanId, &sPorts);
    printf("%4u %-10.80s", wVlanId, sVlan.acName);
    for (unsigned i = 0; i < sPorts.bNbrOfPorts; ++i) {
        const SwctPortListEntry sPort = sPorts.asPort[i];
        const SwctVlanPortMoid sMoid = {SWCT_CLASS_VLAN_PORT, wVlanId, sPort.bSlot, sPort.bPort};
        printf(" %u/%u%s", sPort.bSlot, sPort.bPort, Swct_IsVlanPortTagged(sMoid) ? "" : "(untagged)");
    }
    printf("%s\n", Swct_DoesVlanIfExist(wVlanId) ? " +interface" : "");
}

int main(void)
{
    Swct_Open();
    if (!Swct_IsAttachedForReading()) {
        fprintf(stderr, "reader: no region; run the process that creates it first\n");
        return 1;
    }
    printf("%.80s, %u VLANs\n", Swct_GetBridgeName(), Swct_GetNbrOfPopulatedVlans());
    const SwctVlanMoid sStart = {SWCT_CLASS_VLAN, 0};
    for (const SwctVlanMoid* pVlan = Swct_GetNextVlan(&sStart); pVlan != NULL; pVlan = Swct_GetNextVlan(pVlan)) {
        PrintVlan(pVlan->wVlanId);
    }
    return 0;
}
