/* config_records.h - the records of the exchange with the CDBM (config.h): Moid, then body. */
#ifndef SWCT_CONFIG_RECORDS_H
#define SWCT_CONFIG_RECORDS_H

#include "pb_data.h"
#include "qinq_port.h"
#include "service_priority.h"
#include "switch.h"
#include "switch_port.h"
#include "vlan_port.h"

/* Class 177. */
typedef struct SwctSwitchPortRecord {
    SwctPortMoid sMoid;
    SwctSwitchPort sBody;
} SWCT_PACKED SwctSwitchPortRecord;
SWCT_ASSERT_SIZE(SwctSwitchPortRecord, 32);
SWCT_ASSERT_AT(SwctSwitchPortRecord, sBody, 4);

/* Class 205. */
typedef struct SwctVlanRecord {
    SwctVlanMoid sMoid;
    SwctVlan sBody;
} SWCT_PACKED SwctVlanRecord;
SWCT_ASSERT_SIZE(SwctVlanRecord, 130);
SWCT_ASSERT_AT(SwctVlanRecord, sBody, 4);

/* Class 206. */
typedef struct SwctVlanPortRecord {
    SwctVlanPortMoid sMoid;
    SwctVlanPortAttributes sBody;
} SWCT_PACKED SwctVlanPortRecord;
SWCT_ASSERT_SIZE(SwctVlanPortRecord, 16);
SWCT_ASSERT_AT(SwctVlanPortRecord, sBody, 6);

/* Class 369. */
typedef struct SwctCVidRegistrationRecord {
    SwctCVidRegistrationMoid sMoid;
    SwctCVidRegistration sBody;
} SWCT_PACKED SwctCVidRegistrationRecord;
SWCT_ASSERT_SIZE(SwctCVidRegistrationRecord, 23);
SWCT_ASSERT_AT(SwctCVidRegistrationRecord, sBody, 6);

/* Class 427. */
typedef struct SwctServicePriorityRegenerationRecord {
    SwctServicePriorityRegenerationMoid sMoid;
    SwctServicePriorityRegeneration sBody;
} SWCT_PACKED SwctServicePriorityRegenerationRecord;
SWCT_ASSERT_SIZE(SwctServicePriorityRegenerationRecord, 18);
SWCT_ASSERT_AT(SwctServicePriorityRegenerationRecord, sBody, 10);

/* Class 437. */
typedef struct SwctVidTranslationRecord {
    SwctVidTranslationMoid sMoid;
    SwctVidTranslation sBody;
} SWCT_PACKED SwctVidTranslationRecord;
SWCT_ASSERT_SIZE(SwctVidTranslationRecord, 18);
SWCT_ASSERT_AT(SwctVidTranslationRecord, sBody, 6);

/* Class 469. */
typedef struct SwctProviderEdgePortRecord {
    SwctProviderEdgePortMoid sMoid;
    SwctProviderEdgePort sBody;
} SWCT_PACKED SwctProviderEdgePortRecord;
SWCT_ASSERT_SIZE(SwctProviderEdgePortRecord, 22);
SWCT_ASSERT_AT(SwctProviderEdgePortRecord, sBody, 6);

/* Class 514. */
typedef struct SwctQinQPortRecord {
    SwctPortMoid sMoid;
    SwctQinQPort sBody;
} SWCT_PACKED SwctQinQPortRecord;
SWCT_ASSERT_SIZE(SwctQinQPortRecord, 23);
SWCT_ASSERT_AT(SwctQinQPortRecord, sBody, 4);

/* Class 538. */
typedef struct SwctDefaultCVidRegistrationRecord {
    SwctPortMoid sMoid;
    SwctDefaultCVidRegistration sBody;
} SWCT_PACKED SwctDefaultCVidRegistrationRecord;
SWCT_ASSERT_SIZE(SwctDefaultCVidRegistrationRecord, 7);
SWCT_ASSERT_AT(SwctDefaultCVidRegistrationRecord, sBody, 4);

/* Class 769. */
typedef struct SwctVlanIfInnerTagRecord {
    SwctVlanMoid sMoid;
    SwctVlanIfInnerTag sBody;
} SWCT_PACKED SwctVlanIfInnerTagRecord;
SWCT_ASSERT_SIZE(SwctVlanIfInnerTagRecord, 35);
SWCT_ASSERT_AT(SwctVlanIfInnerTagRecord, sBody, 4);

#endif
