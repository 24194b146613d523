// node.h - the node as the exporter knows it: looked at again and again, and what is asked made once for each state.
#pragma once

#include "check/audit.h"
#include "commands/periods.h"
#include "terminal/attach.h"

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace exporter {

using Clock = std::chrono::steady_clock;

struct Document {
    unsigned status = 200;
    const char* pType = "application/json"; // a literal
    std::string text;
    std::string tag; // changes with the text; empty: it is not worth one
};
using DocumentPtr = std::shared_ptr<const Document>;

// What a request asks for.
struct Question {
    std::string path;
    std::string port; // of /api/history: "1/1", or "1/1/8"
    std::string ring;
};

class Node {
public:
    Node();

    // To be called when the time has come.
    void Look();
    [[nodiscard]] Clock::time_point NextLook() const
    {
        return m_nextLook;
    }
    // The object that is mapped is not the one that has the name now.  A process attaches once: a new one has to.
    [[nodiscard]] bool MustStartAnew() const
    {
        return m_mustStartAnew;
    }

    // Null when there is no such path.
    DocumentPtr Find(const Question& question);

private:
    void LookForRegion();
    void LookAtTables();
    void LookAtFindings();
    std::string Make(const Question& question, Document& document);
    DocumentPtr Keep(const std::string& key, Document document);

    std::string m_reason = "not looked at yet"; // why there is nothing to tell; empty: there is
    int m_exitCode = 0;                         // of the command, for the same reason
    std::optional<tool::RegionIdentity> m_region;
    bool m_mustStartAnew = false;
    Clock::time_point m_nextLook;

    std::unique_ptr<tool::Picture> m_picture; // that was the same for a moment
    std::unique_ptr<tool::Picture> m_moving;  // seen last, when it is another one
    Clock::time_point m_movingSince;
    tool::Configuration m_configuration;
    std::vector<tool::RingCopy> m_rings15m;
    std::vector<tool::RingCopy> m_rings24h;

    bool m_isAudited = false;
    Clock::time_point m_auditedAt;
    tool::Findings m_seen;     // at the last look
    tool::Findings m_findings; // at that and at the one before

    std::map<std::string, DocumentPtr> m_documents; // that are true now
};

} // namespace exporter
