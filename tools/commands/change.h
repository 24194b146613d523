// change.h - what the commands have in common that change objects: apply, add, set, delete, edit.
#pragma once

#include "commands/write.h"

#include <string>

namespace tool {

struct ChangeOptions {
    bool dryRun = false;
    bool force = false;
    bool lenient = false;
    WriteOptions write;
};

void AddChangeOptions(CLI::App& command, ChangeOptions& options, const char* pForce);

// Checks the configuration that comes out by all rules of a file, writes it, and tells what differs now, in one line
// when 'isLine'.  `what` is the doer in messages.
void ChangeAndTell(const std::string& what, const ChangeOptions& options, const Change& change, bool asJson,
                   bool isLine = false);

} // namespace tool
