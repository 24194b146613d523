// hand.h - the limit: the same bytes read and written by hand, by the fastest loops that were found.
#pragma once

#include "works.h"

std::vector<Work> HandWorks(const Scene& sScene);

// Beside a writer.
void HandPush(const ClassData& sClass);
uint32_t HandAsk(uint16_t wClass, PortKey s, uint16_t wVid);
