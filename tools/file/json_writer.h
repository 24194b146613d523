// json_writer.h - JSON text as a person would write it: what fits into a line stands in one.
#pragma once

#include "objects/fields.h"

#include <string>
#include <string_view>
#include <vector>

namespace tool {

class JsonWriter {
public:
    enum class Form { kLines, kOneLine };

    explicit JsonWriter(Form form = Form::kLines) : m_form(form) {}

    // The name of the next value in an object.
    JsonWriter& Name(std::string_view name);

    void Open(char bracket); // '{' or '['
    void Close();

    // Values.  Texts are plain text: UTF-8 without control characters.
    void Raw(std::string_view json);
    void Number(uint64_t number);
    void Text(std::string_view text);
    void Null()
    {
        Raw("null");
    }
    void YesNo(bool value)
    {
        Raw(value ? "true" : "false");
    }
    // A field as a member with its name; all that a file has of a record.
    void Member(const Field& field, const void* pRecord);
    void Members(std::span<const Field> fields, const void* pRecord);

    // Takes back an open object or list without elements and its name; false when it has some, and closes it then.
    bool CloseUnlessEmpty();

    // The text, ended by a newline.
    std::string Take();

private:
    struct Container {
        std::size_t start;     // of its bracket
        std::size_t nameStart; // of its name, or of its bracket
        char close;
        std::vector<std::size_t> elements; // where they start, names included
    };

    void Begin();

    Form m_form;
    std::string m_text;
    std::vector<Container> m_open;
    std::size_t m_nameStart = kNoName;
    static constexpr std::size_t kNoName = static_cast<std::size_t>(-1);
};

} // namespace tool
