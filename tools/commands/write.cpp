// write.cpp - the one way in which a command changes the configuration of the region.
#include "commands/write.h"

#include "commands/help.h"
#include "objects/failure.h"
#include "terminal/attach.h"

#include <fmt/format.h>

namespace tool {

void AddWriteOptions(CLI::App& command, WriteOptions& options)
{
    command.add_option("--wait", options.waitSeconds, "Seconds to wait while another command writes")
        ->check(InRange(0, 86400))
        ->type_name("SECONDS");
}

void ChangeRegion(const std::string& what, const WriteOptions& /*options*/, const Change& change)
{
    AttachForWriting();
    const Configuration wanted = change(ReadRegion());
    PushToRegion(wanted);
    const auto differences = Diff(wanted, ReadRegion());
    if (!differences.empty()) {
        throw Failure(kFindings, fmt::format("loaded {}, but the region differs from it ({}): does another process "
                                             "write to it?",
                                             what, ToText(differences.front())));
    }
}

} // namespace tool
