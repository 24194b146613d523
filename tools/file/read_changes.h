// read_changes.h - change sets, as diff and watch print them with --json, read again.
#pragma once

#include "file/faults.h"
#include "objects/changes.h"

#include <optional>

namespace tool {

// One document: what diff prints, or a line of watch.
struct ParsedChanges {
    std::vector<ObjectChange> changes;
    bool isEvent = false;     // one change of watch
    std::size_t nrOfMore = 0; // that belong to these and follow in documents of their own
    std::vector<ConfigFault> faults;
    std::size_t nrOfErrors = 0;
    std::size_t nrOfWarnings = 0;
};

// 'line' is that of the text's first line in its file.
ParsedChanges ParseChanges(std::string_view text, std::size_t line, Strictness strictness);

// Cuts a text that comes in pieces into its JSON values.
class ValueCutter {
public:
    struct Value {
        std::string text;
        std::size_t line;
    };

    void Add(std::string_view piece)
    {
        m_text += piece;
    }
    // The next value that is complete; at the end of the text also what is left, which is none.
    std::optional<Value> Next(bool isEnd);

private:
    std::string m_text;
    std::size_t m_line = 1;
    // How far the value at the start of the text has been looked at.
    std::size_t m_seen = 0;
    std::size_t m_depth = 0;
    bool m_isInString = false;
};

} // namespace tool
