// report.h - objects for people and for programs: the same rows make a table or a sheet, and a JSON document.
#pragma once

#include "file/json_writer.h"
#include "objects/catalogue.h"
#include "objects/keys.h"
#include "objects/notation.h"
#include "terminal/grid.h"

#include <initializer_list>

namespace tool {

class Report {
public:
    enum class Shape { kTable, kSheet };

    // 'key' is the JSON member of the list, or of the object of a sheet.
    Report(bool asJson, std::string_view key, Shape shape = Shape::kTable);

    bool IsJson() const
    {
        return m_isJson;
    }
    // Where the members of the present object go that people see otherwise.
    JsonWriter& Writer()
    {
        return m_writer;
    }

    void BeginRow();
    void EndRow();
    std::size_t NrOfRows() const
    {
        return m_nrOfRows;
    }
    // Objects that the filter keeps out.
    void Skip(std::size_t nrOfObjects = 1)
    {
        m_nrOfSkipped += nrOfObjects;
    }

    // For people only: fields under the titles of the catalogue.
    void Fields(Class id, std::initializer_list<std::string_view> names, const void* pRecord);
    void AllFields(Class id, const void* pRecord);
    void Cell(std::string_view title, std::string text, Fit fit = Fit::kWhole);

    // For both.  Zero is shown as "-" where 'isNoneZero', and is null for programs.
    void Text(std::string_view name, std::string_view title, const std::string& text);
    void Number(std::string_view name, std::string_view title, uint64_t number, bool isNoneZero = false);
    void PortCell(const char* title, const std::vector<Port>& ports); // for people
    void Ports(std::string_view name, const char* title, const std::vector<Port>& ports);
    void Vids(std::string_view name, const char* title, const std::vector<VidRange>& vids);
    void HideIfEmpty(std::string_view title)
    {
        m_grid.HideIfEmpty(title);
    }

    // A member of the whole document.
    void Note(std::string_view name, bool value);

    // Prints it all; 'what' is in the plural: "no VLANs", "none of 21 VLANs matches".
    void Print(std::string_view what);

private:
    void FieldCell(const ObjectClass& row, const Field& field, const void* pRecord);

    bool m_isJson;
    Shape m_shape;
    std::string m_key;
    JsonWriter m_writer;
    Grid m_grid;
    std::size_t m_nrOfRows = 0;
    std::size_t m_nrOfSkipped = 0;
    bool m_isListOpen = false;
};

// A value of a field as people read it: "yes" for true, "-" for nothing.
std::string PlainText(const ObjectClass& row, const Field& field, const void* pRecord);

} // namespace tool
