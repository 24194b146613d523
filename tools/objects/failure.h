// failure.h - how a command ends: exit codes, and the exception that carries a one-line message to main.
#pragma once

#include <stdexcept>
#include <string>

namespace tool {

enum ExitCode {
    kOk = 0,
    kFindings = 1,    // findings, differences
    kBadInput = 2,    // bad usage or input
    kNoRegion = 3,    // no region, or no permission
    kOtherLayout = 4, // a region of another layout
    kNotWritten = 5,  // the output or a file cannot be written
    kInUse = 6,       // the region is there already, is mapped by others, or keeps changing
    kNotThere = 7,    // the object that was asked for does not exist
    kInterrupted = 130
};

// Thrown anywhere.  The message is one line: what, where, what to do.
struct Failure : std::runtime_error {
    Failure(int exitCodeOfTool, const std::string& message) : std::runtime_error(message), exitCode(exitCodeOfTool) {}

    int exitCode;
};

} // namespace tool
