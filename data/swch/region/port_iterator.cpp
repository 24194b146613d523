#include "port_iterator.h"

SwctPortMoid sSwitchPortMoid;
