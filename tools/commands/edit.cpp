// edit.cpp - the configuration in the user's editor, and the difference back into the region.
#include "commands/change.h"
#include "commands/command.h"
#include "commands/difference_text.h"
#include "commands/faults_text.h"
#include "file/read_changes.h"
#include "file/text_file.h"
#include "objects/failure.h"
#include "objects/picture.h"
#include "terminal/attach.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tool {

namespace {

// The text in a file of its own, which is removed when it is of no more use and kept whenever something goes wrong.
class EditedFile {
public:
    explicit EditedFile(const std::string& text)
    {
        const char* const pFolder = std::getenv("TMPDIR");
        m_name = std::string(pFolder == nullptr || *pFolder == '\0' ? "/tmp" : pFolder) + "/piovios-XXXXXX.json";
        const int fd = mkstemps(m_name.data(), static_cast<int>(std::strlen(".json")));
        if (fd < 0) {
            throw Failure(kNotWritten, fmt::format("cannot write {}: {}", m_name, std::strerror(errno)));
        }
        close(fd);
        WriteTextFile(m_name, text);
    }

    const std::string& Name() const
    {
        return m_name;
    }
    void Remove() const
    {
        unlink(m_name.c_str());
    }

private:
    std::string m_name;
};

// $VISUAL and $EDITOR may have arguments, so a shell reads them.
void Edit(const EditedFile& file)
{
    const char* pEditor = std::getenv("VISUAL");
    pEditor = pEditor == nullptr || *pEditor == '\0' ? std::getenv("EDITOR") : pEditor;
    const std::string command = std::string(pEditor == nullptr || *pEditor == '\0' ? "vi" : pEditor) + " \"$1\"";
    // Ctrl-C and Ctrl-\ in the terminal are the editor's.
    const auto onInterrupt = std::signal(SIGINT, SIG_IGN);
    const auto onQuit = std::signal(SIGQUIT, SIG_IGN);
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGINT, onInterrupt);
        std::signal(SIGQUIT, onQuit);
        std::signal(SIGPIPE, SIG_DFL);
        execl("/bin/sh", "sh", "-c", command.c_str(), "sh", file.Name().c_str(), nullptr);
        _exit(127);
    }
    int status = 0;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    std::signal(SIGINT, onInterrupt);
    std::signal(SIGQUIT, onQuit);
    if (child < 0 || status != 0) {
        throw Failure(kBadInput, fmt::format("the editor '{}' failed", command.substr(0, command.size() - 5)));
    }
}

std::vector<ObjectChange> ChangesOf(const std::vector<Difference>& differences)
{
    Json list = Json::array();
    for (const Difference& difference : differences) {
        list.push_back(ToJson(difference));
    }
    const Json document = {{"schema", kSchema}, {"differences", std::move(list)}};
    return ParseChanges(document.dump(), 1, Strictness::kLenient).changes;
}

// What the user made of the text; nothing when it has faults, which are told.
std::optional<Configuration> ReadEdited(const EditedFile& file, const ChangeOptions& options)
{
    ParseResult result = Parse(ReadTextFile(file.Name()), options.lenient ? Strictness::kLenient : Strictness::kStrict);
    PrintFaults(file.Name(), result);
    return result.nrOfErrors > 0 ? std::nullopt : std::optional(std::move(result.configuration));
}

bool WantsToEditAgain(const EditedFile& file)
{
    if (isatty(STDIN_FILENO) == 0) {
        return false;
    }
    // Named before the question, as Ctrl-C is an answer too.
    std::fprintf(stderr, "The text is in %s. Edit again? [Y/n] ", file.Name().c_str());
    const int answer = std::getchar();
    for (int rest = answer; rest != '\n' && rest != EOF;) {
        rest = std::getchar();
    }
    return answer != 'n' && answer != 'N' && answer != EOF;
}

int RunEdit(const ChangeOptions& options, bool asJson)
{
    if (!options.dryRun) {
        RefuseCopy();
    }
    AttachForReading();
    std::string text;
    Configuration base;
    TakeSteadyPicture([&](const Picture& picture) {
        base = ReadConfiguration(picture);
        text = ToText(base);
    });
    // As a file says it: what the file cannot say is no edit.
    base = Parse(text, Strictness::kLenient).configuration;
    const EditedFile file(text);
    for (;;) {
        try {
            Edit(file);
            if (const auto edited = ReadEdited(file, options)) {
                const auto changes = ChangesOf(Diff(base, *edited));
                const auto apply = [&](const Configuration& present) {
                    Configuration changed = Apply(
                        present, changes, options.force ? Conflicts::kOverride : Conflicts::kRefuse, kForceAdvice);
                    RefuseToEmpty("the edited text", options.force, changed, present);
                    return changed;
                };
                ChangeAndTell("the edited text", options, apply, asJson);
                file.Remove();
                return kOk;
            }
        } catch (const Failure& failure) {
            if (failure.exitCode == kInterrupted) { // the change stays
                file.Remove();
                throw;
            }
            std::fprintf(stderr, "piovios: %s\n", failure.what());
        }
        if (!WantsToEditAgain(file)) {
            throw Failure(kBadInput, fmt::format("nothing was changed; the text is in {}", file.Name()));
        }
    }
}

} // namespace

Action SetUpEdit(CLI::App& command)
{
    auto options = std::make_shared<ChangeOptions>();
    AddChangeOptions(command, *options,
                     "Also where the region has changed meanwhile, and where no ports and VLANs are left");
    return [options](const Globals& globals) { return RunEdit(*options, globals.json); };
}

} // namespace tool
