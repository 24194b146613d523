#include "check/inspect.h"

#include "check/torn.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace tool {

Findings LookOnce()
{
    const auto picture = TakePicture();
    Findings findings = TornBy(*picture);
    const Findings audited = Audit(*picture, CopyRings15m(), CopyRings24h());
    findings.insert(findings.end(), audited.begin(), audited.end());
    return findings;
}

Findings Inspect()
{
    constexpr std::chrono::milliseconds kBetweenLooks(100); // a push of all classes takes less
    Findings findings = LookOnce();
    if (!findings.empty()) {
        std::this_thread::sleep_for(kBetweenLooks);
        findings = Lasting(std::move(findings), LookOnce());
    }
    return findings;
}

Findings Lasting(Findings first, const Findings& second)
{
    // Both lists are in the order of the audit, so one pass over the second finds what stayed.
    auto from = second.begin();
    std::erase_if(first, [&](const Finding& finding) {
        const auto found = std::find(from, second.end(), finding);
        from = found != second.end() ? found + 1 : from;
        return found == second.end();
    });
    return first;
}

const char* KindText(Kind kind)
{
    constexpr const char* kTexts[] = {"drift", "meaning", "dangling", "torn"};
    return kTexts[static_cast<std::size_t>(kind)];
}

std::size_t CountOf(const Findings& findings, Kind kind)
{
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [kind](const Finding& f) { return f.kind == kind; }));
}

} // namespace tool
