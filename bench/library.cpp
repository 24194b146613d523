// Compiled twice: the second time without a procedure linkage table.
#include "library_calls.h"

namespace {

Library<Linked> library;

} // namespace

#ifdef BENCH_NO_PLT
std::vector<Work> LinkedWorksWithoutPlt(const Scene& sScene)
#else
std::vector<Work> LinkedWorks(const Scene& sScene)
#endif
{
    return WorksOf(library, sScene);
}
