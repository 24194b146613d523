// hand.h - the limit: the same bytes read and written by hand, without a key test, a view or a trace.
//
// Several candidates: the fastest of them is the limit of a work.
#pragma once

#include "works.h"

std::vector<Work> PlainHandWorks(const Scene& sScene); // one record after the other
std::vector<Work> FastHandWorks(const Scene& sScene);  // several records at a time
