/* management_walk.c - how a management agent answers "list the objects of a class that match a filter".
 *
 * A walk starts from a Moid of zeros and hands each answer back in.  In a filter a key of zero matches everything. */
#include <stdio.h>
#include <swct/swct.h>

/* The members of any VLAN on one slot. */
static void ListVlanPorts(uint8_t bSlot)
{
    const SwctVlanPortMoid sFilter = {SWCT_CLASS_VLAN_PORT, 0, bSlot, 0};
    const SwctVlanPortMoid sStart = {SWCT_CLASS_VLAN_PORT, 0, 0, 0};
    printf("VLAN ports of slot %u:", bSlot);
    for (const SwctVlanPortMoid* p = Swct_GetNextVlanPort(&sStart); p != NULL; p = Swct_GetNextVlanPort(p)) {
        if (Swct_DoesVlanPortMoidPassFilter(p, &sFilter)) {
            printf(" %u:%u/%u", p->wVlanId, p->bSlot, p->bPort);
        }
    }
    printf("\n");
}

/* The C-VID registrations of a port, from one call of the iterator to the next. */
static void ListRegistrations(uint8_t bSlot, uint8_t bPort)
{
    const SwctCVidRegistrationMoid sFilter = {SWCT_CLASS_CVID_REGISTRATION, bSlot, bPort, 0};
    const SwctCVidRegistrationMoid sStart = {SWCT_CLASS_CVID_REGISTRATION, bSlot, bPort, 0};
    const SwctCVidRegistrationMoid* p = Swct_CVidRegistrationMoidIterator(&sStart);
    /* The walk is ordered by port, so the first registration of another port ends it. */
    for (; p != NULL && Swct_CVidRegistrationMoidFilter(p, &sFilter); p = Swct_CVidRegistrationMoidIterator(p)) {
        printf("  C-VID %u -> S-VID %u\n", p->wCVid, Swct_CVidRegistration_GetSVid(*p));
    }
}

int main(void)
{
    Swct_Open();
    if (!Swct_IsAttachedForReading()) {
        fprintf(stderr, "management_walk: no region; run the process that creates it first\n");
        return 1;
    }
    ListVlanPorts(1);
    /* Walks nest, as each iterator has a buffer of its own.  Exception: iterators of classes keyed by port share one.
     */
    const SwctPortMoid sStart = {SWCT_CLASS_SWITCH_PORT, 0, 0};
    const SwctPortMoid* pCep = Swct_CustomerEdgePortSettingsMoidIterator(&sStart);
    for (; pCep != NULL; pCep = Swct_CustomerEdgePortSettingsMoidIterator(pCep)) {
        printf("customer edge port %u/%u:\n", pCep->bSlot, pCep->bPort);
        ListRegistrations(pCep->bSlot, pCep->bPort);
    }
    return 0;
}
