// process.h - what a process pays for the library: the time of its attach, and memory.  Both are measured in processes
// of their own, which this program starts as itself with an option.
#pragma once

#include <string>

#include "works.h"

inline constexpr char kAttachOption[] = "--attach=";
inline constexpr char kMemoryOption[] = "--memory";

std::string LmdbPath();
std::string SqlitePath();

// Attach and first question.
Work AttachWork();
// Memory of a process that attaches and asks, as rows of a table.
std::string MeasureMemory();

// The other side: what the started process does.
int RunAttach(const std::string& candidate);
int RunMemory();
