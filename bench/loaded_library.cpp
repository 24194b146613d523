#include <deque>
#include <dlfcn.h>

#include "library_calls.h"

namespace {

struct Loaded {
#define BENCH_BY_POINTER(name) decltype(&::name) name;
    BENCH_OPERATIONS(BENCH_BY_POINTER)
#undef BENCH_BY_POINTER
};

std::deque<Library<Loaded>> libraries;

} // namespace

bool OpenLoaded(const std::string& path, std::string& error)
{
    // Bound to itself, or its exported variables would be those of the linked one.
    void* pFile = dlopen(path.empty() ? nullptr : path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
    bool boComplete = pFile != nullptr;
    Loaded sCalls{};
#define BENCH_FIND(name)                                                        \
    if (boComplete) {                                                           \
        sCalls.name = reinterpret_cast<decltype(&::name)>(dlsym(pFile, #name)); \
        boComplete = sCalls.name != nullptr;                                    \
    }
    BENCH_OPERATIONS(BENCH_FIND)
#undef BENCH_FIND
    if (!boComplete) {
        const char* pReason = dlerror();
        error = pReason != nullptr ? pReason : "an operation is missing";
        return false;
    }
    sCalls.Swct_CdbmOpen();
    libraries.push_back({sCalls});
    return true;
}

std::vector<Work> LoadedWorks(std::size_t number, const Scene& sScene)
{
    return WorksOf(libraries.at(number), sScene);
}
