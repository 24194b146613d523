// The runs of the operations fuzzer with inputs from a generator, at the library's own pace: no sanitizer, but the
// region lies between guard pages.  On every processor the machine has.
//   hostile-calls N     calls in all
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, std::size_t size);

namespace {

constexpr uint64_t kCallsOfRun = 512; // as operations_fuzzer.cpp has it

void RunShare(uint64_t qwFirst, uint64_t qwStep, uint64_t qwRuns)
{
    for (uint64_t qwRun = qwFirst; qwRun < qwRuns; qwRun += qwStep) {
        std::mt19937_64 random(qwRun);
        std::vector<uint8_t> bytes(64 + random() % 1984);
        for (uint8_t& bByte : bytes) {
            bByte = static_cast<uint8_t>(random());
        }
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
}

} // namespace

int main(int argc, char** argv)
{
    const uint64_t qwRuns = argc == 2 ? std::strtoull(argv[1], nullptr, 10) / kCallsOfRun : 0;
    if (qwRuns == 0) {
        std::fprintf(stderr, "usage: hostile-calls N, from %llu\n", static_cast<unsigned long long>(kCallsOfRun));
        return 2;
    }
    const auto begin = std::chrono::steady_clock::now();
    const auto processes = static_cast<uint64_t>(sysconf(_SC_NPROCESSORS_ONLN));
    for (uint64_t i = 0; i < processes; ++i) {
        if (fork() == 0) {
            RunShare(i, processes, qwRuns);
            std::exit(0);
        }
    }
    int failed = 0;
    for (int iStatus = 0; wait(&iStatus) > 0;) {
        failed += iStatus != 0 ? 1 : 0;
    }
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    std::printf("| any operation, any arguments, any region, between guard pages | %llu calls in %.0f s, %s |\n",
                static_cast<unsigned long long>(qwRuns * kCallsOfRun), time.count(),
                failed == 0 ? "no fault" : "a process died");
    return failed == 0 ? 0 : 1;
}
