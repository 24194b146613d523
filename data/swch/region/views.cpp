// The two views; and the layout of every record is proved here, where the library is compiled.
#include "views.h"

#include "region_layout.h"

SwctData* pSwctWrite = nullptr;
const SwctData* pSwctRead = nullptr;
