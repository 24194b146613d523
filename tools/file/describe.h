// describe.h - the formats as documents: printed from the catalogue, so that they say what the command does.
#pragma once

#include <string>

namespace tool {

std::string ConfigurationSchema(); // JSON schema of what load reads and save writes
std::string ChangesSchema();       // JSON schema of what apply reads
std::string OutputSchema();        // JSON schema of every other JSON document of the command
std::string ConfigurationTables(); // the members of the configuration as tables of Markdown
std::string ConfigurationManual(); // and as a part of a manual page

} // namespace tool
