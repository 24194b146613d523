// checkpoints.h - configurations that are kept: named ones, and those that the last writes replaced.
//
// A checkpoint is a file of the text that `save` writes: checkpoints/NAME.json, of a write auto-NUMBER.json.
#pragma once

#include "objects/configuration.h"

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace tool {

struct Checkpoint {
    std::string name;
    std::time_t time = 0; // when it was kept, the last time
    std::uintmax_t bytes = 0;
    unsigned number = 0; // 0: it has a name of its own
};

std::vector<Checkpoint> ListCheckpoints(); // the automatic ones, the newest first; then the others by name

// Both need the state's lock.  A text that an automatic one has already moves to the head; only the last 20 different
// ones stay.  `likelyFile` of the state may have the text and spare a copy.  Returns the name.
std::string KeepAutomatic(const std::string& text, const std::string& likelyFile);
void KeepNamed(const std::string& name, const std::string& text);

// Nothing when there is none of that name.
std::optional<std::string> ReadCheckpoint(const std::string& name);
bool DeleteCheckpoint(const std::string& name);

// The configuration of a text that was kept; `name` is for messages.
Configuration ReadStateText(const std::string& name, const std::string& text);

// The file of a checkpoint, for LinkState.
std::string CheckpointFile(const std::string& name);

} // namespace tool
