#include <cstdio>
#include <cstdlib>
#include <map>
#include <sqlite3.h>

#include "store.h"

namespace {

class SqliteStore final : public Store {
public:
    SqliteStore(const std::string& path, bool boBesideWriter)
    {
        Check(sqlite3_open(path.c_str(), &pDb));
        Run("PRAGMA page_size=8192");
        Run(boBesideWriter ? "PRAGMA journal_mode=WAL" : "PRAGMA journal_mode=OFF");
        sqlite3_busy_timeout(pDb, 10000);
        Run("PRAGMA synchronous=OFF");
        Run("PRAGMA cache_size=-65536");
        Run("PRAGMA mmap_size=268435456");
        Run("BEGIN");
    }

    ~SqliteStore() override
    {
        for (const auto& sTable : tables) {
            for (sqlite3_stmt* pStatement :
                 {sTable.second.pGet, sTable.second.pScan, sTable.second.pFind, sTable.second.pInsert}) {
                sqlite3_finalize(pStatement);
            }
        }
        sqlite3_close(pDb);
    }

    void Refresh() override
    {
        Run("COMMIT");
        Run("BEGIN");
    }

    void Replace(const ClassData& sClass) override
    {
        const std::string name = TableName(sClass.wClass);
        Run("COMMIT");
        Run("CREATE TABLE IF NOT EXISTS " + name + " (key INTEGER PRIMARY KEY, field INTEGER, body BLOB)");
        if (sClass.aRow[0].dwIndex != 0) {
            Run("CREATE INDEX IF NOT EXISTS " + name + "_field ON " + name + " (field)"); // the key comes with it
        }
        Run("BEGIN");
        Run("DELETE FROM " + name);
        sqlite3_stmt* pInsert = Prepared(sClass.wClass).pInsert;
        for (const Row& sRow : sClass.aRow) {
            sqlite3_bind_int64(pInsert, 1, sRow.dwKey);
            sqlite3_bind_int64(pInsert, 2, sRow.dwIndex);
            sqlite3_bind_blob(pInsert, 3, sRow.pBody, static_cast<int>(sClass.bodySize), SQLITE_STATIC);
            sqlite3_step(pInsert);
            Check(sqlite3_reset(pInsert));
        }
        Run("COMMIT");
        Run("BEGIN");
    }

    const uint8_t* Get(uint16_t wClass, uint32_t dwKey) override
    {
        sqlite3_stmt* pGet = Prepared(wClass).pGet;
        sqlite3_reset(pGet);
        sqlite3_bind_int64(pGet, 1, dwKey);
        return sqlite3_step(pGet) == SQLITE_ROW ? static_cast<const uint8_t*>(sqlite3_column_blob(pGet, 0)) : nullptr;
    }

    void Scan(uint16_t wClass, uint32_t dwFirst, uint32_t dwLast, const VisitRow& visit) override
    {
        sqlite3_stmt* pScan = Prepared(wClass).pScan;
        sqlite3_bind_int64(pScan, 1, dwFirst);
        sqlite3_bind_int64(pScan, 2, dwLast);
        while (sqlite3_step(pScan) == SQLITE_ROW &&
               visit(Key(pScan), static_cast<const uint8_t*>(sqlite3_column_blob(pScan, 1)))) {
        }
        sqlite3_reset(pScan);
    }

    void Find(uint16_t wClass, uint32_t dwIndex, uint32_t dwFirst, uint32_t dwLast, const VisitKey& visit) override
    {
        sqlite3_stmt* pFind = Prepared(wClass).pFind;
        sqlite3_bind_int64(pFind, 1, dwIndex);
        sqlite3_bind_int64(pFind, 2, dwFirst);
        sqlite3_bind_int64(pFind, 3, dwLast);
        while (sqlite3_step(pFind) == SQLITE_ROW && visit(Key(pFind))) {
        }
        sqlite3_reset(pFind);
    }

private:
    struct Table {
        sqlite3_stmt* pGet;
        sqlite3_stmt* pScan;
        sqlite3_stmt* pFind;
        sqlite3_stmt* pInsert;
    };

    void Check(int iResult)
    {
        if (iResult != SQLITE_OK) {
            std::fprintf(stderr, "piovios-bench: SQLite: %s; is there room in /dev/shm?\n", sqlite3_errmsg(pDb));
            std::exit(1);
        }
    }

    static std::string TableName(uint16_t wClass)
    {
        return "class_" + std::to_string(wClass);
    }

    static uint32_t Key(sqlite3_stmt* pStatement)
    {
        return static_cast<uint32_t>(sqlite3_column_int64(pStatement, 0));
    }

    void Run(const std::string& statement)
    {
        Check(sqlite3_exec(pDb, statement.c_str(), nullptr, nullptr, nullptr));
    }

    sqlite3_stmt* Prepare(const std::string& statement)
    {
        sqlite3_stmt* pStatement = nullptr;
        Check(sqlite3_prepare_v3(pDb, statement.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &pStatement, nullptr));
        return pStatement;
    }

    Table& Prepared(uint16_t wClass)
    {
        const auto found = tables.find(wClass);
        if (found != tables.end()) {
            return found->second;
        }
        const std::string name = TableName(wClass);
        return tables[wClass] = {Prepare("SELECT body FROM " + name + " WHERE key=?"),
                                 Prepare("SELECT key, body FROM " + name + " WHERE key BETWEEN ? AND ?"),
                                 Prepare("SELECT key FROM " + name + " WHERE field=? AND key BETWEEN ? AND ?"),
                                 Prepare("INSERT INTO " + name + " VALUES (?, ?, ?)")};
    }

    sqlite3* pDb = nullptr;
    std::map<uint16_t, Table> tables;
};

} // namespace

std::unique_ptr<Store> OpenSqlite(const std::string& path, bool boBesideWriter)
{
    return std::make_unique<SqliteStore>(path, boBesideWriter);
}
