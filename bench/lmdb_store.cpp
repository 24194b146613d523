#include <cstdio>
#include <cstdlib>
#include <lmdb.h>
#include <map>

#include "store.h"

namespace {

void Check(int iResult)
{
    if (iResult != MDB_SUCCESS) {
        std::fprintf(stderr, "piovios-bench: LMDB: %s; is there room in /dev/shm?\n", mdb_strerror(iResult));
        std::exit(1);
    }
}

MDB_val Value(uint32_t& dwValue)
{
    return {sizeof dwValue, &dwValue};
}

uint32_t Number(const MDB_val& sValue)
{
    return *static_cast<const uint32_t*>(sValue.mv_data);
}

constexpr unsigned kTable = MDB_INTEGERKEY;
constexpr unsigned kIndex = MDB_INTEGERKEY | MDB_DUPSORT | MDB_DUPFIXED | MDB_INTEGERDUP;

class LmdbStore final : public Store {
public:
    LmdbStore(const std::string& path, bool boBesideWriter)
    {
        const unsigned flags =
            MDB_NOSUBDIR | MDB_WRITEMAP | MDB_NOSYNC | MDB_NOTLS | (boBesideWriter ? 0U : MDB_NOLOCK);
        Check(mdb_env_create(&pEnv));
        Check(mdb_env_set_maxdbs(pEnv, 32));
        Check(mdb_env_set_mapsize(pEnv, 256U << 20));
        Check(mdb_env_open(pEnv, path.c_str(), flags, 0600));
        Check(mdb_txn_begin(pEnv, nullptr, MDB_RDONLY, &pRead));
    }

    ~LmdbStore() override
    {
        CloseRead();
        mdb_env_close(pEnv);
    }

    void Refresh() override
    {
        mdb_txn_reset(pRead);
        Check(mdb_txn_renew(pRead));
    }

    void Replace(const ClassData& sClass) override
    {
        CloseRead();
        MDB_txn* pWrite = nullptr;
        Check(mdb_txn_begin(pEnv, nullptr, 0, &pWrite));
        const MDB_dbi table = Open(pWrite, sClass.wClass, kTable);
        const MDB_dbi index = Open(pWrite, sClass.wClass, kIndex);
        Check(mdb_drop(pWrite, table, 0));
        Check(mdb_drop(pWrite, index, 0));
        for (Row sRow : sClass.aRow) {
            MDB_val sKey = Value(sRow.dwKey);
            MDB_val sBody{sClass.bodySize, const_cast<uint8_t*>(sRow.pBody)}; // only read
            Check(mdb_put(pWrite, table, &sKey, &sBody, MDB_APPEND));
            if (sRow.dwIndex != 0) {
                MDB_val sIndex = Value(sRow.dwIndex);
                Check(mdb_put(pWrite, index, &sIndex, &sKey, 0));
            }
        }
        Check(mdb_txn_commit(pWrite));
        Check(mdb_txn_begin(pEnv, nullptr, MDB_RDONLY, &pRead));
    }

    const uint8_t* Get(uint16_t wClass, uint32_t dwKey) override
    {
        MDB_val sKey = Value(dwKey);
        MDB_val sBody;
        const bool boFound = mdb_get(pRead, Open(pRead, wClass, kTable), &sKey, &sBody) == MDB_SUCCESS;
        return boFound ? static_cast<const uint8_t*>(sBody.mv_data) : nullptr;
    }

    void Scan(uint16_t wClass, uint32_t dwFirst, uint32_t dwLast, const VisitRow& visit) override
    {
        MDB_cursor* pCursor = Cursor(wClass, kTable);
        MDB_val sKey = Value(dwFirst);
        MDB_val sBody;
        int iResult = mdb_cursor_get(pCursor, &sKey, &sBody, MDB_SET_RANGE);
        while (iResult == MDB_SUCCESS && Number(sKey) <= dwLast &&
               visit(Number(sKey), static_cast<const uint8_t*>(sBody.mv_data))) {
            iResult = mdb_cursor_get(pCursor, &sKey, &sBody, MDB_NEXT);
        }
    }

    void Find(uint16_t wClass, uint32_t dwIndex, uint32_t dwFirst, uint32_t dwLast, const VisitKey& visit) override
    {
        MDB_cursor* pCursor = Cursor(wClass, kIndex);
        MDB_val sIndex = Value(dwIndex);
        MDB_val sKey = Value(dwFirst);
        int iResult = mdb_cursor_get(pCursor, &sIndex, &sKey, MDB_GET_BOTH_RANGE);
        while (iResult == MDB_SUCCESS && Number(sKey) <= dwLast && visit(Number(sKey))) {
            iResult = mdb_cursor_get(pCursor, &sIndex, &sKey, MDB_NEXT_DUP);
        }
    }

private:
    // Opened once: a table's handle outlives the transaction that opened it.
    MDB_dbi Open(MDB_txn* pTransaction, uint16_t wClass, unsigned kind)
    {
        const auto [found, boIsNew] = tables.try_emplace({wClass, kind}, 0U);
        if (boIsNew) {
            const std::string name = std::to_string(wClass) + (kind == kIndex ? "-index" : "");
            const unsigned create = pTransaction == pRead ? 0U : MDB_CREATE;
            Check(mdb_dbi_open(pTransaction, name.c_str(), kind | create, &found->second));
        }
        return found->second;
    }

    MDB_cursor* Cursor(uint16_t wClass, unsigned kind)
    {
        const auto [found, boIsNew] = cursors.try_emplace(Open(pRead, wClass, kind), nullptr);
        if (boIsNew) {
            Check(mdb_cursor_open(pRead, found->first, &found->second));
        }
        return found->second;
    }

    void CloseRead()
    {
        for (const auto& sCursor : cursors) {
            mdb_cursor_close(sCursor.second);
        }
        cursors.clear();
        mdb_txn_abort(pRead);
        pRead = nullptr;
    }

    MDB_env* pEnv = nullptr;
    MDB_txn* pRead = nullptr;
    std::map<std::pair<uint16_t, unsigned>, MDB_dbi> tables;
    std::map<MDB_dbi, MDB_cursor*> cursors;
};

} // namespace

std::unique_ptr<Store> OpenLmdb(const std::string& path, bool boBesideWriter)
{
    return std::make_unique<LmdbStore>(path, boBesideWriter);
}
