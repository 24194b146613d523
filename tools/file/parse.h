// parse.h - from the text of a file to a configuration, with all faults of the file; and back.
#pragma once

#include "file/faults.h"
#include "objects/configuration.h"

namespace tool {

struct ParseResult {
    Configuration configuration; // of use when there is no error
    std::vector<ConfigFault> faults;
    std::size_t nrOfErrors = 0; // also of faults beyond kFaultsKept, which are counted only
    std::size_t nrOfWarnings = 0;
};

ParseResult Parse(std::string_view text, Strictness strictness);

// The text that `save` writes, always the same for equal configurations.
std::string ToText(const Configuration& configuration);
// The same in one line, without its "schema".
std::string ToLine(const Configuration& configuration);

} // namespace tool
