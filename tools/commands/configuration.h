// configuration.h - the commands load, save and diff.  Each returns an exit code or throws a Failure.
#pragma once

#include <string>

namespace tool {

struct LoadOptions {
    std::string file; // "-" is the standard input, also for the other commands
    bool dryRun = false;
    bool lenient = false;
    bool json = false;
};

struct SaveOptions {
    std::string file; // empty or "-": the standard output
};

struct DiffOptions {
    std::string file;
    std::string file2; // empty: the region
    bool json = false;
};

// Checks the whole file and then replaces the region's configuration.  Faults: exit code 2, and nothing changes.
int RunLoad(const LoadOptions& options);
// Writes the region's configuration.  A file appears complete or not at all.
int RunSave(const SaveOptions& options);
// What changes from the region to 'file', or from 'file' to 'file2'.  Exit code 1 when they differ.
int RunDiff(const DiffOptions& options);

} // namespace tool
