#include "server.h"

#include "objects/failure.h"
#include "terminal/terminal.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstring>
#include <fmt/format.h>
#include <poll.h>
#include <set>
#include <sys/socket.h>

namespace exporter {

using namespace std::chrono_literals;
using tool::Failure;

namespace {

constexpr unsigned kConnectionsMax = 128;                // of the library, which accepts no more
constexpr std::size_t kConnectionsKept = 96;             // the one that waits longest makes room for a new one
constexpr std::size_t kMemoryOfConnection = 16384;       // bytes, for a request's line and headers
constexpr auto kTimeOfRequest = 20s;                     // from one answer to the next; more than a scraper's interval
constexpr unsigned kSilence = 20;                        // seconds
constexpr std::size_t kTextsMax = std::size_t{64} << 20; // bytes of the different texts that are being sent

// The policy of the page itself is in the page.
constexpr const char* kHeaders[][2] = {{"X-Content-Type-Options", "nosniff"},
                                       {"Cross-Origin-Resource-Policy", "same-origin"},
                                       {"Referrer-Policy", "no-referrer"},
                                       {"X-Frame-Options", "DENY"},
                                       {"Cache-Control", "no-cache"}};

DocumentPtr Refusal(unsigned status, const std::string& text)
{
    return std::make_shared<const Document>(Document{status, "text/plain; charset=utf-8", text + '\n', ""});
}

std::string Argument(MHD_Connection* pConnection, const char* pName)
{
    const char* const pValue = MHD_lookup_connection_value(pConnection, MHD_GET_ARGUMENT_KIND, pName);
    return pValue != nullptr ? pValue : "";
}

MHD_Result Send(MHD_Connection* pConnection, const DocumentPtr& document)
{
    const char* const pKnown = MHD_lookup_connection_value(pConnection, MHD_HEADER_KIND, MHD_HTTP_HEADER_IF_NONE_MATCH);
    const bool isKnown = pKnown != nullptr && !document->tag.empty() && document->tag == pKnown;
    // The text is shared: it lives as long as somebody is still being sent it.
    auto* const pShared = new DocumentPtr(document);
    MHD_Response* const pResponse = MHD_create_response_from_buffer_with_free_callback_cls(
        isKnown ? 0 : document->text.size(), const_cast<char*>(document->text.data()),
        [](void* pDocument) { delete static_cast<DocumentPtr*>(pDocument); }, pShared);
    if (pResponse == nullptr) {
        delete pShared;
        return MHD_NO;
    }
    for (const auto& [pName, pValue] : kHeaders) {
        MHD_add_response_header(pResponse, pName, pValue);
    }
    MHD_add_response_header(pResponse, MHD_HTTP_HEADER_CONTENT_TYPE, document->pType);
    if (!document->tag.empty()) {
        MHD_add_response_header(pResponse, MHD_HTTP_HEADER_ETAG, document->tag.c_str());
    }
    if (document->status == MHD_HTTP_METHOD_NOT_ALLOWED) {
        MHD_add_response_header(pResponse, MHD_HTTP_HEADER_ALLOW, "GET, HEAD");
    }
    const MHD_Result result =
        MHD_queue_response(pConnection, isKnown ? MHD_HTTP_NOT_MODIFIED : document->status, pResponse);
    MHD_destroy_response(pResponse);
    return result;
}

} // namespace

Server::Server(Node& node, int listener, std::vector<std::string> hosts) : m_node(node), m_hosts(std::move(hosts))
{
    m_pDaemon = MHD_start_daemon(MHD_USE_EPOLL, 0, nullptr, nullptr, Answer, this, // without a thread of its own
                                 MHD_OPTION_LISTEN_SOCKET, listener,               //
                                 MHD_OPTION_CONNECTION_LIMIT, kConnectionsMax,     //
                                 MHD_OPTION_CONNECTION_TIMEOUT, kSilence,          //
                                 MHD_OPTION_CONNECTION_MEMORY_LIMIT, kMemoryOfConnection, MHD_OPTION_NOTIFY_CONNECTION,
                                 Follow, this,                                //
                                 MHD_OPTION_NOTIFY_COMPLETED, Complete, this, //
                                 MHD_OPTION_STRICT_FOR_CLIENT, 1,             //
                                 MHD_OPTION_SIGPIPE_HANDLED_BY_APP, 1, MHD_OPTION_END);
    const MHD_DaemonInfo* pInfo =
        m_pDaemon != nullptr ? MHD_get_daemon_info(m_pDaemon, MHD_DAEMON_INFO_EPOLL_FD) : nullptr;
    if (pInfo == nullptr) {
        throw Failure(tool::kNotWritten, "the HTTP library does not start; see the limits of the process (ulimit -a)");
    }
    m_descriptor = pInfo->epoll_fd;
}

Server::~Server()
{
    if (m_pDaemon != nullptr) {
        MHD_stop_daemon(m_pDaemon);
    }
}

Clock::time_point Server::Deadline() const
{
    MHD_UNSIGNED_LONG_LONG milliseconds = 0;
    return MHD_get_timeout(m_pDaemon, &milliseconds) == MHD_YES
               ? Clock::now() + std::chrono::milliseconds(std::min<MHD_UNSIGNED_LONG_LONG>(milliseconds, 1000))
               : Clock::now() + 1s;
}

// One that says a byte now and then is never silent; its time is over all the same.
void Server::Run()
{
    const auto oldest = Clock::now() - kTimeOfRequest;
    for (const Connection& connection : m_connections) {
        if (connection.since > oldest) {
            break;
        }
        shutdown(connection.socket, SHUT_RDWR);
    }
    MHD_run(m_pDaemon);
    LimitTexts();
}

// Those who read slowly while the node changes would each keep another text alive.  Those who began last go on.
void Server::LimitTexts()
{
    std::set<const Document*> texts;
    std::size_t bytes = 0;
    for (auto connection = m_connections.rbegin(); connection != m_connections.rend(); ++connection) {
        DocumentPtr& sent = connection->sent;
        if (sent == nullptr || texts.contains(sent.get())) {
            continue;
        }
        if (bytes + sent->text.size() > kTextsMax) {
            shutdown(connection->socket, SHUT_RDWR);
            sent.reset();
        } else {
            texts.insert(sent.get());
            bytes += sent->text.size();
        }
    }
}

void Server::Finish()
{
    const auto end = Clock::now() + 250ms;
    MHD_quiesce_daemon(m_pDaemon);
    const auto isIdle = [](const Connection& connection) { return connection.isIdle; };
    while (Clock::now() < end && !std::all_of(m_connections.begin(), m_connections.end(), isIdle)) {
        pollfd ready = {m_descriptor, POLLIN, 0};
        poll(&ready, 1, 10);
        MHD_run(m_pDaemon);
    }
}

std::list<Server::Connection>::iterator Server::PlaceOf(MHD_Connection* pConnection)
{
    const MHD_ConnectionInfo* const pInfo = MHD_get_connection_info(pConnection, MHD_CONNECTION_INFO_SOCKET_CONTEXT);
    return *static_cast<std::list<Connection>::iterator*>(pInfo->socket_context);
}

void Server::Follow(void* pServer, MHD_Connection* pConnection, void** ppContext, MHD_ConnectionNotificationCode code)
{
    auto& connections = static_cast<Server*>(pServer)->m_connections;
    if (code == MHD_CONNECTION_NOTIFY_STARTED) {
        const int socket = MHD_get_connection_info(pConnection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd;
        connections.push_back({socket, Clock::now(), false, nullptr});
        *ppContext = new std::list<Connection>::iterator(std::prev(connections.end()));
        if (connections.size() > kConnectionsKept) {
            // The library sees the end of the connection and tells so here; until then it is behind the others.
            shutdown(connections.front().socket, SHUT_RDWR);
            connections.splice(connections.end(), connections, connections.begin());
        }
    } else if (auto* const pPlace = static_cast<std::list<Connection>::iterator*>(*ppContext)) {
        connections.erase(*pPlace);
        delete pPlace;
        *ppContext = nullptr;
    }
}

void Server::Complete(void* pServer, MHD_Connection* pConnection, void** /*ppState*/, MHD_RequestTerminationCode code)
{
    if (code == MHD_REQUEST_TERMINATED_COMPLETED_OK) {
        auto& connections = static_cast<Server*>(pServer)->m_connections;
        const auto place = PlaceOf(pConnection);
        *place = {place->socket, Clock::now(), true, nullptr};
        connections.splice(connections.end(), connections, place);
    }
}

bool Server::IsMeant(const char* pHost) const
{
    // A page of another origin that has its name lead here (DNS rebinding) still says that name.
    std::string host = pHost;
    const std::size_t colon = host.rfind(':');
    if (colon != std::string::npos && host.find(']', colon) == std::string::npos) {
        host.resize(colon);
    }
    in_addr address{};
    const bool isLoopback = inet_pton(AF_INET, host.c_str(), &address) == 1 && ntohl(address.s_addr) >> 24 == 127;
    return isLoopback || std::any_of(m_hosts.begin(), m_hosts.end(), [&host](const std::string& name) {
               return strcasecmp(name.c_str(), host.c_str()) == 0;
           });
}

DocumentPtr Server::Choose(MHD_Connection* pConnection, const char* pPath, const std::string& method) const
{
    const char* const pHost = MHD_lookup_connection_value(pConnection, MHD_HEADER_KIND, MHD_HTTP_HEADER_HOST);
    if (pHost == nullptr || !IsMeant(pHost)) {
        return Refusal(MHD_HTTP_MISDIRECTED_REQUEST,
                       "this name is not served here: start the exporter with --host NAME");
    }
    if (method != MHD_HTTP_METHOD_GET && method != MHD_HTTP_METHOD_HEAD) {
        return Refusal(MHD_HTTP_METHOD_NOT_ALLOWED, "only GET and HEAD are served: nothing is changed from here");
    }
    DocumentPtr document = m_node.Find({pPath, Argument(pConnection, "port"), Argument(pConnection, "ring")});
    return document != nullptr
               ? document
               : Refusal(MHD_HTTP_NOT_FOUND, "there are /, /metrics, /api/state, /api/history, /api/check");
}

MHD_Result Server::Answer(void* pServer, MHD_Connection* pConnection, const char* pPath, const char* pMethod,
                          const char* /*pVersion*/, const char* /*pUpload*/, std::size_t* pUploadSize, void** ppState)
{
    const auto is = [pMethod](const char* pName) { return std::strcmp(pMethod, pName) == 0; };
    if (*ppState == nullptr && (is(MHD_HTTP_METHOD_GET) || is(MHD_HTTP_METHOD_HEAD))) {
        PlaceOf(pConnection)->isIdle = false;
        *ppState = pServer; // an answer before the end of the request would close the connection
        return MHD_YES;
    }
    if (*pUploadSize != 0) {
        *pUploadSize = 0; // what a request brings along is not looked at
        return MHD_YES;
    }
    try { // between here and the main loop is a library in C
        DocumentPtr& sent = PlaceOf(pConnection)->sent;
        sent = static_cast<Server*>(pServer)->Choose(pConnection, pPath, pMethod);
        return Send(pConnection, sent);
    } catch (const std::exception& fault) {
        fmt::print(stderr, "piovios-exporter: internal error: {}; please report it\n", fault.what());
        return MHD_NO;
    }
}

} // namespace exporter
