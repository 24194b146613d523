// grid.h - rows of text cells as a table that fits the terminal, or as a sheet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

enum class Fit {
    kNumber, // to the right, never cut
    kWhole,  // never cut
    kCut     // shortened where the terminal is too narrow
};

class Grid {
public:
    // The next cell of the present row; its column is known by its place in the row.
    void Add(std::string_view title, std::string cell, Fit fit = Fit::kWhole);
    void EndRow();
    std::size_t NrOfRows() const
    {
        return m_nrOfRows;
    }
    // A column in which no cell has anything to show is left out.
    void HideIfEmpty(std::string_view title);

    // 'width' in columns of the terminal; 0: no limit.
    std::string TableText(unsigned width) const;
    // Lines of title and value of the only row.
    std::string SheetText() const;

private:
    struct Column {
        std::string title;
        Fit fit;
        bool isHidden = false;
        std::vector<std::string> cells{};
    };

    std::vector<std::size_t> Widths(unsigned width) const;

    std::vector<Column> m_columns;
    std::size_t m_next = 0; // column of the next cell
    std::size_t m_nrOfRows = 0;
};

// Characters on the screen: every one but the further bytes of UTF-8 sequences.
std::size_t WidthOf(std::string_view text);

} // namespace tool
