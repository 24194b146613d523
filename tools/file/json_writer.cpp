// json_writer.cpp - everything is written into one line at first; a container that turns out too long for its line is
// broken up when it closes.  What lies in a container that fits fits too, so nothing is broken up in vain.
#include "file/json_writer.h"

namespace tool {

namespace {

constexpr std::size_t kWidth = 110;
constexpr std::size_t kIndent = 2;

} // namespace

// A value or a name begins: a separator, and the place is kept.
void JsonWriter::Begin()
{
    if (m_nameStart != kNoName) {
        m_nameStart = kNoName;
        return;
    }
    if (!m_open.empty()) {
        m_text += m_open.back().elements.empty() ? "" : ", ";
        m_open.back().elements.push_back(m_text.size());
    }
}

JsonWriter& JsonWriter::Name(std::string_view name)
{
    Begin();
    m_nameStart = m_text.size();
    AppendQuoted(m_text, name);
    m_text += ": ";
    return *this;
}

void JsonWriter::Open(char bracket)
{
    const std::size_t nameStart = m_nameStart;
    Begin();
    m_open.push_back({m_text.size(), nameStart == kNoName ? m_text.size() : nameStart, bracket == '{' ? '}' : ']', {}});
    m_text += bracket;
}

void JsonWriter::Close()
{
    const Container container = std::move(m_open.back());
    m_open.pop_back();
    m_text += container.close;
    const std::size_t column = kIndent * m_open.size() + container.start - container.nameStart;
    const std::size_t length = m_text.size() - container.start;
    if (m_form == Form::kOneLine || column + length <= kWidth || container.elements.empty()) {
        return;
    }
    const std::string line = m_text.substr(container.start);
    m_text.resize(container.start);
    m_text += line[0];
    const std::size_t indent = kIndent * (m_open.size() + 1);
    for (std::size_t i = 0; i < container.elements.size(); ++i) {
        const bool isLast = i + 1 == container.elements.size();
        const std::size_t start = container.elements[i] - container.start;
        const std::size_t end = isLast ? line.size() - 1 : container.elements[i + 1] - container.start - 2; // ", "
        m_text += i == 0 ? "\n" : ",\n";
        m_text.append(indent, ' ').append(line, start, end - start);
    }
    m_text += '\n';
    m_text.append(indent - kIndent, ' ') += container.close;
}

bool JsonWriter::CloseUnlessEmpty()
{
    if (!m_open.back().elements.empty()) {
        Close();
        return false;
    }
    m_text.resize(m_open.back().nameStart);
    m_open.pop_back();
    if (!m_open.empty()) {
        m_open.back().elements.pop_back();
        if (!m_open.back().elements.empty()) {
            m_text.resize(m_text.size() - 2); // ", "
        }
    }
    return true;
}

void JsonWriter::Raw(std::string_view json)
{
    Begin();
    m_text += json;
}

void JsonWriter::Number(uint64_t number)
{
    Begin();
    AppendNumber(m_text, number);
}

void JsonWriter::Text(std::string_view text)
{
    Begin();
    AppendQuoted(m_text, text);
}

void JsonWriter::Member(const Field& field, const void* pRecord)
{
    if (field.notation == Notation::kName) {
        Name(MemberName(field, pRecord));
    } else {
        Name(field.name);
    }
    Begin();
    AppendValue(m_text, field, pRecord);
}

void JsonWriter::Members(std::span<const Field> fields, const void* pRecord)
{
    for (const Field& field : fields) {
        if (field.presence != Presence::kOptional || !IsDefault(field, pRecord)) {
            Member(field, pRecord);
        }
    }
}

std::string JsonWriter::Take()
{
    m_text += '\n';
    return std::move(m_text);
}

} // namespace tool
