#include "node.h"

#include "check/inspect.h"
#include "check/rings.h"
#include "commands/documents.h"
#include "file/describe.h"
#include "file/parse.h"
#include "objects/failure.h"
#include "objects/picture.h"
#include "objects/records.h"
#include "page/page.h"
#include "swct/lifecycle.h"

#include <algorithm>
#include <fmt/format.h>
#include <functional>

namespace exporter {

using namespace std::chrono_literals;
using namespace tool;

namespace {

constexpr auto kEvery = 250ms;
constexpr auto kMoment = 20ms;                          // longer than it takes to write a whole configuration
constexpr auto kPatience = 1s;                          // a writer that never rests is shown as it goes
constexpr std::chrono::milliseconds kAuditRest = 100ms; // between two looks of the audit
constexpr std::chrono::milliseconds kAuditEvery = 5s;

constexpr char kHtml[] = "text/html; charset=utf-8";
constexpr char kMetrics[] = "text/plain; version=0.0.4; charset=utf-8";
constexpr char kSchema[] = "application/schema+json";

bool IsSameRing(const RingCopy& left, const RingCopy& right)
{
    return std::equal(left.records.begin(), left.records.end(), right.records.begin(), right.records.end(),
                      IsSame<SwctQueueStatisticsHistorical>);
}

bool AreSame(const std::vector<RingCopy>& left, const std::vector<RingCopy>& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), IsSameRing);
}

std::string HistoryText(const Question& question)
{
    const Ring* pRing = nullptr;
    for (const Ring* pCandidate : {&kRing15m, &kRing24h}) {
        if (question.ring == pCandidate->name || (question.ring.empty() && pRing == nullptr)) {
            pRing = pCandidate;
        }
    }
    if (question.port.empty() || pRing == nullptr) {
        throw Failure(kBadInput, "ask for /api/history?port=SLOT/PORT or ?port=SLOT/PORT/QUEUE, and &ring=24h or 15m");
    }
    Histories histories;
    for (const Queue& queue : QueuesOf(question.port)) {
        histories.push_back(ReadHistory(*pRing, queue, pRing->records));
    }
    return JsonText(HistoryDocument(*pRing, histories), -1);
}

std::string ErrorText(int exitCode, const std::string& message)
{
    return JsonText({{"error", {{"message", message}, {"exitCode", exitCode}}}});
}

} // namespace

Node::Node()
{
    Look();
}

void Node::Look()
{
    m_nextLook = Clock::now() + kEvery;
    m_documents.erase("/metrics"); // of counters that no table has
    LookForRegion();
    if (m_reason.empty()) {
        LookAtTables();
        LookAtFindings();
    }
}

void Node::LookForRegion()
{
    const std::string before = m_reason;
    const auto region = FindRegion();
    if (Swct_IsAttachedForReading() != 0) {
        m_mustStartAnew = region && region != m_region;
        m_exitCode = kNoRegion;
        m_reason = region ? m_mustStartAnew ? "the region was created anew" : "" : "the region was removed";
    } else {
        m_region = region;
        try {
            AttachForReading();
            m_reason.clear();
        } catch (const Failure& failure) {
            m_reason = failure.what();
            m_exitCode = failure.exitCode;
        }
    }
    if (m_reason != before) {
        m_documents.clear();
        fmt::print("{}\n", m_reason.empty() ? "reading the region " + RegionName() : m_reason);
        std::fflush(stdout);
    }
}

// The state that is told is one that stayed for a moment: in the middle of a change tables do not match.
void Node::LookAtTables()
{
    const auto now = Clock::now();
    auto picture = TakePicture();
    const bool isNew = m_picture == nullptr || !IsSame(*picture, *m_picture);
    const bool isMoving = isNew && m_picture != nullptr && (m_moving == nullptr || !IsSame(*picture, *m_moving));
    if (isMoving && (m_moving == nullptr || now - m_movingSince < kPatience)) {
        m_movingSince = m_moving == nullptr ? now : m_movingSince;
        m_moving = std::move(picture);
        m_nextLook = now + kMoment;
        return;
    }
    m_moving.reset();
    auto rings15m = CopyRings15m();
    auto rings24h = CopyRings24h();
    if (isNew || !AreSame(rings15m, m_rings15m) || !AreSame(rings24h, m_rings24h)) {
        m_configuration = isNew ? ReadConfiguration(*picture) : std::move(m_configuration);
        m_picture = std::move(picture);
        m_rings15m = std::move(rings15m);
        m_rings24h = std::move(rings24h);
        m_isAudited = false;
        m_documents.clear();
    }
}

// A finding is told when the next look still has it.
void Node::LookAtFindings()
{
    const auto now = Clock::now();
    // Also when the region is as it was: what a writer has left behind outside of it may have changed.
    if (m_moving != nullptr || now - m_auditedAt < (m_isAudited ? kAuditEvery : kAuditRest)) {
        return;
    }
    Findings seen = tool::LookOnce();
    Findings lasting = Lasting(seen, m_seen);
    m_isAudited = lasting == seen;
    m_auditedAt = now;
    m_seen = std::move(seen);
    if (lasting != m_findings) {
        m_findings = std::move(lasting);
        m_documents.clear();
    }
}

// The text of a path that needs the region, or nothing.
std::string Node::Make(const Question& question, Document& document)
{
    if (question.path == "/metrics") {
        document.pType = kMetrics;
        return MetricsText(m_findings);
    }
    if (question.path == "/data.json") {
        return PageData(*m_picture, m_configuration, m_findings, 0);
    }
    if (question.path == "/api/state") {
        return ToText(m_configuration);
    }
    if (question.path == "/api/history") {
        return HistoryText(question);
    }
    if (question.path == "/api/check") {
        return JsonText(CheckDocument(m_findings));
    }
    return "";
}

DocumentPtr Node::Keep(const std::string& key, Document document)
{
    if (document.status == 200 && document.pType != kMetrics) {
        document.tag = fmt::format("\"{:x}\"", std::hash<std::string>()(document.text));
    }
    return m_documents[key] = std::make_shared<const Document>(std::move(document));
}

DocumentPtr Node::Find(const Question& question)
{
    static const DocumentPtr kPage = std::make_shared<const Document>(Document{200, kHtml, LivePage(), ""});
    static const DocumentPtr kPageOfNone = std::make_shared<const Document>(Document{503, kHtml, LivePage(), ""});
    if (question.path == "/") {
        return m_reason.empty() ? kPage : kPageOfNone;
    }
    const bool isHistory = question.path == "/api/history";
    const std::string key = question.path + (isHistory ? ' ' + question.port + ' ' + question.ring : "");
    if (const auto found = m_documents.find(key); found != m_documents.end()) {
        return found->second;
    }
    Document document;
    if (question.path == "/api/configuration.schema.json" || question.path == "/api/output.schema.json") {
        document.pType = kSchema;
        document.text = question.path == "/api/output.schema.json" ? OutputSchema() : ConfigurationSchema();
        return Keep(key, std::move(document));
    }
    constexpr const char* kPaths[] = {"/metrics", "/data.json", "/api/state", "/api/history", "/api/check"};
    if (std::find(std::begin(kPaths), std::end(kPaths), question.path) == std::end(kPaths)) {
        return nullptr;
    }
    if (!m_reason.empty()) {
        document.status = 503;
        document.pType = question.path == "/metrics" ? kMetrics : document.pType;
        document.text = question.path == "/metrics" ? MetricsTextOfNone() : ErrorText(m_exitCode, m_reason);
        return Keep(question.path, std::move(document));
    }
    try {
        document.text = Make(question, document);
    } catch (const Failure& failure) { // of the question: not kept, or anybody could fill the memory with them
        return std::make_shared<const Document>(
            Document{400, document.pType, ErrorText(failure.exitCode, failure.what()), ""});
    }
    return Keep(key, std::move(document));
}

} // namespace exporter
