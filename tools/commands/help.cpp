// help.cpp - the parser's view of the commands: subcommands, their help, and the words that complete them.
#include "commands/help.h"

#include "objects/failure.h"
#include "terminal/terminal.h"

#include <fmt/format.h>
#include <set>

namespace tool {

HelpFormatter::HelpFormatter()
{
    column_width(26);
    label("Subcommands", "Commands");
}

std::string HelpFormatter::make_description(const CLI::App* app) const
{
    std::string text;
    std::istringstream examples(app->get_footer());
    for (std::string line; std::getline(examples, line);) {
        text += fmt::format("{}  {}\n", text.empty() ? "Examples:\n" : "", line);
    }
    return fmt::format("{}{}{}\n", text, text.empty() ? "" : "\n", app->get_description());
}

std::string HelpFormatter::make_footer(const CLI::App* app) const
{
    return app->get_parent() == nullptr
               ? "Every command has a --help of its own.  Exit codes: 0 fine, 1 findings or "
                 "differences, 2 bad usage\nor input, 3 no region or no permission, 4 a region "
                 "of another layout, 130 interrupted.\n"
               : "Every command also takes --json and --debug LEVEL.\n";
}

CLI::App* AddCommand(CLI::App& parent, const char* name, const char* summary, const char* examples)
{
    CLI::App* command = parent.add_subcommand(name, summary);
    command->footer(examples);
    command->fallthrough();
    return command;
}

CLI::Validator InRange(unsigned first, unsigned last)
{
    return CLI::Range(first, last).description("");
}

Action ActionOfParsed(std::vector<std::pair<const CLI::App*, Action>> actions)
{
    return [actions = std::move(actions)](const Globals& globals) {
        for (const auto& [command, action] : actions) {
            if (command->parsed()) {
                return action(globals);
            }
        }
        throw Failure(kBadInput, "a command is missing: see 'piovios --help' and 'piovios show --help'");
    };
}

Action SetUpComplete(CLI::App& command)
{
    auto words = std::make_shared<std::vector<std::string>>();
    command.add_option("WORD", *words, "The words before the one to complete, without options");
    return [&command, words](const Globals&) {
        const CLI::App* place = command.get_parent();
        for (const std::string& word : *words) {
            const auto below = place->get_subcommands([&word](const CLI::App* app) { return app->get_name() == word; });
            place = below.empty() ? place : below.front();
        }
        std::set<std::string> next;
        for (const CLI::App* below :
             place->get_subcommands([](const CLI::App* app) { return !app->get_group().empty(); })) {
            next.insert(below->get_name());
        }
        for (const CLI::App* app = place; app != nullptr; app = app->get_parent()) {
            for (const CLI::Option* option : app->get_options()) {
                if (!option->get_lnames().empty() && !option->get_group().empty()) {
                    next.insert("--" + option->get_lnames().front());
                }
            }
        }
        Print(fmt::format("{}\n", fmt::join(next, "\n")));
        return 0;
    };
}

} // namespace tool
