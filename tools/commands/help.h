// help.h - help texts that open with examples.
#pragma once

#include "commands/command.h"

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

namespace tool {

// A command's footer holds its examples; a line that begins with the mark is a note for its end.
inline constexpr char kNoteMark = '#';

class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter();
    std::string make_description(const CLI::App* app) const override;
    std::string make_footer(const CLI::App* app) const override;
};

// A subcommand with its help; its parent's options may stand behind it.
CLI::App* AddCommand(CLI::App& parent, const char* name, const char* summary, const char* examples);

// For numbers; the help of an option does not repeat the range.
CLI::Validator InRange(unsigned first, unsigned last);

// The words that may come next: subcommands and options, in order.
std::vector<std::string> NextWords(const CLI::App& place);

// Runs the action of the subcommand that was given.  Without one it throws a Failure.
Action ActionOfParsed(std::vector<std::pair<const CLI::App*, Action>> actions);

} // namespace tool
