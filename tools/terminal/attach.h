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

// From now on the region is a copy of one in a file: it can be read, and all else throws a Failure.
void UseCopy(const std::string& file);
bool IsCopy();
void RefuseCopy();

// The object's name with the prefix in force: "/swct-data"; of a copy its file.
std::string RegionName();
std::string RegionPath(); // the object as a file

// Tells one object from another that got the same name later.
struct RegionIdentity {
    dev_t device;
    ino_t inode;
    bool operator==(const RegionIdentity&) const = default;
};

// The object that has the name now, whatever its size; nothing when there is none.
std::optional<RegionIdentity> FindRegion();

} // namespace tool
