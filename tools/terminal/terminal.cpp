#include "terminal/terminal.h"

#include "objects/failure.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fmt/format.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tool {

namespace {

bool MayColour()
{
    const char* noColour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return (noColour == nullptr || *noColour == '\0') && isatty(STDOUT_FILENO) == 1 &&
           (terminal == nullptr || std::strcmp(terminal, "dumb") != 0);
}

void FailToWrite()
{
    if (errno == EPIPE) {
        throw OutputClosed();
    }
    throw Failure(kNotWritten, fmt::format("cannot write the output: {}; make room or give another place for it",
                                           std::strerror(errno)));
}

} // namespace

std::string JsonText(const Json& members, int indent)
{
    Json document = {{"schema", kJsonSchema}};
    document.update(members);
    // Texts of the region are clean already; others (file names) need not be UTF-8.
    return document.dump(indent, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::string Styled(Style style, std::string_view text)
{
    static const bool mayColour = MayColour();
    constexpr const char* kCodes[] = {"", "1", "2", "32", "33", "31;1"};
    if (!mayColour || style == Style::kPlain) {
        return std::string(text);
    }
    return fmt::format("\033[{}m{}\033[0m", kCodes[static_cast<std::size_t>(style)], text);
}

unsigned TerminalWidth()
{
    winsize size = {};
    return isatty(STDOUT_FILENO) == 1 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

void Print(std::string_view text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
        FailToWrite();
    }
}

void PrintJson(const Json& members)
{
    Print(JsonText(members));
}

void PrintJsonLine(const Json& members)
{
    Print(JsonText(members, -1));
}

void Flush()
{
    if (std::fflush(stdout) != 0) {
        FailToWrite();
    }
}

void ThrowIfClosed()
{
    pollfd output = {STDOUT_FILENO, 0, 0};
    if (poll(&output, 1, 0) > 0 && (output.revents & POLLERR) != 0) {
        throw OutputClosed();
    }
}

} // namespace tool
