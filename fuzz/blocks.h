// blocks.h - basic blocks of the library that the present call has run.
#pragma once

#include <cstdint>

extern uint64_t qwNbrOfBlocks;
