// Asks a region the same questions again and again while somebody loads other configurations into it, and says how long
// each answer was away.  Ends when the standard input does.
//   load_reader < /dev/tty       on the region of examples/metro-access.json, see docs/reliability.md
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <iterator>
#include <unistd.h>

#include "swct/swct.h"

namespace {

// What every configuration that is loaded meanwhile has in common.
struct Question {
    const char* pText;
    bool (*isAnswered)();
    unsigned timesAway = 0;
    double longest = 0; // in microseconds, like the next two
    double sum = 0;
    double since = 0; // 0: it is there
};

Question aQuestions[] = {
    {"VLAN 100 exists", [] { return Swct_DoesVlanExist(100) == 1; }},
    {"port 1/1 is in VLAN 100", [] { return Swct_IsPortMemberOfVlanId(1, 1, 100) != 0; }},
    {"VLAN 1110 has users", [] { return Swct_DoesVlanHaveQinQPortsOrPeps(1110) != 0; }},
    {"C-VID 101 of port 1/3 is registered",
     [] {
         SwctCVidRegistration sRecord;
         return Swct_GetCVidRegistration(1, 3, 101, &sRecord) != 0;
     }},
    {"S-VID 1110 of port 1/3 has a PEP",
     [] {
         SwctProviderEdgePort sRecord;
         return Swct_GetProviderEdgePort(1, 3, 1110, &sRecord) != 0;
     }},
    {"relay VID 1110 of port 1/1 is translated",
     [] {
         uint16_t wLocalVid = 0;
         Swct_SpeedUpGetLowestLocalVidTranslatedToRelayVid(1, 1, 1110, &wLocalVid);
         return wLocalVid == 2110;
     }},
};

double Now()
{
    using namespace std::chrono;
    return duration<double, std::micro>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

int main()
{
    Swct_Open();
    if (Swct_IsAttachedForReading() == 0) {
        return 1;
    }
    fcntl(STDIN_FILENO, F_SETFL, O_NONBLOCK);
    unsigned long rounds = 0;
    const double start = Now();
    for (char byte = 0; rounds % 1024 != 0 || read(STDIN_FILENO, &byte, 1) != 0; ++rounds) {
        for (Question& question : aQuestions) {
            const bool isThere = question.isAnswered();
            if (isThere && question.since != 0) {
                const double away = Now() - question.since;
                question.longest = std::max(question.longest, away);
                question.sum += away;
                ++question.timesAway;
                question.since = 0;
            } else if (!isThere && question.since == 0) {
                question.since = Now();
            }
        }
    }
    std::printf("%lu rounds of %zu questions in %.1f s\n", rounds, std::size(aQuestions), (Now() - start) / 1e6);
    for (const Question& question : aQuestions) {
        std::printf("%-42s away %u times, longest %.1f us, in all %.1f us\n", question.pText, question.timesAway,
                    question.longest, question.sum);
    }
}
