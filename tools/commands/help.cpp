// help.cpp - the parser's view of the commands: subcommands, their help, and the words that would be right.
#include "commands/help.h"

#include "objects/failure.h"
#include "objects/keys.h"
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
    for (std::string line; std::getline(examples, line) && line[0] != kNoteMark;) {
        text += fmt::format("{}  {}\n", text.empty() ? "Examples:\n" : "", line);
    }
    return fmt::format("{}{}{}\n", text, text.empty() ? "" : "\n", app->get_description());
}

std::string HelpFormatter::make_footer(const CLI::App* app) const
{
    if (app->get_parent() == nullptr) {
        return "Every command has a --help of its own.\n"
               "Exit codes: 0 fine, 1 findings or differences, 2 bad usage or input, 3 no region or no permission,\n"
               "4 a region of another layout, 5 the output cannot be written, 6 the region is in use or exists,\n"
               "7 there is no such object, 130 interrupted.\n";
    }
    const std::string footer = app->get_footer();
    const std::size_t note = footer.find(kNoteMark);
    return "Every command also takes --json, --names FILE, --region FILE and --debug LEVEL" +
           (note == std::string::npos ? ".\n" : "; " + footer.substr(note + 1, footer.size() - note - 2) + ".\n");
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
    // The parser's own would take 010 for 8.
    const auto test = [first, last](const std::string& text) {
        const auto number = ParseNumber(text, first, last);
        return number ? std::string() : fmt::format("'{}' must be a number from {} to {}", text, first, last);
    };
    return {test, ""};
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

std::vector<std::string> NextWords(const CLI::App& place)
{
    std::set<std::string> next;
    for (const CLI::App* below : place.get_subcommands([](const CLI::App* app) { return !app->get_group().empty(); })) {
        next.insert(below->get_name());
    }
    for (const CLI::App* app = &place; app != nullptr; app = app->get_parent()) {
        for (const CLI::Option* option : app->get_options()) {
            if (!option->get_lnames().empty() && !option->get_group().empty()) {
                next.insert("--" + option->get_lnames().front());
            }
        }
    }
    return {next.begin(), next.end()};
}

} // namespace tool
