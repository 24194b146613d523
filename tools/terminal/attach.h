// attach.h - creating the region, attaching to it, and finding the shared-memory object that holds it.
#pragma once

#include <optional>
#include <string>
#include <sys/types.h>

namespace tool {

// All throw a Failure with the exit code of the reason.
void AttachForReading();
void AttachForWriting();
void CreateRegion();
void RemoveRegion();

// The object's name with the prefix in force: "/swct-data".
std::string RegionName();

// Tells one object from another that got the same name later.
struct RegionIdentity {
    dev_t device;
    ino_t inode;
    bool operator==(const RegionIdentity&) const = default;
};

// The object that has the name now, whatever its size; nothing when there is none.
std::optional<RegionIdentity> FindRegion();

} // namespace tool
