// trace.h - messages to the node's trace service.  A trace never changes what its operation does.
#pragma once

#include "platform/gt.h"
#include "platform/rtab.h"
#include "platform/slib.h"

inline constexpr uint32_t kTraceModule = 145;
inline constexpr uint32_t kErrorTraceLevel = 1;

// Error codes.
enum : uint32_t { kErrorPlain = 0, kErrorNoView = 2, kErrorNoPep = 2, kErrorBadMoid = 26, kErrorTooMany = 55 };

inline constexpr char kNoWriteView[] = "Called without Swct_CdbmOpen first.";
inline constexpr char kNoReadView[] = "Called without Swct_Open first.";

// The handle's first word tells whether error tracing is on.
inline bool IsErrorTraceOn() noexcept
{
    const auto* pTrace = static_cast<const uint32_t*>(Rtab__GetTrace(kTraceModule));
    return pTrace != nullptr && *pTrace != 0;
}

// Macros, because each trace point owns a constant record with its file and line.  'function' is the name under which
// the message goes out; arguments are evaluated only when the message is printed.
#define SWCT_ERROR_AS(function, code, ...)                                                                 \
    do {                                                                                                   \
        if (IsErrorTraceOn()) [[unlikely]] {                                                               \
            static const GtTracePoint sTracePoint = {__FILE__, __LINE__, function};                        \
            GT_beginImpl(Rtab__GetTrace(kTraceModule), kErrorTraceLevel, &sTracePoint);                    \
            Slib__PrintErrorTrace(Rtab__GetTrace(kTraceModule), sTracePoint.pFunction, kTraceModule, code, \
                                  __VA_ARGS__);                                                            \
            GT_endImpl(Rtab__GetTrace(kTraceModule));                                                      \
        }                                                                                                  \
    } while (false)

#define SWCT_ERROR(code, ...) SWCT_ERROR_AS(__func__, code, __VA_ARGS__)

#define SWCT_DEBUG_UNDER(word, function, level, ...)                                   \
    do {                                                                               \
        if ((word) >= (level)) [[unlikely]] {                                          \
            static const GtTracePoint sTracePoint = {__FILE__, __LINE__, function};    \
            GT_beginImpl(&(word), level, &sTracePoint);                                \
            Slib__PrintDebugTrace(&(word), level, sTracePoint.pFunction, __VA_ARGS__); \
            GT_endImpl(&(word));                                                       \
        }                                                                              \
    } while (false)

#define SWCT_DEBUG_AS(function, level, ...) SWCT_DEBUG_UNDER(DBG_SWCH, function, level, __VA_ARGS__)
#define SWCT_DEBUG(level, ...) SWCT_DEBUG_AS(__func__, level, __VA_ARGS__)
// Under the level word of the hardware service layer, for operations that serve it.
#define SWCT_DEBUG_EHSL(level, ...) SWCT_DEBUG_UNDER(DBG_EHSL, __func__, level, __VA_ARGS__)
