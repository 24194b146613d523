/* swct.h - the whole interface of piovios, the shared store of a switching node's layer-2 configuration. */
#ifndef SWCT_SWCT_H
#define SWCT_SWCT_H

#include "config.h"
#include "cvid_registration.h"
#include "cvlan.h"
#include "inner_tag.h"
#include "lifecycle.h"
#include "mac.h"
#include "pb_data.h"
#include "port_vlan_list.h"
#include "provider_edge_port.h"
#include "qinq_port.h"
#include "queue_history.h"
#include "queue_statistics.h"
#include "service_priority.h"
#include "switch.h"
#include "switch_port.h"
#include "types.h"
#include "vid_translation.h"
#include "vlan.h"
#include "vlan_port.h"

#endif
