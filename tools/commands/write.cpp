// write.cpp - the one way in which a command changes the configuration of the region.
#include "commands/write.h"

#include "objects/failure.h"
#include "terminal/attach.h"

#include <fmt/format.h>

namespace tool {

void ChangeRegion(const std::string& what, const Change& change)
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
