#include "views.h"

SwctData* pSwctWrite = nullptr;
const SwctData* pSwctRead = nullptr;
