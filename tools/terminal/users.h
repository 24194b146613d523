// users.h - who has the region mapped, as far as /proc tells.
#pragma once

#include "terminal/attach.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace tool {

struct RegionUser {
    pid_t process;
    std::string name; // clean
    bool isWriter;    // has it mapped for writing
};

// The other processes, by id.  Those of other users are told only to root.
std::vector<RegionUser> UsersOf(const RegionIdentity& region);

// "cdbm (312), collector (401)"
std::string ToText(const std::vector<RegionUser>& users);

} // namespace tool
