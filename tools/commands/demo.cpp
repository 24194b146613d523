// demo.cpp - a small node of real processes on a region of its own.
//
// Every process is this program again with another command: what the demo shows is what a user can type.
#include "commands/command.h"
#include "commands/demo_collector.h"
#include "objects/failure.h"
#include "terminal/attach.h"
#include "terminal/terminal.h"
#include "terminal/text.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace tool {

namespace {

using Words = std::vector<std::string>;

constexpr char kProgram[] = "/proc/self/exe";

// The node's processes and its region; takes all of them away at its end, however that comes.
class Node {
public:
    Node()
    {
        const std::string name = fmt::format("piovios-demo-{}-", getpid());
        setenv("PIOVIOS_SHM_PREFIX", name.c_str(), 1);
        m_state = std::filesystem::temp_directory_path() / name;
        setenv("STATE_DIRECTORY", m_state.c_str(), 1);
        // These signals wait until the node looks at them, so none gets lost between a look and a sleep.
        sigemptyset(&m_signals);
        for (const int number : {SIGCHLD, SIGINT, SIGTERM, SIGHUP}) {
            sigaddset(&m_signals, number);
        }
        sigprocmask(SIG_BLOCK, &m_signals, &m_former);
    }
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    ~Node()
    {
        for (const pid_t process : m_running) {
            kill(process, SIGTERM);
        }
        for (const pid_t process : m_running) {
            waitpid(process, nullptr, 0);
        }
        try {
            RemoveRegion();
        } catch (const Failure&) { // it was not created yet
        }
        std::error_code error; // nothing of it matters to anybody
        std::filesystem::remove_all(m_state, error);
    }

    pid_t Start(const Words& words)
    {
        Flush(); // or both would write what is buffered
        const pid_t parent = getpid();
        const pid_t process = fork();
        if (process < 0) {
            throw Failure(kBadInput,
                          fmt::format("cannot start a process: {}; raise the limit (ulimit -u)", std::strerror(errno)));
        }
        if (process == 0) {
            Become(words, parent);
        }
        m_running.push_back(process);
        return process;
    }

    // Its exit code; a signal to the demo ends the demo instead.
    int WaitFor(pid_t process)
    {
        for (;;) {
            int status = 0;
            if (waitpid(process, &status, WNOHANG) == process) {
                std::erase(m_running, process);
                return WIFEXITED(status) ? WEXITSTATUS(status) : kInterrupted;
            }
            if (const int number = sigwaitinfo(&m_signals, nullptr); number > 0 && number != SIGCHLD) {
                return kInterrupted;
            }
        }
    }

private:
    // In the new process.  Never returns.
    [[noreturn]] void Become(const Words& words, pid_t parent) const
    {
        std::vector<char*> arguments;
        for (const std::string& word : words) {
            arguments.push_back(const_cast<char*>(word.c_str())); // execv leaves them alone
        }
        arguments.push_back(nullptr);
        sigprocmask(SIG_SETMASK, &m_former, nullptr);
        prctl(PR_SET_PDEATHSIG, SIGTERM); // no process outlives the demo
        if (getppid() == parent) {
            execv(kProgram, arguments.data());
        }
        _exit(kBadInput);
    }

    std::filesystem::path m_state;
    sigset_t m_signals{};
    sigset_t m_former{};
    std::vector<pid_t> m_running;
};

std::string Example(const char* name)
{
    namespace fs = std::filesystem;
    const fs::path program = fs::read_symlink(kProgram);
    const fs::path installation = program.parent_path().parent_path();
    return fs::proximate(installation / "share" / "piovios" / "examples" / name);
}

struct Scene {
    const char* text;
    Words words;
};

void Announce(const Scene& scene)
{
    std::string command;
    for (const std::string& word : scene.words) {
        command += (command.empty() ? "" : " ") + CleanText(word);
    }
    Print(fmt::format("\n{}\n{}\n", Styled(Style::kHeading, scene.text), Styled(Style::kFaint, "$ " + command)));
}

int Play(Node& node, const Scene& scene)
{
    Announce(scene);
    return node.WaitFor(node.Start(scene.words));
}

int Demo(const std::string& file)
{
    const Scene begin[] = {
        {"The process that starts the node creates the region:", {"piovios", "init"}},
        {"The CDBM attaches for writing and pushes the configuration:", {"piovios", "load", file}},
    };
    const Scene collector = {"The collector attaches for writing and writes a day of queue history, time running fast.",
                             {"piovios", "demo", "--collector"}};
    const Scene whileItRuns[] = {
        {"Meanwhile others attach for reading.  The switch:", {"piovios", "show", "switch"}},
        {"The VLANs with their members:", {"piovios", "show", "vlans"}},
        {"The ports:", {"piovios", "show", "ports"}},
        {"The provider edge ports of the customer edge ports:", {"piovios", "show", "peps"}},
    };
    const Scene end[] = {
        {"The history of one queue; a file of the site says what the counters count and what a stamp is:",
         {"piovios", "history", "1/1/8", "--last", "24", "--names", Example("demo.names.json")}},
        {"The region on one screen:", {"piovios", "status"}},
        {"And an audit of the region:", {"piovios", "check"}},
    };
    Node node;
    int exitCode = kOk;
    const auto play = [&](const auto& scenes) {
        for (const Scene& scene : scenes) {
            exitCode = exitCode == kOk ? Play(node, scene) : exitCode;
        }
    };
    play(begin);
    if (exitCode == kOk) {
        Announce(collector);
        const pid_t process = node.Start(collector.words);
        play(whileItRuns);
        exitCode = exitCode == kOk ? node.WaitFor(process) : exitCode;
    }
    play(end);
    return exitCode;
}

} // namespace

Action SetUpDemo(CLI::App& command)
{
    struct Options {
        std::string file;
        bool isCollector = false;
    };
    auto options = std::make_shared<Options>();
    command.add_option("FILE", options->file, "Configuration of the node; without it, a metro access node");
    command.add_flag("--collector", options->isCollector)->group(""); // the demo's own
    return [options](const Globals& globals) {
        if (globals.json) {
            throw Failure(kBadInput, "the demo is for people: leave out --json");
        }
        if (options->isCollector) {
            RunCollector();
            return +kOk;
        }
        return Demo(options->file.empty() ? Example("metro-access.json") : options->file);
    };
}

} // namespace tool
