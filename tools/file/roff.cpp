#include "file/roff.h"

namespace tool {

std::string Roff(std::string_view text)
{
    std::string roff;
    for (const char c : text) {
        switch (c) {
        case '-':
            roff += "\\-";
            break;
        case '\\':
            roff += "\\e";
            break;
        case '~':
            roff += "\\(ti";
            break;
        case '^':
            roff += "\\(ha";
            break;
        case '\'':
            roff += "\\(aq";
            break;
        default:
            roff += c;
        }
    }
    return roff;
}

std::string RoffLine(std::string_view text)
{
    return (text.starts_with('.') || text.starts_with('\'') ? "\\&" : "") + Roff(text);
}

} // namespace tool
