/* switch.h - switch attributes: the node-wide layer-2 settings, and the switch-wide scalars of the region. */
#ifndef SWCT_SWITCH_H
#define SWCT_SWITCH_H

#include "types.h"

enum {
    SWCT_SWITCH_MODE_PROVIDER_BRIDGE = 1, /* provider-bridge objects exist */
    SWCT_SWITCH_MODE_QINQ = 2             /* QinQ ports exist */
};

/* The attributes proper: the body of the CDBM switch object. */
typedef struct SwctSwitchAttributes {
    SwctMacAddress sBridgeMacAddress;
    uint8_t bNbrOfSwitchPorts; /* only in the copy of Swct_GetSwitchAttributes; 0 in the region */
    uint8_t abReserved1[4];
    uint32_t dwAgeingTime; /* seconds */
    uint8_t abReserved2[4];
    uint16_t wUnicastForwardingTableMaxSize; /* entries */
    uint32_t dwSwitchUpTime;                 /* node time at which the switch came up */
    uint32_t dwBridgeVlanEtherType;          /* enumeration, see Swct_GetL2PortVlanEtherType */
    uint16_t wNbrOfVlans;                    /* only in the copy of Swct_GetSwitchAttributes; 0 in the region */
    uint8_t bStaticUnicastForwardingMaxEntries;
    uint32_t dwSwitchMode; /* SWCT_SWITCH_MODE_* */
    uint32_t dwL2cpTunnellingMode;
    uint16_t wLagSystemPriority;
    char acBridgeName[SWCT_VLAN_NAME_SIZE]; /* zero-terminated, at most 80 characters */
    SwctMacAddress sL3MacAddress;           /* of the layer-3 interfaces */
    uint16_t wEtherType1;                   /* configurable VLAN ether types (TPIDs) */
    uint16_t wEtherType2;
    uint16_t wEtherType3;
    uint16_t wEtherType4;
    uint32_t dwL2cpPriority;        /* of tunnelled L2CP frames */
    uint8_t abL2cpMacDestTunnel[2]; /* the variable bytes of the L2CP tunnel destination MAC */
    uint32_t dwGLagDistribution;    /* 1, 3, 4, 5, 6 or 7 */
} SWCT_PACKED SwctSwitchAttributes;
SWCT_ASSERT_SIZE(SwctSwitchAttributes, 147);

typedef struct SwctSwitchStatistics {
    uint32_t dwLearnedEntryDiscardCount;
    uint32_t dwNbrOfDeletedVlans; /* since the region was created */
} SWCT_PACKED SwctSwitchStatistics;
SWCT_ASSERT_SIZE(SwctSwitchStatistics, 8);

/* The switch record of the region. */
typedef struct SwctSwitch {
    SwctSwitchAttributes sAttributes;
    SwctSwitchStatistics sStatistics;
} SWCT_PACKED SwctSwitch;
SWCT_ASSERT_SIZE(SwctSwitch, 155);

/* Getters: 0 without a read view, except where stated. */
SWCT_API uint32_t Swct_GetAgeingTime(void) SWCT_NOEXCEPT; /* seconds */
SWCT_API uint32_t Swct_GetSwitchMode(void) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_Switch_GetSwitchMode(void) SWCT_NOEXCEPT;   /* the same */
SWCT_API uint32_t Swct_GetBridgeVlanEtherType(void) SWCT_NOEXCEPT; /* enumeration 1 to 6 */
SWCT_API uint32_t Swct_GetEtherType(void) SWCT_NOEXCEPT;           /* the same */
SWCT_API uint16_t Swct_GetEtherType1(void) SWCT_NOEXCEPT;
SWCT_API uint16_t Swct_GetEtherType2(void) SWCT_NOEXCEPT;
SWCT_API uint16_t Swct_GetEtherType3(void) SWCT_NOEXCEPT;
SWCT_API uint16_t Swct_GetEtherType4(void) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_GetL2cpTunnellingMode(void) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_GetL2cpPriority(void) SWCT_NOEXCEPT;
SWCT_API uint16_t Swct_GetLagSystemPriority(void) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_GetGLagDistribution(void) SWCT_NOEXCEPT;
/* The name in the region; an empty name without a read view.  It is zero-terminated unless another process spoils it:
 * read at most SWCT_VLAN_NAME_SIZE bytes. */
SWCT_API const char* Swct_GetBridgeName(void) SWCT_NOEXCEPT;
/* Getters again: 0 without a read view, except where stated. */
SWCT_API uint16_t Swct_Switch_GetUnicastForwardingTableMaxSize(void) SWCT_NOEXCEPT;
SWCT_API uint8_t Swct_GetStaticUnicastForwardingMaxEntries(void) SWCT_NOEXCEPT;
SWCT_API uint16_t Swct_GetMgmtVlanIntfVlanId(void) SWCT_NOEXCEPT; /* 4095 without a read view */
SWCT_API uint32_t Swct_GetMgmtVlanIntfVlanPcp(void) SWCT_NOEXCEPT;
SWCT_API uint8_t Swct_GetMgmtVlanIntfSlot(void) SWCT_NOEXCEPT;
SWCT_API uint32_t Swct_GetHrlb(void) SWCT_NOEXCEPT;

/* Copies the attributes, with the present numbers of VLANs and of ports that have a provider-bridge port type. */
SWCT_API void Swct_GetSwitchAttributes(SwctSwitchAttributes* pAttributes) SWCT_NOEXCEPT;
/* Copies the statistics. */
SWCT_API void Swct_Switch_GetSwitchStatistics(SwctSwitchStatistics* pStatistics) SWCT_NOEXCEPT;
/* 7 to 10 for the configured ether type 1 to 4 that equals 'wEtherType', the highest if several do; 0 for none. */
SWCT_API uint32_t Swct_GetVlanEtherType(uint16_t wEtherType) SWCT_NOEXCEPT;
/* Whether one of the four configured ether types equals 'wTpid'. */
SWCT_API uint32_t Swct_IsValidOuterTpid(uint16_t wTpid) SWCT_NOEXCEPT;
/* Always 1. */
SWCT_API uint32_t Swct_IsAllPortMembersOfVlanIdDown(uint16_t wVlanId) SWCT_NOEXCEPT;

/* Setters: the value is cut to the field's width and not tested. */
SWCT_API void Swct_Switch_SetAgeingTime(uint32_t dwSeconds) SWCT_NOEXCEPT;
SWCT_API void Swct_Switch_SetSwitchMode(uint32_t dwMode) SWCT_NOEXCEPT;
SWCT_API void Swct_Switch__SetVlanEtherType(uint32_t dwEnumeration) SWCT_NOEXCEPT;
SWCT_API void Swct_Switch__SetVlanEtherType1(uint16_t wEtherType) SWCT_NOEXCEPT;
SWCT_API void Swct_Switch__SetVlanEtherType2(uint16_t wEtherType) SWCT_NOEXCEPT;
SWCT_API void Swct_Switch__SetVlanEtherType3(uint16_t wEtherType) SWCT_NOEXCEPT;
SWCT_API void Swct_Switch__SetVlanEtherType4(uint16_t wEtherType) SWCT_NOEXCEPT;
SWCT_API void Swct_Switch__SetL2cpTunnellingMode(uint32_t dwMode) SWCT_NOEXCEPT;
SWCT_API void Swct_Switch__SetL2cpPriority(uint32_t dwPriority) SWCT_NOEXCEPT;
SWCT_API void Swct_Switch__SetLagSystemPriority(uint16_t wPriority) SWCT_NOEXCEPT;
SWCT_API void Swct_Switch__SetGLagDistribution(uint32_t dwDistribution) SWCT_NOEXCEPT;
/* Keeps the first 80 characters; the rest of the field becomes zero. */
SWCT_API void Swct_Switch__SetBridgeName(const char* pName) SWCT_NOEXCEPT;
/* Traces the whole value at level 4 and stores its low 16 bits. */
SWCT_API void Swct_Switch_SetUnicastForwardingTableMaxSize(uint32_t dwValue) SWCT_NOEXCEPT;
/* Traces the whole value at level 4 and stores its low 8 bits. */
SWCT_API void Swct_Switch_SetStaticUnicastForwardingMaxEntries(uint32_t dwValue) SWCT_NOEXCEPT;
/* Stores the node's present time. */
SWCT_API void Swct_Switch_SetSwitchUpTime(void) SWCT_NOEXCEPT;
/* Setters again: the value is not tested. */
SWCT_API void Swct_SetMgmtVlanIntfVlanId(uint16_t wVlanId) SWCT_NOEXCEPT;
SWCT_API void Swct_SetMgmtVlanIntfVlanPcp(uint32_t dwPcp) SWCT_NOEXCEPT;
SWCT_API void Swct_SetMgmtVlanIntfSlot(uint8_t bSlot) SWCT_NOEXCEPT;
SWCT_API void Swct_SetHrlb(uint32_t dwHrlb) SWCT_NOEXCEPT;
/* Adds to the count, modulo 2^32; does not replace it. */
SWCT_API void Swct_SetLearnedEntryDiscardCount(uint32_t dwCount) SWCT_NOEXCEPT;

#endif
