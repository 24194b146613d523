// records.h - what a write leaves for those who come after it: the write in progress, and the change that awaits its
// confirmation.  Both belong to one object of one start of the system.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tool {

// For each kind three files: the record itself, and the configurations before and after.
enum class RecordKind { kWrite, kConfirmation };

struct Record {
    std::string command;  // as its user typed it
    std::string process;  // its id
    int64_t deadline = 0; // of a confirmation: milliseconds of the clock that runs from the system's start
    bool isOfThisRegion = false;
};

std::optional<Record> ReadRecord(RecordKind kind);
// Of this process.  Its two configurations are written before.
void WriteRecord(RecordKind kind, int64_t deadline = 0);
void WriteRecord(RecordKind kind, const Record& record);
void RemoveRecord(RecordKind kind);

std::string FileBefore(RecordKind kind);
std::string FileAfter(RecordKind kind);

// Goes on while the system sleeps, whatever is done to its date.
int64_t MillisecondsOfSystem();
int64_t MillisecondsLeft(const Record& confirmation);

// "'piovios load node.json' (process 312)"
std::string DoerText(const Record& record);

} // namespace tool
