// process.h - what a process pays for the library: its attach, the creation of the region, and memory.  All three are
// measured in processes of their own, which this program starts as itself with an option.
#pragma once

#include <string>

#include "measure.h"

// "--child=WORK:CANDIDATE"; the works are "attach", "create" and "memory".
inline constexpr char kChildOption[] = "--child=";
int RunChild(const std::string& task);

// What runs of a child print, in nanoseconds.  'library' is the file of another build, with its platform beside it in
// its build tree; empty: this build.
Times MeasureChild(const std::string& task, const std::string& library, unsigned runs);
// Memory of a process that attaches and asks, as rows of a table.
std::string MeasureMemory();

std::string FileOf(const std::string& store); // "lmdb", "sqlite"
