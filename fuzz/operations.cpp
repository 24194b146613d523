#include "operations.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "requests.h"
#include "swct/swct.h"

void Digest::Add(const void* pBytes, std::size_t size)
{
    const std::string_view bytes(static_cast<const char*>(pBytes), size);
    qwValue = qwValue * 1099511628211U ^ std::hash<std::string_view>()(bytes);
}

namespace {

template <class Type>
concept Moid = requires(Type sMoid)
{
    sMoid.wClassId;
};

// How much memory a uint8_t pointer needs: a VLAN bitmap, but for these.
template <auto kOperation>
constexpr std::size_t kByteBufferSize = SWCT_VLAN_BITMAP_SIZE;
template <>
constexpr std::size_t kByteBufferSize<Swct_GetL2cpMacDestTunnel> = 2;
template <>
constexpr std::size_t kByteBufferSize<Swct_SetL2cpMacDestTunnel> = 2;
template <>
constexpr std::size_t kByteBufferSize<Swct_GetVlanInnerTagInfo> = 1;

struct Guard {
    Guard()
    {
        BeginCall();
    }
    ~Guard()
    {
        EndCall();
    }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
};

// Calls the library and nothing else.
template <auto kOperation, class... Types>
auto CallGuarded(Types... values)
{
    const Guard sGuard;
    return kOperation(values...);
}

template <Moid Type>
Type DrawMoid(Input& sInput)
{
    static constexpr uint16_t kClasses[] = {898, 899, 177, 205, 206, 369, 427, 437, 469, 514, 538, 622, 769, 0};
    Type sMoid{};
    const uint8_t bClass = sInput.Byte();
    sMoid.wClassId = kClasses[bClass % (sizeof kClasses / sizeof kClasses[0])];
    auto* pKeys = reinterpret_cast<uint8_t*>(&sMoid) + sizeof sMoid.wClassId;
    if constexpr (requires { sMoid.wVlanId; }) {
        sMoid.wVlanId = sInput.Key<uint16_t>();
        pKeys += sizeof sMoid.wVlanId;
    }
    if constexpr (requires { sMoid.bSlot; }) {
        sMoid.bSlot = sInput.Key<uint8_t>();
        sMoid.bPort = sInput.Key<uint8_t>();
        pKeys += 2;
    }
    // What is left are wider keys: a C-VID, local VID, PEP index, priority, queue or index.
    for (const auto* pEnd = reinterpret_cast<const uint8_t*>(&sMoid + 1); pKeys < pEnd; pKeys += 2) {
        const auto wKey = sInput.Key<uint16_t>();
        std::memcpy(pKeys, &wKey, pEnd - pKeys < 2 ? 1 : 2);
    }
    return sMoid;
}

// An argument that is passed by value.
template <auto kOperation, class Type>
struct Argument {
    explicit Argument(Input& sInput)
    {
        if constexpr (Moid<Type>) {
            value = DrawMoid<Type>(sInput);
        } else {
            value = sInput.Key<Type>();
        }
    }
    Type Get() const
    {
        return value;
    }
    void AddTo(Digest& /*sDigest*/) const {}

    Type value;
};

// A record, a bitmap, a name or a variable of the caller: memory of its exact size, or null.
template <auto kOperation, class Type>
struct Argument<kOperation, Type*> {
    using Plain = std::remove_const_t<Type>;

    explicit Argument(Input& sInput)
    {
        if (sInput.Byte() % 16 == 15) {
            return;
        }
        if constexpr (std::is_same_v<Plain, char>) {
            size = sInput.Byte() + 1U;
        } else {
            size = std::is_same_v<Plain, uint8_t> ? kByteBufferSize<kOperation> : sizeof(Plain);
        }
        pMemory = Allocate(size);
        if constexpr (Moid<Plain>) {
            const Plain sMoid = DrawMoid<Plain>(sInput);
            std::memcpy(pMemory.get(), &sMoid, sizeof sMoid);
        } else {
            sInput.Fill(pMemory.get(), size);
        }
        if constexpr (std::is_same_v<Plain, char>) {
            pMemory[size - 1] = 0;
        }
    }
    Type* Get() const
    {
        return reinterpret_cast<Type*>(pMemory.get());
    }
    void AddTo(Digest& sDigest) const
    {
        sDigest.Add(pMemory.get(), pMemory != nullptr ? size : 0);
    }

    Bytes pMemory;
    std::size_t size = 0;
};

template <class Result>
void AddResult(Digest& sDigest, Result result)
{
    if constexpr (std::is_same_v<Result, const char*>) {
        sDigest.Add(result, strnlen(result, SWCT_VLAN_NAME_SIZE));
    } else if constexpr (std::is_pointer_v<Result>) {
        // Touches the whole record: a pointer that leaves the region ends the run.
        sDigest.Add(result, result != nullptr ? sizeof *result : 0);
    } else {
        sDigest.Add(&result, sizeof result);
    }
}

template <auto kOperation>
struct Call;

template <class Result, class... Types, Result (*kOperation)(Types...) noexcept>
struct Call<kOperation> {
    static void Run(Input& sInput, Digest& sDigest)
    {
        std::tuple<Argument<kOperation, Types>...> arguments{Argument<kOperation, Types>(sInput)...};
        const bool boWalks = sInput.Byte() % 8 == 0;
        std::apply([&](auto&... argument) { RunWith(sDigest, boWalks, argument.Get()...); }, arguments);
        std::apply([&](auto&... argument) { (argument.AddTo(sDigest), ...); }, arguments);
    }

private:
    static void RunWith(Digest& sDigest, bool boWalks, Types... values)
    {
        if constexpr (std::is_void_v<Result>) {
            CallGuarded<kOperation>(values...);
        } else {
            const Result result = CallGuarded<kOperation>(values...);
            AddResult(sDigest, result);
            if constexpr (std::is_pointer_v<Result>) {
                Walk(sDigest, boWalks ? result : nullptr, values...);
            }
        }
    }

    // An iterator is what takes a previous Moid and gives the next one.
    template <class Object, class... Others>
    static void Walk(Digest& sDigest, Object* pNext, const Object* /*pPrevious*/, Others... others)
    {
        if constexpr (Moid<Object>) {
            for (unsigned step = 0; pNext != nullptr; ++step) {
                if (step > kWalkStepsMax) {
                    std::fputs("the walk does not end\n", stderr);
                    std::abort();
                }
                pNext = CallGuarded<kOperation>(const_cast<const Object*>(pNext), others...);
                AddResult(sDigest, pNext);
            }
        }
    }
    template <class... Others>
    static void Walk(Others...)
    {
    }
};

// The caller's room for records is as many as it asks for.
template <auto kOperation, unsigned kRecords>
struct CallLastNRecords {
    static void Run(Input& sInput, Digest& sDigest)
    {
        const auto bSlot = sInput.Key<uint8_t>();
        const auto bPort = sInput.Key<uint8_t>();
        const auto bQueue = sInput.Key<uint8_t>();
        const auto bCount = sInput.Key<uint8_t>();
        const unsigned count = bCount == 0 || bCount > kRecords ? kRecords : bCount;
        const std::size_t size = count * sizeof(SwctQueueStatisticsHistorical);
        const Bytes pMemory = Allocate(size);
        CallGuarded<kOperation>(bSlot, bPort, bQueue, bCount,
                                reinterpret_cast<SwctQueueStatisticsHistorical*>(pMemory.get()));
        sDigest.Add(pMemory.get(), size);
    }
};
template <>
struct Call<Swct_GetQueueStatisticsHistorical15mLastNRecords>
    : CallLastNRecords<Swct_GetQueueStatisticsHistorical15mLastNRecords, SWCT_HISTORY_15M_RECORDS> {
};
template <>
struct Call<Swct_GetQueueStatisticsHistorical24hLastNRecords>
    : CallLastNRecords<Swct_GetQueueStatisticsHistorical24hLastNRecords, SWCT_HISTORY_24H_RECORDS> {
};

// Sometimes no class of the exchange.
uint16_t DrawClassId(uint8_t bKind, const RecordClass& sClass)
{
    return bKind % 16 != 14 ? sClass.wClass : static_cast<uint16_t>(0x8000U | bKind);
}

template <>
struct Call<Swct_SetConfig> {
    static void Run(Input& sInput, Digest& sDigest)
    {
        const uint8_t bKind = sInput.Byte();
        const RecordClass& sClass = DrawRecordClass(sInput);
        const Bytes pRequest = bKind % 16 != 15 ? DrawRequest(sInput, sClass) : nullptr;
        const uint32_t dwResult = CallGuarded<Swct_SetConfig>(DrawClassId(bKind, sClass), pRequest.get());
        sDigest.Add(&dwResult, sizeof dwResult);
    }
};

template <>
struct Call<Swct_GetConfig> {
    static void Run(Input& sInput, Digest& sDigest)
    {
        const uint8_t bKind = sInput.Byte();
        const RecordClass& sClass = DrawRecordClass(sInput);
        const uint32_t dwMaxElements = bKind % 4 == 0 ? sInput.Raw<uint32_t>() : sInput.Key<uint16_t>();
        const std::size_t size = ReplySize(sClass, dwMaxElements);
        const Bytes pReply = bKind % 16 != 15 ? Allocate(size) : nullptr;
        const uint32_t dwResult = CallGuarded<Swct_GetConfig>(DrawClassId(bKind, sClass), pReply.get(), dwMaxElements);
        sDigest.Add(&dwResult, sizeof dwResult);
        sDigest.Add(pReply.get(), pReply != nullptr ? size : 0);
    }
};

#define OPERATION(name, section) {#name, OperationKind::section, Call<name>::Run},
constexpr Operation kOperations[] = {
#include "operations.inc"
};
#undef OPERATION

} // namespace

OperationList Operations()
{
    return {kOperations, sizeof kOperations / sizeof kOperations[0]};
}
