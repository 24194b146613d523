// tables.cpp - prints the tables of docs/layout.md and docs/cdbm.md from the table of fields that the library asserts.
//
//   document-tables layout|cdbm
#include <cstdio>
#include <cstring>
#include <string_view>

#include "region/region_layout.h"

namespace {

void PrintHead(const char* pTitle, std::size_t size)
{
    std::printf("\n### %s, %zu bytes\n\n| offset | size | field | meaning |\n|---:|---:|---|---|\n", pTitle, size);
}

void PrintRow(std::size_t offset, std::size_t size, std::string_view name, const char* pMeaning)
{
    std::printf("| %zu | %zu | `%.*s` | %s |\n", offset, size, static_cast<int>(name.size()), name.data(), pMeaning);
}

void PrintLayout()
{
    for (const LayoutRecord& sRecord : kLayout) {
        PrintHead(sRecord.pName, sRecord.size);
        for (std::size_t i = 0; i < sRecord.nbrOfRows; ++i) {
            const LayoutRow& sRow = sRecord.pRows[i];
            PrintRow(sRow.offset, sRow.size, sRow.pName, sRow.pMeaning);
        }
    }
}

// What the region's table does not have: the keys, and the bodies that the region stores in another form.
#define ROW(type, field, meaning)                                   \
    {                                                               \
#field, offsetof(type, field), sizeof(type::field), meaning \
    }
constexpr LayoutRow kPortMoid[] = {ROW(SwctPortMoid, bSlot, "1 to 3"), ROW(SwctPortMoid, bPort, "1 to 5")};
constexpr LayoutRow kVlanMoid[] = {ROW(SwctVlanMoid, wVlanId, "1 to 4095")};
constexpr LayoutRow kVlanPortMoid[] = {ROW(SwctVlanPortMoid, wVlanId, "1 to 4095"),
                                       ROW(SwctVlanPortMoid, bSlot, "1 to 3"), ROW(SwctVlanPortMoid, bPort, "1 to 5")};
constexpr LayoutRow kCVidMoid[] = {ROW(SwctCVidRegistrationMoid, bSlot, "1 to 3"),
                                   ROW(SwctCVidRegistrationMoid, bPort, "1 to 5"),
                                   ROW(SwctCVidRegistrationMoid, wCVid, "1 to 4094")};
constexpr LayoutRow kTranslationMoid[] = {ROW(SwctVidTranslationMoid, bSlot, "1 to 3"),
                                          ROW(SwctVidTranslationMoid, bPort, "1 to 5"),
                                          ROW(SwctVidTranslationMoid, wLocalVid, "1 to 4094")};
constexpr LayoutRow kPepMoid[] = {ROW(SwctProviderEdgePortMoid, bSlot, "1 to 3"),
                                  ROW(SwctProviderEdgePortMoid, bPort, "1 to 5"),
                                  ROW(SwctProviderEdgePortMoid, wPepIndex, "1 to 16")};
constexpr LayoutRow kPriorityMoid[] = {ROW(SwctServicePriorityRegenerationMoid, bSlot, "1 to 3"),
                                       ROW(SwctServicePriorityRegenerationMoid, bPort, "1 to 5"),
                                       ROW(SwctServicePriorityRegenerationMoid, wPepIndex, "1 to 16"),
                                       ROW(SwctServicePriorityRegenerationMoid, dwPriority, "received, 1 to 8")};
constexpr LayoutRow kVlanPortFields[] = {ROW(SwctVlanPortAttributes, bSlot, "1 to 3"),
                                         ROW(SwctVlanPortAttributes, bPort, "1 to 5"),
                                         ROW(SwctVlanPortAttributes, dwStatus, "1 in results, ignored in requests"),
                                         ROW(SwctVlanPortAttributes, dwMembership, "0 none, 1 tagged, 2 untagged")};
constexpr LayoutRow kPriorityFields[] = {ROW(SwctServicePriorityRegeneration, dwPriority, "received, 1 to 8"),
                                         ROW(SwctServicePriorityRegeneration, dwRegeneratedPriority, "1 to 8")};
constexpr LayoutRow kHrlb[] = {{"dwHrlb", 0, sizeof(uint32_t), "HRLB setting"}};
#undef ROW

struct Rows {
    const LayoutRow* pRows = nullptr;
    std::size_t nbrOfRows = 0;
    const char* pPrefix = ""; // only the rows whose name begins so
    Rows() = default;
    template <std::size_t kRows>
    constexpr Rows(const LayoutRow (&aRows)[kRows], const char* pOnly = "")
        : pRows(aRows), nbrOfRows(kRows), pPrefix(pOnly)
    {
    }
};

struct CdbmRecord {
    const char* pTitle;
    std::size_t size;
    Rows sMoid;
    Rows sBody;
};

const CdbmRecord kRecords[] = {
    {"176, switch: no Moid", sizeof(SwctSwitchAttributes), {}, kSwitchFields},
    {"177, switch port", sizeof(SwctSwitchPortRecord), kPortMoid, kSwitchPortFields},
    {"205, VLAN", sizeof(SwctVlanRecord), kVlanMoid, {kVlanEntryFields, "sVlanData."}},
    {"206, VLAN port", sizeof(SwctVlanPortRecord), kVlanPortMoid, kVlanPortFields},
    {"369, C-VID registration", sizeof(SwctCVidRegistrationRecord), kCVidMoid, kCVidRegistrationFields},
    {"427, service priority regeneration", sizeof(SwctServicePriorityRegenerationRecord), kPriorityMoid,
     kPriorityFields},
    {"437, VID translation", sizeof(SwctVidTranslationRecord), kTranslationMoid, kVidTranslationFields},
    {"469, provider edge port", sizeof(SwctProviderEdgePortRecord), kPepMoid, kProviderEdgePortFields},
    {"514, QinQ port", sizeof(SwctQinQPortRecord), kPortMoid, kQinQPortFields},
    {"538, default C-VID registration", sizeof(SwctDefaultCVidRegistrationRecord), kPortMoid,
     kDefaultCVidRegistrationFields},
    {"769, inner tag of a VLAN interface",
     sizeof(SwctVlanIfInnerTagRecord),
     kVlanMoid,
     {kVlanEntryFields, "sInnerTag."}},
    {"867, HRLB: no Moid", sizeof(uint32_t), {}, kHrlb},
};

// Prints rows one behind the other from 'offset' on; returns where they end.
std::size_t PrintRows(const Rows& sRows, std::size_t offset, std::size_t limit)
{
    const std::size_t length = std::strlen(sRows.pPrefix);
    for (std::size_t i = 0; i < sRows.nbrOfRows && offset < limit; ++i) {
        const LayoutRow& sRow = sRows.pRows[i];
        if (std::strncmp(sRow.pName, sRows.pPrefix, length) == 0) {
            PrintRow(offset, sRow.size, sRow.pName + length, sRow.pMeaning);
            offset += sRow.size;
        }
    }
    return offset;
}

bool PrintCdbmRecords()
{
    bool isWhole = true;
    for (const CdbmRecord& sRecord : kRecords) {
        PrintHead(sRecord.pTitle, sRecord.size);
        std::size_t end = 0;
        if (sRecord.sMoid.nbrOfRows > 0) {
            PrintRow(0, sizeof(uint16_t), "wClassId", "the class");
            end = PrintRows(sRecord.sMoid, sizeof(uint16_t), sRecord.size);
        }
        isWhole = PrintRows(sRecord.sBody, end, sRecord.size) == sRecord.size && isWhole;
    }
    return isWhole;
}

} // namespace

int main(int argc, char** argv)
{
    const std::string_view which = argc == 2 ? argv[1] : "";
    if (which == "layout") {
        PrintLayout();
        return 0;
    }
    if (which == "cdbm") {
        return PrintCdbmRecords() ? 0 : 1;
    }
    std::fprintf(stderr, "usage: document-tables layout|cdbm\n");
    return 2;
}
