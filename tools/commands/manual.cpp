// manual.cpp - the parts of the manual pages that follow from the command's own tables, as roff.
#include "commands/command.h"
#include "commands/help.h"
#include "file/describe.h"
#include "file/roff.h"
#include "terminal/terminal.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <sstream>

namespace tool {

namespace {

// "--port SLOT/PORT", the words bold and the value in italics.
std::string OptionHead(const CLI::Option& option)
{
    std::string head;
    for (const std::string& name : option.get_snames()) {
        head += fmt::format("\\fB{}\\fR, ", Roff("-" + name));
    }
    for (const std::string& name : option.get_lnames()) {
        head += fmt::format("\\fB{}\\fR", Roff("--" + name));
    }
    if (option.get_positional()) {
        head += fmt::format("\\fI{}\\fR", Roff(option.get_name(true)));
    }
    const std::string type = option.get_items_expected_max() > 0 ? option.get_type_name() : "";
    const bool isPlain = type.empty() || type == "TEXT" || type == "UINT" || type == option.get_name(true);
    return head + (isPlain ? "" : fmt::format(" \\fI{}\\fR", Roff(type)));
}

std::string OptionsOf(const CLI::App& app)
{
    std::string text;
    for (const CLI::Option* option : app.get_options()) {
        const bool isOfAll = option == app.get_help_ptr() && app.get_parent() != nullptr;
        if (option->get_group().empty() || isOfAll) {
            continue;
        }
        const std::string variable = option->get_envname();
        const std::string byDefault = option->get_default_str();
        text += fmt::format(".TP\n{}\n{}{}{}.\n", OptionHead(*option), RoffLine(option->get_description()),
                            byDefault.empty() ? "" : "; default: " + Roff(byDefault),
                            variable.empty() ? "" : "; environment: " + Roff(variable));
    }
    return text;
}

// "piovios show vlans [OPTIONS]"
std::string Synopsis(const std::string& name, const CLI::App& app)
{
    std::string synopsis = fmt::format("\\fB{}\\fR", Roff(name));
    bool hasOptions = false;
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_positional()) {
            synopsis += option->get_required() ? fmt::format(" \\fI{}\\fR", option->get_name(true))
                                               : fmt::format(" [\\fI{}\\fR]", option->get_name(true));
        } else {
            hasOptions = hasOptions || (!option->get_group().empty() && option != app.get_help_ptr());
        }
    }
    return synopsis + (hasOptions ? " [\\fIoptions\\fR]" : "");
}

// A command, then those below it.
void AddCommands(std::string& text, const std::string& name, const CLI::App& app)
{
    const auto below = app.get_subcommands([](const CLI::App* candidate) { return !candidate->get_group().empty(); });
    if (app.get_parent() != nullptr) {
        text += fmt::format(".SS {}\n{}.\n{}", Synopsis(name, app), RoffLine(app.get_description()), OptionsOf(app));
        std::istringstream footer(app.get_footer());
        std::string examples;
        for (std::string line; std::getline(footer, line);) {
            if (line.starts_with(kNoteMark)) {
                text += fmt::format(".PP\nOf the common options: {}.\n", RoffLine(line.substr(1)));
            } else {
                examples += RoffLine(line) + '\n';
            }
        }
        text += below.empty() && !examples.empty() ? ".PP\n.EX\n" + examples + ".EE\n" : "";
    }
    for (const CLI::App* command : below) {
        AddCommands(text, app.get_parent() == nullptr ? command->get_name() : name + ' ' + command->get_name(),
                    *command);
    }
}

} // namespace

Action SetUpManual(CLI::App& command)
{
    auto what = std::make_shared<std::string>();
    command.add_option("WHAT", *what, "Which part")
        ->type_name("commands|options|members")
        ->required()
        ->check(CLI::IsMember({"commands", "options", "members"}).description(""));
    return [what, &command](const Globals&) {
        const CLI::App& root = *command.get_parent();
        std::string text;
        if (*what == "commands") {
            AddCommands(text, "", root);
        } else {
            text = *what == "options" ? OptionsOf(root) : ConfigurationManual();
        }
        Print(text);
        return 0;
    };
}

} // namespace tool
