// terminal.h - the standard output: plain or coloured text, and JSON documents.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace tool {

using Json = nlohmann::ordered_json;

// The "schema" of every document.  It grows when a member is renamed or removed, not when one is added.
inline constexpr int kJsonSchema = 1;

enum class Style { kPlain, kHeading, kFaint, kGood, kWarning, kBad };

// 'text' in a colour when the standard output is a terminal that may be coloured.
std::string Styled(Style style, std::string_view text);

// Columns of the terminal; 0 when the standard output is none.
unsigned TerminalWidth();

// The reader of the standard output has gone (`| head`): thrown by the functions below, and no error.
struct OutputClosed {};

// A document with "schema" put first; an indent of -1 makes one line.
std::string JsonText(const Json& members, int indent = 2);

void Print(std::string_view text);
void PrintJson(const Json& members);
// The same in one line, for streams of documents.
void PrintJsonLine(const Json& members);
// What is printed has left this process when this returns.
void Flush();
// For commands that wait: throws OutputClosed when nobody would read what they print next.
void ThrowIfClosed();

} // namespace tool
