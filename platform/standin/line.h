// line.h - a line for stderr.
#ifndef PLATFORM_STANDIN_LINE_H
#define PLATFORM_STANDIN_LINE_H

#include <climits>
#include <cstdarg>
#include <cstddef>

namespace standin {

// Gathers a line and writes it with one system call, so that lines of several processes do not mix.  What does not fit
// is cut off.  errno survives all of it.
class Line {
public:
    __attribute__((format(printf, 2, 3))) void Add(const char* pFormat, ...);
    __attribute__((format(printf, 2, 0))) void AddList(const char* pFormat, va_list pArguments);
    // Ends the line with exactly one newline, whatever the text ends with, and writes it.
    void Write();

private:
    char m_aText[1024];
    size_t m_iLength = 0;
    static_assert(sizeof(m_aText) <= PIPE_BUF, "a pipe takes longer lines in pieces");
};

} // namespace standin

#endif
