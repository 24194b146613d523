// The tool's loader: any text is a configuration or a list of faults; and it is a change set or a list of faults, whose
// changes can be made or are refused.
#include <cstdint>
#include <string_view>

#include "file/parse.h"
#include "file/read_changes.h"
#include "objects/failure.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(pBytes), size);
    for (const tool::Strictness strictness : {tool::Strictness::kStrict, tool::Strictness::kLenient}) {
        const tool::ParseResult result = tool::Parse(text, strictness);
        if (result.nrOfErrors == 0) {
            // What was accepted survives being written and read again.
            const std::string written = tool::ToText(result.configuration);
            if (tool::ToText(tool::Parse(written, strictness).configuration) != written) {
                __builtin_trap();
            }
        }
    }
    const tool::ParsedChanges parsed = tool::ParseChanges(text, 1, tool::Strictness::kLenient);
    if (parsed.nrOfErrors == 0) {
        try {
            const tool::Configuration changed = tool::Apply({}, parsed.changes, tool::Conflicts::kOverride);
            tool::Parse(tool::ToText(changed), tool::Strictness::kLenient);
        } catch (const tool::Failure&) { // refused
        }
    }
    return 0;
}
