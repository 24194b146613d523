// server.h - the HTTP side: which requests are heard, how long a connection may take, and the answers to both.
#pragma once

#include "node.h"

#include <list>
#include <microhttpd.h>
#include <string>
#include <vector>

namespace exporter {

class Server {
public:
    // 'hosts' are the names in the header Host that are meant for this server.
    Server(Node& node, int listener, std::vector<std::string> hosts);
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server();

    // To be waited for until Deadline(), then Run().
    [[nodiscard]] int Descriptor() const
    {
        return m_descriptor;
    }
    [[nodiscard]] Clock::time_point Deadline() const;
    void Run();
    // Nobody new is let in, and who has asked gets an answer, for as long as a moment.
    void Finish();

private:
    struct Connection {
        int socket;
        Clock::time_point since; // it was accepted, or had its last answer
        bool isIdle;             // has had an answer, and has not asked again
        DocumentPtr sent;        // that it is being sent
    };

    static MHD_Result Answer(void* pServer, MHD_Connection* pConnection, const char* pPath, const char* pMethod,
                             const char* pVersion, const char* pUpload, std::size_t* pUploadSize, void** ppState);
    static std::list<Connection>::iterator PlaceOf(MHD_Connection* pConnection);
    static void Follow(void* pServer, MHD_Connection* pConnection, void** ppContext,
                       MHD_ConnectionNotificationCode code);
    static void Complete(void* pServer, MHD_Connection* pConnection, void** ppState, MHD_RequestTerminationCode code);

    void LimitTexts();
    [[nodiscard]] DocumentPtr Choose(MHD_Connection* pConnection, const char* pPath, const std::string& method) const;
    [[nodiscard]] bool IsMeant(const char* pHost) const;

    Node& m_node;
    std::vector<std::string> m_hosts;
    std::list<Connection> m_connections; // the one that has waited longest first
    MHD_Daemon* m_pDaemon = nullptr;
    int m_descriptor = -1;
};

} // namespace exporter
