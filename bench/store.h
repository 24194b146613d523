// store.h - what a user would take in place of the library: a table for each class with the Moid's keys as its key and
// the record's body as its value, and where a question needs it a secondary index.
//
// Alone in its process a store keeps one read transaction open all the time and takes no locks.  Beside a writer in
// another process it locks as it must, and every answer is a transaction of its own.  A replacement is one write
// transaction.  The files lie in shared memory and are never synced.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "scene.h"

using VisitRow = std::function<bool(uint32_t dwKey, const uint8_t* pBody)>; // false ends the scan
using VisitKey = std::function<bool(uint32_t dwKey)>;

class Store {
public:
    virtual ~Store() = default;
    // Replaces all rows of a class; makes its table when there is none.
    virtual void Replace(const ClassData& sClass) = 0;
    // Begins a new read transaction, which sees what was written until now.
    virtual void Refresh() = 0;
    // The body of a row, until the next call; null for none.
    virtual const uint8_t* Get(uint16_t wClass, uint32_t dwKey) = 0;
    // The rows with keys from 'dwFirst' to 'dwLast', ascending.
    virtual void Scan(uint16_t wClass, uint32_t dwFirst, uint32_t dwLast, const VisitRow& visit) = 0;
    // The keys of the rows with an index value, ascending from 'dwFirst' to 'dwLast'.
    virtual void Find(uint16_t wClass, uint32_t dwIndex, uint32_t dwFirst, uint32_t dwLast, const VisitKey& visit) = 0;
};

std::unique_ptr<Store> OpenLmdb(const std::string& path, bool boBesideWriter);
std::unique_ptr<Store> OpenSqlite(const std::string& path, bool boBesideWriter);
