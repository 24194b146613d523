// steps.h - basic blocks of the library that the present call has run; counted with PIOVIOS_FUZZ_STEPS only.
#pragma once

#include <cstdint>

extern uint64_t qwNbrOfSteps;
