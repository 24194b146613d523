// schema.cpp - the formats of the command as documents.
#include "commands/command.h"
#include "file/describe.h"
#include "terminal/terminal.h"

#include <CLI/CLI.hpp>

namespace tool {

Action SetUpSchema(CLI::App& command)
{
    auto what = std::make_shared<std::string>("configuration");
    command.add_option("WHAT", *what, "The first is the default; tables are the configuration's members in Markdown")
        ->type_name("configuration|changes|output|tables")
        ->check(CLI::IsMember({"configuration", "changes", "output", "tables"}).description(""));
    return [what](const Globals&) {
        Print(*what == "configuration" ? ConfigurationSchema()
              : *what == "changes"     ? ChangesSchema()
              : *what == "output"      ? OutputSchema()
                                       : ConfigurationTables());
        return 0;
    };
}

} // namespace tool
