/* cdbm.c - a configuration database manager: it pushes whole classes into the region, then changes one of them.
 *
 * The node is a provider bridge: port 1/1 is an uplink (PNP), port 1/3 a customer's port (CEP) whose VLANs 10 and 20
 * travel in the service VLANs 100 and 200.  Every request ends with a record of zeros. */
#include <stdio.h>
#include <string.h>
#include <swct/swct.h>

static const SwctSwitchPortRecord kPorts[] = {
    {{SWCT_CLASS_SWITCH_PORT, 1, 1}, {.wPvid = 1, .dwL2PortType = 1, .dwPbPortType = SWCT_PB_PORT_PNP}},
    {{SWCT_CLASS_SWITCH_PORT, 1, 3}, {.wPvid = 100, .dwL2PortType = 1, .dwPbPortType = SWCT_PB_PORT_CEP}},
    {.sMoid = {0, 0, 0}}};

static const SwctVlanRecord kVlans[] = {
    {{SWCT_CLASS_VLAN, 100}, {.wVlanId = 100, .acName = "internet", .dwRowState = 1}},
    {{SWCT_CLASS_VLAN, 200}, {.wVlanId = 200, .acName = "voice", .dwRowState = 1, .dwVlanIf = 1}},
    {.sMoid = {0, 0}}};

static const SwctVlanPortRecord kMembers[] = {{{SWCT_CLASS_VLAN_PORT, 100, 1, 1}, {1, 1, 1, SWCT_MEMBERSHIP_TAGGED}},
                                              {{SWCT_CLASS_VLAN_PORT, 100, 1, 3}, {1, 3, 1, SWCT_MEMBERSHIP_UNTAGGED}},
                                              {{SWCT_CLASS_VLAN_PORT, 200, 1, 1}, {1, 1, 1, SWCT_MEMBERSHIP_TAGGED}},
                                              {.sMoid = {0, 0, 0, 0}}};

static const SwctProviderEdgePortRecord kPeps[] = {{{SWCT_CLASS_PROVIDER_EDGE_PORT, 1, 3, 1}, {.wSvid = 100}},
                                                   {{SWCT_CLASS_PROVIDER_EDGE_PORT, 1, 3, 2}, {.wSvid = 200}},
                                                   {.sMoid = {0, 0, 0, 0}}};

static const SwctCVidRegistrationRecord kRegistrations[] = {
    {{SWCT_CLASS_CVID_REGISTRATION, 1, 3, 10}, {.wCVid = 10, .wSvid = 100}},
    {{SWCT_CLASS_CVID_REGISTRATION, 1, 3, 20}, {.wCVid = 20, .wSvid = 200}},
    {.sMoid = {0, 0, 0, 0}}};

/* Ports come first: they decide what their provider-bridge data mean. */
static const struct {
    uint16_t wClass;
    const void* pRecords;
} kRequests[] = {{SWCT_CLASS_SWITCH_PORT, kPorts},
                 {SWCT_CLASS_VLAN, kVlans},
                 {SWCT_CLASS_PROVIDER_EDGE_PORT, kPeps},
                 {SWCT_CLASS_CVID_REGISTRATION, kRegistrations},
                 {SWCT_CLASS_VLAN_PORT, kMembers}};

int main(void)
{
    Swct_CdbmOpen();
    if (!Swct_IsAttachedForWriting()) {
        fprintf(stderr, "cdbm: no region to write; run the process that creates it first\n");
        return 1;
    }
    for (size_t i = 0; i < sizeof kRequests / sizeof kRequests[0]; ++i) {
        if (Swct_SetConfig(kRequests[i].wClass, kRequests[i].pRecords) != 0) {
            fprintf(stderr, "cdbm: class %u was refused\n", kRequests[i].wClass);
            return 1;
        }
    }
    printf("pushed: %u VLANs, %u ports\n", Swct_GetNbrOfPopulatedVlans(), Swct_GetNumberOfSwitchPorts());

    /* A class without records of many objects: read it, change a field, write it back. */
    SwctSwitchAttributes sSwitch;
    Swct_GetConfig(SWCT_CLASS_SWITCH, &sSwitch, 1);
    strcpy(sSwitch.acBridgeName, "example-node");
    Swct_SetConfig(SWCT_CLASS_SWITCH, &sSwitch);

    /* A class is replaced as a whole, so a change carries all its records: here with a third VLAN. */
    SwctVlanRecord asVlans[4] = {{.sMoid = {0, 0}}};
    memcpy(asVlans, kVlans, 2 * sizeof asVlans[0]);
    asVlans[2] = (SwctVlanRecord){{SWCT_CLASS_VLAN, 300}, {.wVlanId = 300, .acName = "management", .dwRowState = 1}};
    Swct_SetConfig(SWCT_CLASS_VLAN, asVlans);
    Swct_AddVlanPort(300, 1, 1, SWCT_MEMBERSHIP_TAGGED);
    printf("changed: %s has %u VLANs\n", Swct_GetBridgeName(), Swct_GetNbrOfPopulatedVlans());
    return 0;
}
