// faults_text.h - the faults of a configuration file for people and programs.
#pragma once

#include "file/parse.h"

namespace tool {

// "node.json: line 91, vlan 100: members: \"3/5\": there is no such port"; of no file without its name.
std::string FaultText(const std::string& file, const ConfigFault& fault);
Json FaultJson(const ConfigFault& fault);

// On stderr, each in a line.
void PrintFaults(const std::string& file, const ParseResult& result);

// For the commands that only read a file: rules that a region can break are no matter, the first error is a Failure.
Configuration ReadConfigurationFile(const std::string& file);

} // namespace tool
