/* types.h - what all tables share: export marks, key ranges, VLAN bitmaps, Moids.
 *
 * Conventions of the whole interface:
 *  - Booleans are u32 1 or 0 unless a function says otherwise.  Arguments: a VLAN id (VID) is u16, a slot or port u8.
 *  - A bad key is no error: pointers are null, tests 0, getters give the absent value that they state, and what
 *    changes the region does nothing.  A missing view (the process has not attached, or only for reading) and a null
 *    pointer count as a bad key, unless a function says otherwise.
 *  - "Read view": the process has called Swct_Open, Swct_CdbmOpen or Swct_Init.  "Write view": Swct_CdbmOpen or
 *    Swct_Init.  Functions read through the read view and change through the write view.
 *  - Nothing is locked.  There is one writer; a reader may see a table in the middle of a change.
 *  - Pointers into the region stay valid until the process ends.  What they point at may change at any moment.
 *  - An iterator returns its own static buffer, which its next call overwrites; it may be passed straight back. Passing
 *    the pointer back is the fastest way; a Moid of four bytes may be copied and its copy passed at no cost.
 *    Neither iterators nor attaching may run in two threads of a process at once.
 */
#ifndef SWCT_TYPES_H
#define SWCT_TYPES_H

#include <stddef.h>
#include <stdint.h>

#if __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__ || __SIZEOF_POINTER__ != 8
#error "piovios needs a little-endian target of 64 bits: the region is shared as the bytes of one"
#endif

#ifdef __cplusplus
#define SWCT_EXTERN extern "C"
#define SWCT_NOEXCEPT noexcept
#define SWCT_STATIC_ASSERT static_assert
#else
#define SWCT_EXTERN extern
#define SWCT_NOEXCEPT
#define SWCT_STATIC_ASSERT _Static_assert
#endif

/* Exported with C linkage. */
#define SWCT_API SWCT_EXTERN __attribute__((visibility("default")))

/* Records follow each other byte by byte, as the region and the exchange with the CDBM hold them.  Never keep the
 * address of a field wider than a byte: it may be misaligned. */
#define SWCT_PACKED __attribute__((packed))
#define SWCT_ASSERT_SIZE(type, size) SWCT_STATIC_ASSERT(sizeof(type) == (size), #type " has another size")
#define SWCT_ASSERT_AT(type, field, offset) \
    SWCT_STATIC_ASSERT(offsetof(type, field) == (offset), #type "." #field " is elsewhere")

enum {
    SWCT_SLOT_MAX = 3,          /* slots 1 to 3 */
    SWCT_PORT_MAX = 5,          /* ports 1 to 5 of a slot */
    SWCT_VLAN_MAX = 4095,       /* VLAN ids of the VLAN table: 1 to 4095 */
    SWCT_PB_VID_MAX = 4094,     /* VIDs of the provider-bridge tables: 1 to 4094 */
    SWCT_PEP_MAX = 16,          /* provider edge ports of a customer edge port: 1 to 16 */
    SWCT_PRIORITY_MAX = 8,      /* received and regenerated priorities: 1 to 8 */
    SWCT_VID_NONE = 4095,       /* "no VLAN" of the getters that say so */
    SWCT_VLAN_NAME_SIZE = 81,   /* 80 characters and a zero byte */
    SWCT_VLAN_BITMAP_SIZE = 512 /* bytes; VLAN v is bit v % 8 (0 the least significant) of byte v / 8 */
};

/* Results of the Swct_GetFree...Moid operations. */
enum {
    SWCT_OK = 0,
    SWCT_NO_FREE_INDEX = 10000, /* all provider edge port indexes are in use */
    SWCT_ALREADY_EXISTS = 20011,
    SWCT_CANNOT_EXIST = 20018 /* no such port, wrong switch mode or port type, or key out of range */
};

/* Object classes. */
enum {
    SWCT_CLASS_SWITCH = 176,
    SWCT_CLASS_SWITCH_PORT = 177,
    SWCT_CLASS_VLAN = 205,
    SWCT_CLASS_VLAN_PORT = 206,
    SWCT_CLASS_CVID_REGISTRATION = 369,
    SWCT_CLASS_SERVICE_PRIORITY_REGENERATION = 427,
    SWCT_CLASS_VID_TRANSLATION = 437,
    SWCT_CLASS_PROVIDER_EDGE_PORT = 469,
    SWCT_CLASS_QINQ_PORT = 514,
    SWCT_CLASS_DEFAULT_CVID_REGISTRATION = 538,
    SWCT_CLASS_QUEUE_STATISTICS = 622,
    SWCT_CLASS_VLAN_IF_INNER_TAG = 769,
    SWCT_CLASS_HRLB = 867,
    SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_15M = 898,
    SWCT_CLASS_QUEUE_STATISTICS_HISTORICAL_24H = 899
};

/* Six bytes in transmission order. */
typedef struct SwctMacAddress {
    uint8_t abByte[6];
} SWCT_PACKED SwctMacAddress;
SWCT_ASSERT_SIZE(SwctMacAddress, 6);

/* Moids: a managed object's name, its class id and then the keys of its class.  In an iterator's argument key 0 means
 * "from the start", in a filter "any".  Class ids are not compared by filters. */

/* Classes keyed by port: switch port, QinQ port, default C-VID registration, port settings, port statistics. */
typedef struct SwctPortMoid {
    uint16_t wClassId;
    uint8_t bSlot;
    uint8_t bPort;
} SWCT_PACKED SwctPortMoid;
SWCT_ASSERT_SIZE(SwctPortMoid, 4);
SWCT_ASSERT_AT(SwctPortMoid, bSlot, 2);
SWCT_ASSERT_AT(SwctPortMoid, bPort, 3);

/* VLAN and VLAN-interface inner tag. */
typedef struct SwctVlanMoid {
    uint16_t wClassId;
    uint16_t wVlanId;
} SWCT_PACKED SwctVlanMoid;
SWCT_ASSERT_SIZE(SwctVlanMoid, 4);
SWCT_ASSERT_AT(SwctVlanMoid, wVlanId, 2);

/* VLAN port; also the C-VLAN port key, with a C-VID as VLAN id. */
typedef struct SwctVlanPortMoid {
    uint16_t wClassId;
    uint16_t wVlanId;
    uint8_t bSlot;
    uint8_t bPort;
} SWCT_PACKED SwctVlanPortMoid;
SWCT_ASSERT_SIZE(SwctVlanPortMoid, 6);
SWCT_ASSERT_AT(SwctVlanPortMoid, wVlanId, 2);
SWCT_ASSERT_AT(SwctVlanPortMoid, bSlot, 4);
SWCT_ASSERT_AT(SwctVlanPortMoid, bPort, 5);

typedef struct SwctCVidRegistrationMoid {
    uint16_t wClassId;
    uint8_t bSlot;
    uint8_t bPort;
    uint16_t wCVid;
} SWCT_PACKED SwctCVidRegistrationMoid;
SWCT_ASSERT_SIZE(SwctCVidRegistrationMoid, 6);
SWCT_ASSERT_AT(SwctCVidRegistrationMoid, bSlot, 2);
SWCT_ASSERT_AT(SwctCVidRegistrationMoid, bPort, 3);
SWCT_ASSERT_AT(SwctCVidRegistrationMoid, wCVid, 4);

typedef struct SwctVidTranslationMoid {
    uint16_t wClassId;
    uint8_t bSlot;
    uint8_t bPort;
    uint16_t wLocalVid;
} SWCT_PACKED SwctVidTranslationMoid;
SWCT_ASSERT_SIZE(SwctVidTranslationMoid, 6);
SWCT_ASSERT_AT(SwctVidTranslationMoid, bSlot, 2);
SWCT_ASSERT_AT(SwctVidTranslationMoid, bPort, 3);
SWCT_ASSERT_AT(SwctVidTranslationMoid, wLocalVid, 4);

typedef struct SwctProviderEdgePortMoid {
    uint16_t wClassId;
    uint8_t bSlot;
    uint8_t bPort;
    uint16_t wPepIndex;
} SWCT_PACKED SwctProviderEdgePortMoid;
SWCT_ASSERT_SIZE(SwctProviderEdgePortMoid, 6);
SWCT_ASSERT_AT(SwctProviderEdgePortMoid, bSlot, 2);
SWCT_ASSERT_AT(SwctProviderEdgePortMoid, bPort, 3);
SWCT_ASSERT_AT(SwctProviderEdgePortMoid, wPepIndex, 4);

typedef struct SwctServicePriorityRegenerationMoid {
    uint16_t wClassId;
    uint8_t bSlot;
    uint8_t bPort;
    uint16_t wPepIndex;
    uint32_t dwPriority;
} SWCT_PACKED SwctServicePriorityRegenerationMoid;
SWCT_ASSERT_SIZE(SwctServicePriorityRegenerationMoid, 10);
SWCT_ASSERT_AT(SwctServicePriorityRegenerationMoid, bSlot, 2);
SWCT_ASSERT_AT(SwctServicePriorityRegenerationMoid, bPort, 3);
SWCT_ASSERT_AT(SwctServicePriorityRegenerationMoid, wPepIndex, 4);
SWCT_ASSERT_AT(SwctServicePriorityRegenerationMoid, dwPriority, 6);

typedef struct SwctQueueStatisticsMoid {
    uint16_t wClassId;
    uint8_t bSlot;
    uint8_t bPort;
    uint8_t bQueue;
} SWCT_PACKED SwctQueueStatisticsMoid;
SWCT_ASSERT_SIZE(SwctQueueStatisticsMoid, 5);
SWCT_ASSERT_AT(SwctQueueStatisticsMoid, bSlot, 2);
SWCT_ASSERT_AT(SwctQueueStatisticsMoid, bPort, 3);
SWCT_ASSERT_AT(SwctQueueStatisticsMoid, bQueue, 4);

typedef struct SwctQueueStatisticsHistoricalMoid {
    uint16_t wClassId;
    uint8_t bSlot;
    uint8_t bPort;
    uint8_t bQueue;
    uint8_t bIndex;
} SWCT_PACKED SwctQueueStatisticsHistoricalMoid;
SWCT_ASSERT_SIZE(SwctQueueStatisticsHistoricalMoid, 6);
SWCT_ASSERT_AT(SwctQueueStatisticsHistoricalMoid, bSlot, 2);
SWCT_ASSERT_AT(SwctQueueStatisticsHistoricalMoid, bPort, 3);
SWCT_ASSERT_AT(SwctQueueStatisticsHistoricalMoid, bQueue, 4);
SWCT_ASSERT_AT(SwctQueueStatisticsHistoricalMoid, bIndex, 5);

#endif
