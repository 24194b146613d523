// main.cpp - piovios-exporter: the page, the metrics and the documents of a node over HTTP, read-only.
//
// One thread: the library's iterators are for one.  The main loop looks at the region, and lets the HTTP library answer
// what has come.  A process attaches to a region once; when the region was created anew, the exporter starts itself
// anew, with its socket, so that no connection is refused meanwhile.
#include "file/read_names.h"
#include "listen.h"
#include "node.h"
#include "objects/failure.h"
#include "objects/names.h"
#include "platform/standin.h"
#include "server.h"
#include "terminal/interrupt.h"
#include "terminal/text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <climits>
#include <csignal>
#include <cstdio>
#include <fmt/format.h>
#include <poll.h>
#include <unistd.h>

namespace {

using namespace exporter;
using tool::Failure;

struct Options {
    std::string listen = "127.0.0.1";
    std::vector<std::string> hosts;
    std::string names;
};

char aProgram[PATH_MAX] = {};
char** ppArguments = nullptr;

// Also from a signal handler.
void StartAnew()
{
    execv(aProgram, ppArguments);
    _exit(tool::kNoRegion); // what supervises starts another one
}

// The object was cut off under the mapping.  In a new process attaching to it fails, and that is told.
void StartAnewAfter(int /*signal*/)
{
    StartAnew();
}

void PrepareToStartAnew(char** argv)
{
    ppArguments = argv;
    if (readlink("/proc/self/exe", aProgram, sizeof(aProgram) - 1) < 0) {
        throw Failure(tool::kBadInput, "there is no /proc/self/exe: mount /proc");
    }
    struct sigaction action = {};
    action.sa_handler = StartAnewAfter;
    action.sa_flags = SA_NODEFER; // or the new process would be born with the signal blocked
    sigaction(SIGBUS, &action, nullptr);
}

void CheckHosts(const std::vector<std::string>& hosts)
{
    for (const std::string& host : hosts) {
        const bool isBracketed = host.starts_with('[') && host.ends_with(']');
        if (host.empty() || host.find_first_of(isBracketed ? " \t\r\n" : ": \t\r\n") != std::string::npos) {
            throw Failure(tool::kBadInput,
                          fmt::format("--host: '{}' must be a name without a port, such as node.example.org or "
                                      "[2001:db8::1]",
                                      tool::CleanText(host)));
        }
    }
}

int Serve(const Options& options)
{
    Address address = ParseAddress(options.listen);
    const int listener = Listen(address);
    std::vector<std::string> hosts = {"localhost", "[::1]", "ip6-localhost", address.InUrl()};
    hosts.insert(hosts.end(), options.hosts.begin(), options.hosts.end());
    fmt::print("listening on http://{}/\n", address.Text());
    std::fflush(stdout);
    tool::CatchInterrupts();
    Node node;
    Server server(node, listener, std::move(hosts));
    while (!tool::Interrupted()) {
        if (Clock::now() >= node.NextLook()) {
            node.Look();
        }
        if (node.MustStartAnew()) {
            server.Finish();
            StartAnew();
        }
        const auto until = std::min(node.NextLook(), server.Deadline()) - Clock::now();
        pollfd ready = {server.Descriptor(), POLLIN, 0};
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(until).count();
        poll(&ready, 1, static_cast<int>(std::max<decltype(wait)>(wait, 0)));
        server.Run();
    }
    return tool::kOk;
}

int Run(int argc, char** argv)
{
    CLI::App app("Serves a node's layer-2 switch configuration over HTTP: a page, metrics, JSON", "piovios-exporter");
    Options options;
    app.set_version_flag("--version", "piovios-exporter " PIOVIOS_VERSION);
    app.add_option("--listen", options.listen, "Where to listen: an IP address, with or without a port (19821)")
        ->type_name("ADDRESS[:PORT]")
        ->capture_default_str();
    app.add_option("--host", options.hosts, "Another name of this server, as the header Host has it; may be repeated")
        ->type_name("NAME")
        ->allow_extra_args(false);
    app.add_option("--names", options.names, "File of the site's names for values, counters and stamps")
        ->type_name("FILE")
        ->envname("PIOVIOS_NAMES");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& wanted) { // --help, --version
        return app.exit(wanted);
    } catch (const CLI::ParseError& error) {
        throw Failure(tool::kBadInput, fmt::format("{}; see 'piovios-exporter --help'", error.what()));
    }
    CheckHosts(options.hosts);
    Standin__SetErrorTracing(0);
    if (!options.names.empty()) {
        tool::UseNames(tool::ReadNames(options.names));
    }
    PrepareToStartAnew(argv);
    return Serve(options);
}

} // namespace

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return Run(argc, argv);
    } catch (const Failure& failure) {
        fmt::print(stderr, "piovios-exporter: {}\n", failure.what());
        return failure.exitCode;
    } catch (const std::exception& fault) {
        fmt::print(stderr, "piovios-exporter: internal error: {}; please report it\n", fault.what());
        return tool::kBadInput;
    }
}
