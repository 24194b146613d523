// library.h - the library as a candidate: linked like any program of the node, linked without a procedure linkage
// table, or another build of it, loaded from a file.
#pragma once

#include "beside_writer.h"
#include "works.h"

// Attaches the linked library for writing to a new object; false when it could not.
bool OpenLinked();
std::vector<Work> LinkedWorks(const Scene& sScene);
std::vector<Work> LinkedWorksWithoutPlt(const Scene& sScene);

// The build in a file attaches to the same object.  An empty path stands for the linked library, called through
// pointers like the others.  On failure 'error' says why.
bool OpenLoaded(const std::string& path, std::string& error);
std::vector<Work> LoadedWorks(std::size_t number, const Scene& sScene); // the nth that was opened
std::vector<Asker> LibraryAskers();                                     // of all that were opened
