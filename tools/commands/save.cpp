// save.cpp - the region's configuration as a file.
#include "commands/command.h"
#include "file/parse.h"
#include "file/text_file.h"
#include "objects/failure.h"
#include "objects/picture.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"

#include <CLI/CLI.hpp>

namespace tool {

namespace {

// While a writer replaces the configuration, a reader can see a part of the old one and a part of the new one: the text
// counts when the region is the same some time later.
int Save(const std::string& file)
{
    AttachForReading();
    std::string text;
    TakeSteadyPicture([&text](const Picture& picture) { text = ToText(ReadConfiguration(picture)); });
    if (file.empty() || file == "-") {
        Print(text);
    } else {
        WriteTextFile(file, text);
    }
    return kOk;
}

} // namespace

Action SetUpSave(CLI::App& command)
{
    auto file = std::make_shared<std::string>();
    command.add_option("FILE", *file, "Where to write; without it, or -, the standard output");
    return [file](const Globals&) { return Save(*file); }; // what it writes is JSON in any case
}

} // namespace tool
