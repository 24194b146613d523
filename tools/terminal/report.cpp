#include "terminal/report.h"

#include "objects/names.h"
#include "terminal/terminal.h"
#include "terminal/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

Report::Report(bool asJson, std::string_view key, Shape shape) : m_isJson(asJson), m_shape(shape), m_key(key)
{
    if (m_isJson) {
        m_writer.Open('{');
        m_writer.Name(member::kSchemaNumber).Number(kJsonSchema);
    }
}

void Report::BeginRow()
{
    if (!m_isJson) {
        return;
    }
    if (m_shape == Shape::kSheet) {
        m_writer.Name(m_key);
    } else if (!m_isListOpen) {
        m_isListOpen = true;
        m_writer.Name(m_key).Open('[');
    }
    m_writer.Open('{');
}

void Report::EndRow()
{
    ++m_nrOfRows;
    if (m_isJson) {
        m_writer.Close();
    } else {
        m_grid.EndRow();
    }
}

std::string PlainText(const ObjectClass& row, const Field& field, const void* pRecord)
{
    const auto bytes = BytesOf(field, pRecord);
    if (field.notation == Notation::kName) {
        return CleanText(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    if (field.notation == Notation::kBytes && IsDefault(field, pRecord)) {
        return "";
    }
    const uint32_t number = NumberOf(field, pRecord);
    if (field.look == Look::kTime) {
        return number == 0 ? "" : TimeText(number);
    }
    if (field.notation == Notation::kNumber && field.words.empty()) {
        const std::string name = std::string(row.member) + '.' + std::string(field.name);
        if (const std::string* const pName = Names().Find(name, number)) {
            return *pName;
        }
    }
    std::string text;
    AppendValue(text, field, pRecord);
    if (text == "true" || text == "false") {
        return text == "true" ? "yes" : "no";
    }
    return text.starts_with('"') ? text.substr(1, text.size() - 2) : text;
}

void Report::FieldCell(const ObjectClass& row, const Field& field, const void* pRecord)
{
    const bool isNumber = field.notation == Notation::kNumber && field.words.empty() && field.look == Look::kPlain;
    m_grid.Add(field.title, PlainText(row, field, pRecord),
               isNumber                            ? Fit::kNumber
               : field.notation == Notation::kName ? Fit::kCut
                                                   : Fit::kWhole);
}

void Report::Fields(Class id, std::initializer_list<std::string_view> names, const void* pRecord)
{
    for (const std::string_view name : names) {
        if (!m_isJson) {
            FieldCell(RowOf(id), FieldOf(id, name), pRecord);
        }
    }
}

void Report::AllFields(Class id, const void* pRecord)
{
    for (const Field& field : RowOf(id).fields) {
        // Numbers of a record that repeat its key are worth a line only when they do not.
        if (!m_isJson && !(field.sameAs != kNoField && field.IsNumber() && IsDefault(field, pRecord))) {
            FieldCell(RowOf(id), field, pRecord);
        }
    }
}

void Report::Cell(std::string_view title, std::string text, Fit fit)
{
    if (!m_isJson) {
        m_grid.Add(title, std::move(text), fit);
    }
}

void Report::Text(std::string_view name, std::string_view title, const std::string& text)
{
    if (m_isJson) {
        m_writer.Name(name).Text(text);
    } else {
        m_grid.Add(title, CleanText(text));
    }
}

void Report::Number(std::string_view name, std::string_view title, uint64_t number, bool isNoneZero)
{
    if (!m_isJson) {
        m_grid.Add(title, number == 0 && isNoneZero ? "" : std::to_string(number), Fit::kNumber);
    } else if (number == 0 && isNoneZero) {
        m_writer.Name(name).Null();
    } else {
        m_writer.Name(name).Number(number);
    }
}

// "1/1-3 2/1".
void Report::PortCell(const char* title, const std::vector<Port>& ports)
{
    std::string text;
    for (auto port = ports.begin(); port != ports.end() && !m_isJson;) {
        const Port first = *port;
        Port last = first;
        while (++port != ports.end() && port->slot == last.slot && port->port == last.port + 1) {
            last = *port;
        }
        text += (text.empty() ? "" : " ") + ToText(first);
        text += last == first ? "" : '-' + std::to_string(last.port);
    }
    Cell(title, std::move(text), Fit::kCut);
}

void Report::Ports(std::string_view name, const char* title, const std::vector<Port>& ports)
{
    if (!m_isJson) {
        return PortCell(title, ports);
    }
    m_writer.Name(name).Open('[');
    for (const Port port : ports) {
        m_writer.Text(ToText(port));
    }
    m_writer.Close();
}

void Report::Vids(std::string_view name, const char* title, const std::vector<VidRange>& vids)
{
    const std::string text = VidListText(vids);
    if (!m_isJson) {
        m_grid.Add(title, text, Fit::kCut);
    } else if (text.empty()) {
        m_writer.Name(name).Null();
    } else {
        m_writer.Name(name).Text(text);
    }
}

void Report::Note(std::string_view name, bool value)
{
    if (m_isJson) {
        m_writer.Name(name).YesNo(value);
    }
}

void Report::Print(std::string_view what)
{
    if (m_isJson) {
        if (m_shape == Shape::kTable && !m_isListOpen) {
            m_writer.Name(m_key).Open('[');
        }
        if (m_shape == Shape::kTable) {
            m_writer.Close();
        }
        m_writer.Close();
        tool::Print(m_writer.Take());
    } else if (m_shape == Shape::kSheet) {
        tool::Print(m_grid.SheetText());
    } else if (m_nrOfRows == 0) {
        tool::Print(m_nrOfSkipped == 0 ? fmt::format("no {}\n", what)
                                       : fmt::format("none of {} {} matches\n", m_nrOfSkipped, what));
    } else {
        tool::Print(m_grid.TableText(TerminalWidth()));
    }
}

} // namespace tool
