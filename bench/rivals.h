// rivals.h - what a user would take in place of the library.
#pragma once

#include "store.h"
#include "works.h"

// LMDB, SQLite: a table for each class, asked through the common interface.
std::vector<Work> StoreWorks(Store& store, const Scene& sScene);
// Bitmaps, sorted arrays and replies kept ready in a process's own memory, built anew by every write of their class.
// Where they win, they show what the record pays for having no index.
std::vector<Work> IndexWorks(const Scene& sScene);
