// trace.cpp - traces go to stderr.
#include "line.h"
#include "platform/gt.h"
#include "platform/rtab.h"
#include "platform/slib.h"
#include "settings.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <unistd.h>

using standin::Line;
using standin::sSettings;

unsigned int DBG_SWCH = 0;
unsigned int DBG_EHSL = 0;

namespace standin {

void Line::Add(const char* pFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, pFormat);
    AddList(pFormat, pArguments);
    va_end(pArguments);
}

void Line::AddList(const char* pFormat, va_list pArguments)
{
    const int iErrno = errno;
    const size_t iRoom = sizeof(m_aText) - m_iLength;
    const int iAdded = std::vsnprintf(m_aText + m_iLength, iRoom, pFormat, pArguments);
    if (iAdded > 0) {
        m_iLength += std::min(static_cast<size_t>(iAdded), iRoom - 1);
    }
    errno = iErrno;
}

void Line::Write()
{
    const int iErrno = errno;
    while (m_iLength > 0 && m_aText[m_iLength - 1] == '\n') {
        --m_iLength;
    }
    m_aText[m_iLength] = '\n'; // takes the place of the zero byte
    // Nobody can be told when stderr does not take it, and a second attempt could tear the line.
    [[maybe_unused]] const ssize_t iWritten = write(STDERR_FILENO, m_aText, m_iLength + 1);
    errno = iErrno;
}

} // namespace standin

namespace {

// The trace block that is open.
struct Block {
    const void* pHandle;
    uint32_t dwLevel;
    const GtTracePoint* pPoint;
    bool boIsClean; // the one before it was closed
};

thread_local Block sBlock = {};

// A message goes to the sink, or as one line to stderr.
__attribute__((format(printf, 3, 0))) void PrintTrace(const void* pHandle, StandinTrace sTrace, const char* pFormat,
                                                      va_list pArguments)
{
    sTrace.pPoint = sBlock.pPoint;
    if (sSettings.pTraceSink != nullptr) {
        char acText[1024];
        std::vsnprintf(acText, sizeof(acText), pFormat, pArguments);
        sTrace.pText = acText;
        sTrace.boIsEnclosed = sBlock.pPoint != nullptr && sBlock.boIsClean && sBlock.pHandle == pHandle &&
                              sBlock.dwLevel == sTrace.dwLevel;
        sSettings.pTraceSink(sSettings.pTraceContext, &sTrace);
        return;
    }
    Line line;
    if (sTrace.boIsError != 0) {
        line.Add("error %u [%u] ", sTrace.dwCode, sTrace.dwModule);
    } else {
        line.Add("debug %u ", sTrace.dwLevel);
    }
    line.Add("%s", sTrace.pFunction);
    if (sTrace.pPoint != nullptr) {
        line.Add(" (%s:%u)", sTrace.pPoint->pFile, sTrace.pPoint->dwLine);
    }
    line.Add(": ");
    line.AddList(pFormat, pArguments);
    line.Write();
}

} // namespace

void* Rtab__GetTrace(uint32_t /*dwModule*/)
{
    return &sSettings.boErrorTracing;
}

void Standin__SetErrorTracing(uint32_t boOn)
{
    sSettings.boErrorTracing = boOn != 0 ? 1 : 0;
}

void Standin__SetTraceSink(StandinTraceSink pSink, void* pContext)
{
    sSettings.pTraceSink = pSink;
    sSettings.pTraceContext = pContext;
}

void GT_beginImpl(const void* pHandle, uint32_t dwLevel, const GtTracePoint* pPoint)
{
    sBlock = {pHandle, dwLevel, pPoint, sBlock.pPoint == nullptr};
}

void GT_endImpl(const void* pHandle)
{
    if (pHandle == sBlock.pHandle) {
        sBlock = {};
    }
}

void Slib__PrintErrorTrace(const void* pHandle, const char* pFunction, uint32_t dwModule, uint32_t dwCode,
                           const char* pFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, pFormat);
    PrintTrace(pHandle, {1, 1, dwModule, dwCode, pFunction, nullptr, nullptr, 0}, pFormat, pArguments);
    va_end(pArguments);
}

void Slib__PrintDebugTrace(const void* pHandle, uint32_t dwLevel, const char* pFunction, const char* pFormat, ...)
{
    va_list pArguments;
    va_start(pArguments, pFormat);
    PrintTrace(pHandle, {0, dwLevel, 0, 0, pFunction, nullptr, nullptr, 0}, pFormat, pArguments);
    va_end(pArguments);
}
