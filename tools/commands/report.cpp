// report.cpp - a picture of the node in one HTML file.
#include "check/inspect.h"
#include "commands/command.h"
#include "file/text_file.h"
#include "objects/failure.h"
#include "page/page.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"

#include <CLI/CLI.hpp>
#include <ctime>

namespace tool {

namespace {

int WriteReport(const std::string& file)
{
    AttachForReading();
    const Findings findings = Inspect();
    std::string data;
    TakeSteadyPicture([&](const Picture& picture) {
        data = PageData(picture, ReadConfiguration(picture), findings, static_cast<uint64_t>(std::time(nullptr)));
    });
    if (file.empty() || file == "-") {
        Print(ReportPage(data));
    } else {
        WriteTextFile(file, ReportPage(data));
    }
    return kOk;
}

} // namespace

Action SetUpReport(CLI::App& command)
{
    auto file = std::make_shared<std::string>();
    command.add_option("HTML", *file, "Where to write; without it, or -, the standard output");
    return [file](const Globals&) { return WriteReport(*file); };
}

} // namespace tool
