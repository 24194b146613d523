// shm.cpp - shared memory: POSIX objects, named with a prefix.
//
// A process that attaches never gets a signal for it: sizes are compared before anything is mapped, and the pages of an
// object are reserved before it has its size.  Every failure is one line on stderr and a reason that the program can
// ask.
#include "line.h"
#include "platform/slib.h"
#include "settings.h"

#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using standin::Line;
using standin::sSettings;

static_assert(STANDIN__SHM_PATH_SIZE == NAME_MAX + 2, "'/', a file name, zero byte");

namespace {

// An object on its way from a name to a mapping.
struct Object {
    const char* pVerb; // for messages: what the caller wants to do
    char aPath[STANDIN__SHM_PATH_SIZE] = {};
    int iFd = -1;

    explicit Object(const char* pVerbToPrint) : pVerb(pVerbToPrint) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    ~Object()
    {
        Close();
    }

    void Close()
    {
        if (iFd >= 0) {
            close(iFd);
            iFd = -1;
        }
    }
};

__attribute__((format(printf, 3, 4))) void Fail(Object& sObject, uint32_t dwReason, const char* pFormat, ...)
{
    sObject.Close(); // in a process without stderr the object may have got its number: no line may land in it
    Line line;
    line.Add("cannot %s shared memory %s: ", sObject.pVerb, sObject.aPath);
    va_list pArguments;
    va_start(pArguments, pFormat);
    line.AddList(pFormat, pArguments);
    va_end(pArguments);
    line.Write();
    sSettings.dwShmFailure = dwReason;
}

struct ErrorText {
    int iError;
    uint32_t dwReason;
    const char* pText;
};

constexpr const char* pNoPermission = "no permission; run as the user that created it, others may only read it";
constexpr const char* pNoSpace = "no memory for it; make room in the shared-memory file system (/dev/shm)";

constexpr ErrorText asErrorText[] = {
    {ENOENT, STANDIN__SHM_MISSING,
     "it does not exist; start the process that creates it, or correct PIOVIOS_SHM_PREFIX"},
    {EACCES, STANDIN__SHM_NO_PERMISSION, pNoPermission},
    {EPERM, STANDIN__SHM_NO_PERMISSION, pNoPermission},
    {ENOSPC, STANDIN__SHM_NO_SPACE, pNoSpace},
    {ENOMEM, STANDIN__SHM_NO_SPACE, pNoSpace},
    {EFBIG, STANDIN__SHM_NO_SPACE, "the process may not make files of this size; raise its limit (ulimit -f)"},
};

void FailWithError(Object& sObject, int iError)
{
    for (const ErrorText& sRow : asErrorText) {
        if (sRow.iError == iError) {
            Fail(sObject, sRow.dwReason, "%s", sRow.pText);
            return;
        }
    }
    Fail(sObject, STANDIN__SHM_SYSTEM, "%s; see whether /dev/shm is in order", std::strerror(iError));
}

bool IsPlain(const char* pText)
{
    return pText[std::strspn(pText, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.")] == '\0';
}

const char* Prefix()
{
    if (sSettings.boShmPrefixIsSet) {
        return sSettings.aShmPrefix;
    }
    const char* pPrefix = std::getenv("PIOVIOS_SHM_PREFIX");
    return pPrefix != nullptr ? pPrefix : "";
}

// Begins every use of an object: gives it its full name.
bool SetPath(Object& sObject, const char* pName)
{
    sSettings.dwShmFailure = STANDIN__SHM_NO_FAILURE;
    std::snprintf(sObject.aPath, sizeof(sObject.aPath), "%s", pName != nullptr ? pName : "(null)"); // for messages
    if (pName == nullptr || pName[0] != '/' || pName[1] == '\0' || !IsPlain(pName + 1)) {
        Fail(sObject, STANDIN__SHM_BAD_NAME, "bad name; use '/', then letters, digits, '-', '_' or '.'");
        return false;
    }
    const char* pPrefix = Prefix();
    if (std::strlen(pPrefix) + std::strlen(pName) >= sizeof(sObject.aPath)) {
        Fail(sObject, STANDIN__SHM_BAD_NAME, "its name has more than %d characters; shorten PIOVIOS_SHM_PREFIX",
             NAME_MAX);
        return false;
    }
    if (!IsPlain(pPrefix)) {
        Fail(sObject, STANDIN__SHM_BAD_NAME, "bad prefix; use letters, digits, '-', '_' or '.' in PIOVIOS_SHM_PREFIX");
        return false;
    }
    std::snprintf(sObject.aPath, sizeof(sObject.aPath), "/%s%s", pPrefix, pName + 1);
    return true;
}

// -1 when the system does not tell.
intmax_t SizeOf(const Object& sObject)
{
    struct stat sStat = {};
    return fstat(sObject.iFd, &sStat) == 0 ? sStat.st_size : -1;
}

// With MAP_POPULATE in 'iFlags' all pages are mapped at once: worth it for a creator, who writes them all.
void* Map(Object& sObject, uint32_t dwSize, int iProtection, int iFlags = 0)
{
    void* pMapping = mmap(nullptr, dwSize, iProtection, MAP_SHARED | iFlags, sObject.iFd, 0);
    if (pMapping == MAP_FAILED) {
        Fail(sObject, STANDIN__SHM_SYSTEM, "mapping %u bytes: %s; raise the memory limit of the process (ulimit -v)",
             dwSize, std::strerror(errno));
        return nullptr;
    }
    return pMapping;
}

// Nobody may write to a copy, as if it were somebody else's.
bool RefusesCopy(Object& sObject)
{
    if (sSettings.pShmCopy != nullptr) {
        Fail(sObject, STANDIN__SHM_NO_PERMISSION, "%s takes its place, a copy that can only be read",
             sSettings.pShmCopy);
    }
    return sSettings.pShmCopy != nullptr;
}

// Reads what is there, up to 'iSize' bytes; -1 for an error.
ssize_t ReadAll(int iFd, uint8_t* pBytes, size_t iSize)
{
    size_t iRead = 0;
    while (iRead < iSize) {
        const ssize_t iGot = read(iFd, pBytes + iRead, iSize - iRead);
        if (iGot == 0) {
            break;
        }
        if (iGot > 0) {
            iRead += static_cast<size_t>(iGot);
        } else if (errno != EINTR) {
            return -1;
        }
    }
    return static_cast<ssize_t>(iRead);
}

// A file is read, not mapped: it may be a pipe, and may be truncated later.
void* OpenCopy(uint32_t dwSize)
{
    Object sObject("read a copy of");
    std::snprintf(sObject.aPath, sizeof(sObject.aPath), "%s", sSettings.pShmCopy);
    sObject.iFd = open(sSettings.pShmCopy, O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (sObject.iFd < 0) {
        Fail(sObject, errno == ENOENT ? STANDIN__SHM_MISSING : STANDIN__SHM_SYSTEM, "%s", std::strerror(errno));
        return nullptr;
    }
    const size_t iRoom = size_t{dwSize} + 1; // a byte more shows a longer file
    void* pCopy = mmap(nullptr, iRoom, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    const ssize_t iRead = pCopy == MAP_FAILED ? -1 : ReadAll(sObject.iFd, static_cast<uint8_t*>(pCopy), iRoom);
    if (iRead < 0) {
        Fail(sObject, STANDIN__SHM_SYSTEM, "%s", std::strerror(errno));
    } else if (iRead != dwSize) {
        Fail(sObject, STANDIN__SHM_OTHER_SIZE, "it has %s%zd bytes instead of %u; copy the whole object",
             iRead > dwSize ? "at least " : "", iRead, dwSize);
    } else if (mprotect(pCopy, iRoom, PROT_READ) == 0) {
        return pCopy;
    }
    if (pCopy != MAP_FAILED) {
        munmap(pCopy, iRoom);
    }
    return nullptr;
}

enum class Found { kNothing, kKept, kMade };

// Opens the object that is there if it has the right size; else makes a new one, so far of no size.  A creator that
// died half-way has left such an object behind: it is replaced like any other of a wrong size.
Found OpenOrMake(Object& sObject, uint32_t dwSize)
{
    sObject.iFd = shm_open(sObject.aPath, O_RDWR | O_CLOEXEC, 0);
    if (sObject.iFd >= 0 && SizeOf(sObject) == dwSize) {
        return Found::kKept;
    }
    const bool boIsGone = sObject.iFd < 0 ? errno == ENOENT : shm_unlink(sObject.aPath) == 0 || errno == ENOENT;
    if (!boIsGone) {
        FailWithError(sObject, errno);
        return Found::kNothing;
    }
    sObject.Close();
    sObject.iFd = shm_open(sObject.aPath, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (sObject.iFd < 0) {
        FailWithError(sObject, errno == ENOENT ? ENODEV : errno); // it is the file system that is missing
        return Found::kNothing;
    }
    return Found::kMade;
}

// Sets the mode of the object and reserves its pages; a new object gets its size by that, in one step and only when all
// pages are there.  A kept one may lack pages if something else made it.  Returns 0 or an error number.
int Reserve(const Object& sObject, uint32_t dwSize)
{
    if (fchmod(sObject.iFd, S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH) != 0) {
        return errno;
    }
    struct rlimit sLimit = {};
    if (SizeOf(sObject) != dwSize && getrlimit(RLIMIT_FSIZE, &sLimit) == 0 && sLimit.rlim_cur < dwSize) {
        return EFBIG; // growing beyond this limit would send a signal
    }
    int iError = EINTR;
    while (iError == EINTR) {
        iError = posix_fallocate(sObject.iFd, 0, dwSize);
    }
    return iError;
}

} // namespace

void* Slib__CreateShm(const char* pName, uint32_t dwSize, uint32_t dwMode)
{
    if (standin::StartsShmCall(pName, dwMode, &StandinShmCalls::dwCreates)) {
        return standin::TakeMemory(sSettings.sMemory.pCreated, dwSize);
    }
    Object sObject("create");
    if (!SetPath(sObject, pName) || RefusesCopy(sObject)) {
        return nullptr;
    }
    const Found eFound = OpenOrMake(sObject, dwSize);
    if (eFound == Found::kNothing) {
        return nullptr;
    }
    void* pMapping = nullptr;
    const int iError = Reserve(sObject, dwSize);
    if (iError != 0) {
        FailWithError(sObject, iError);
    } else {
        pMapping = Map(sObject, dwSize, PROT_READ | PROT_WRITE, MAP_POPULATE);
    }
    if (pMapping == nullptr && eFound == Found::kMade) {
        shm_unlink(sObject.aPath);
    }
    return pMapping;
}

void* Slib__OpenShm(const char* pName, uint32_t dwSize, uint32_t dwMode)
{
    const bool boMayWrite = dwMode == SLIB__SHM_READ_WRITE;
    if (standin::StartsShmCall(pName, dwMode, &StandinShmCalls::dwOpens)) {
        const StandinMemory& sMemory = sSettings.sMemory;
        return standin::TakeMemory(boMayWrite ? sMemory.pWritable : const_cast<void*>(sMemory.pReadable), dwSize);
    }
    if (sSettings.pShmCopy != nullptr && !boMayWrite) {
        return OpenCopy(dwSize);
    }
    Object sObject("open");
    if (!SetPath(sObject, pName) || RefusesCopy(sObject)) {
        return nullptr;
    }
    sObject.iFd = shm_open(sObject.aPath, (boMayWrite ? O_RDWR : O_RDONLY) | O_CLOEXEC, 0);
    if (sObject.iFd < 0) {
        FailWithError(sObject, errno);
        return nullptr;
    }
    const intmax_t iSize = SizeOf(sObject);
    if (iSize != dwSize) {
        Fail(sObject, STANDIN__SHM_OTHER_SIZE,
             "it has %" PRIdMAX " bytes instead of %u; run the same version everywhere and create it anew", iSize,
             dwSize);
        return nullptr;
    }
    return Map(sObject, dwSize, boMayWrite ? PROT_READ | PROT_WRITE : PROT_READ);
}

uint32_t Standin__GetShmFailure(void)
{
    return sSettings.dwShmFailure;
}

void Standin__SetShmPrefix(const char* pPrefix)
{
    sSettings.boShmPrefixIsSet = pPrefix != nullptr;
    // One that is cut off here is still too long with any name behind it, so it is refused when it is used.
    std::snprintf(sSettings.aShmPrefix, sizeof(sSettings.aShmPrefix), "%s", pPrefix != nullptr ? pPrefix : "");
}

void Standin__UseShmCopy(const char* pFile)
{
    sSettings.pShmCopy = pFile;
}

uint32_t Standin__ShmPath(const char* pName, char* pPath, uint32_t dwSize)
{
    Object sObject("name");
    if (!SetPath(sObject, pName)) {
        return 0;
    }
    const size_t iNeeded = std::strlen(sObject.aPath) + 1;
    if (pPath == nullptr || dwSize < iNeeded) {
        Fail(sObject, STANDIN__SHM_BAD_NAME, "no room for its name; give a buffer of %d bytes", STANDIN__SHM_PATH_SIZE);
        return 0;
    }
    std::memcpy(pPath, sObject.aPath, iNeeded);
    return 1;
}

uint32_t Standin__RemoveShm(const char* pName)
{
    Object sObject("remove");
    if (!SetPath(sObject, pName) || RefusesCopy(sObject)) {
        return 0;
    }
    if (shm_unlink(sObject.aPath) != 0) {
        FailWithError(sObject, errno);
        return 0;
    }
    return 1;
}
