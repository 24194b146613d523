// to_text.cpp - a JSON document as a person would write it: what fits into a line stands in one.
#include "objects/configuration.h"

#include <cstddef>
#include <string>

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kWidth = 110;
constexpr std::size_t kIndent = 2;

// Appends the value in one line; false as soon as 'text' is longer than 'end'.
bool AppendInline(std::string& text, const Json& value, std::size_t end)
{
    if (!value.is_structured()) {
        text += value.dump();
        return text.size() <= end;
    }
    const bool isObject = value.is_object();
    text += isObject ? '{' : '[';
    const char* pSeparator = "";
    for (auto it = value.begin(); it != value.end(); ++it) {
        text += pSeparator;
        pSeparator = ", ";
        if (isObject) {
            text.append(1, '"').append(it.key()).append("\": "); // names of the format need no escapes
        }
        if (!AppendInline(text, *it, end)) {
            return false;
        }
    }
    text += isObject ? '}' : ']';
    return text.size() <= end;
}

void AppendValue(std::string& text, const Json& value, std::size_t indent, std::size_t lineStart)
{
    const std::size_t start = text.size();
    if (AppendInline(text, value, lineStart + kWidth) || !value.is_structured()) {
        return;
    }
    text.resize(start);
    const bool isObject = value.is_object();
    text += isObject ? '{' : '[';
    const char* pSeparator = "\n";
    for (auto it = value.begin(); it != value.end(); ++it) {
        text += pSeparator;
        pSeparator = ",\n";
        const std::size_t memberStart = text.size();
        text.append(indent + kIndent, ' ');
        if (isObject) {
            text.append(1, '"').append(it.key()).append("\": "); // names of the format need no escapes
        }
        AppendValue(text, *it, indent + kIndent, memberStart);
    }
    text += '\n';
    text.append(indent, ' ');
    text += isObject ? '}' : ']';
}

} // namespace

std::string ToText(const Configuration& configuration)
{
    std::string text;
    AppendValue(text, ToJson(configuration), 0, 0);
    text += '\n';
    return text;
}

} // namespace tool
