// names.h - the site's names for values that only the node's other modules can name.  The region holds numbers; a file
// of the site (--names FILE, PIOVIOS_NAMES) may say what they are called.
#pragma once

#include "swct/config_records.h"
#include "swct/queue_history.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

// How the two words of a history record's stamp make a time.
struct StampMeaning {
    enum class Words { kFirst, kSecond, kLowHigh, kHighLow };
    Words words = Words::kFirst;
    bool isMilliseconds = false; // else seconds; since 1970, UTC
    bool isStart = false;        // of the period; else its last update or end
};

class SiteNames {
public:
    // A field by the names that 'save' gives list and member, such as "ports.frameAdmission".
    void Set(std::string_view field, uint32_t value, std::string name);
    // Null when the site has no name for the value.
    const std::string* Find(std::string_view field, uint32_t value) const;
    // The name, else the number as text.
    std::string Text(std::string_view field, uint32_t value) const;

    // [counter - 1]; empty: no name.
    std::array<std::string, SWCT_HISTORY_COUNTERS> counters;
    // "Counter 3", or what the site calls it.
    std::string CounterTitle(std::size_t counter) const;

    std::optional<StampMeaning> stamp;
    // Seconds since 1970; nothing when the file does not say what a stamp is.
    std::optional<uint64_t> TimeOf(uint32_t firstWord, uint32_t secondWord) const;

private:
    std::map<std::string, std::map<uint32_t, std::string>, std::less<>> m_names; // [field][value]
};

// The names in force: none until they are set.
const SiteNames& Names();
void UseNames(SiteNames names);

} // namespace tool
