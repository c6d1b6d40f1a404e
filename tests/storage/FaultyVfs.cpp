#include "FaultyVfs.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <sqlite3.h>

namespace FaultyVfs {
namespace {

struct File {
    sqlite3_file base;
    sqlite3_file* real;
};

sqlite3_vfs* realVfs = nullptr;
sqlite3_vfs faultyVfs;
sqlite3_io_methods methods;

std::atomic<int> armedOperation {-1};
std::atomic<int> remaining {0};
std::atomic<int> armedCode {SQLITE_OK};
std::atomic<bool> injected {false};

// The error to return instead of the call, or SQLITE_OK to let it through.
int fault(Operation operation)
{
    if (armedOperation.load() != int(operation) || injected.load())
        return SQLITE_OK;
    if (remaining.fetch_sub(1) != 1)
        return SQLITE_OK;
    injected = true;
    return armedCode.load();
}

sqlite3_file* real(sqlite3_file* file)
{
    return reinterpret_cast<File*>(file)->real;
}

int close(sqlite3_file* file)
{
    return real(file)->pMethods->xClose(real(file));
}

int read(sqlite3_file* file, void* buffer, int amount, sqlite3_int64 offset)
{
    if (const int code = fault(Operation::read))
        return code;
    return real(file)->pMethods->xRead(real(file), buffer, amount, offset);
}

int write(sqlite3_file* file, const void* buffer, int amount, sqlite3_int64 offset)
{
    if (const int code = fault(Operation::write))
        return code;
    return real(file)->pMethods->xWrite(real(file), buffer, amount, offset);
}

int truncate(sqlite3_file* file, sqlite3_int64 size)
{
    return real(file)->pMethods->xTruncate(real(file), size);
}

int sync(sqlite3_file* file, int flags)
{
    if (const int code = fault(Operation::sync))
        return code;
    return real(file)->pMethods->xSync(real(file), flags);
}

int fileSize(sqlite3_file* file, sqlite3_int64* size)
{
    return real(file)->pMethods->xFileSize(real(file), size);
}

int lock(sqlite3_file* file, int level)
{
    if (const int code = fault(Operation::lock))
        return code;
    return real(file)->pMethods->xLock(real(file), level);
}

int unlock(sqlite3_file* file, int level)
{
    return real(file)->pMethods->xUnlock(real(file), level);
}

int checkReservedLock(sqlite3_file* file, int* reserved)
{
    return real(file)->pMethods->xCheckReservedLock(real(file), reserved);
}

int fileControl(sqlite3_file* file, int op, void* argument)
{
    return real(file)->pMethods->xFileControl(real(file), op, argument);
}

int sectorSize(sqlite3_file* file)
{
    return real(file)->pMethods->xSectorSize(real(file));
}

int deviceCharacteristics(sqlite3_file* file)
{
    return real(file)->pMethods->xDeviceCharacteristics(real(file));
}

int shmMap(sqlite3_file* file, int region, int size, int extend, void volatile** memory)
{
    return real(file)->pMethods->xShmMap(real(file), region, size, extend, memory);
}

int shmLock(sqlite3_file* file, int offset, int n, int flags)
{
    return real(file)->pMethods->xShmLock(real(file), offset, n, flags);
}

void shmBarrier(sqlite3_file* file)
{
    real(file)->pMethods->xShmBarrier(real(file));
}

int shmUnmap(sqlite3_file* file, int deleteFlag)
{
    return real(file)->pMethods->xShmUnmap(real(file), deleteFlag);
}

int fetch(sqlite3_file* file, sqlite3_int64 offset, int amount, void** pages)
{
    return real(file)->pMethods->xFetch(real(file), offset, amount, pages);
}

int unfetch(sqlite3_file* file, sqlite3_int64 offset, void* page)
{
    return real(file)->pMethods->xUnfetch(real(file), offset, page);
}

int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    File* faulty = reinterpret_cast<File*>(file);
    faulty->real = reinterpret_cast<sqlite3_file*>(faulty + 1);
    faulty->base.pMethods = nullptr;
    const int status = realVfs->xOpen(realVfs, name, faulty->real, flags, outFlags);
    if (faulty->real->pMethods) {
        // Only the calls the real file has: SQLite looks at the version before using the others.
        methods.iVersion = faulty->real->pMethods->iVersion;
        faulty->base.pMethods = &methods;
    }
    return status;
}

} // namespace

void install()
{
    if (realVfs)
        return;
    realVfs = sqlite3_vfs_find(nullptr);
    if (!realVfs)
        std::abort();
    faultyVfs = *realVfs;
    faultyVfs.zName = "tolvane-faulty";
    faultyVfs.szOsFile = int(sizeof(File)) + realVfs->szOsFile;
    faultyVfs.xOpen = open;
    methods = sqlite3_io_methods {3, close, read, write, truncate, sync, fileSize, lock, unlock, checkReservedLock,
        fileControl, sectorSize, deviceCharacteristics, shmMap, shmLock, shmBarrier, shmUnmap, fetch, unfetch};
    if (sqlite3_vfs_register(&faultyVfs, 1) != SQLITE_OK)
        std::abort();
}

void arm(Operation operation, int nth, int errorCode)
{
    injected = false;
    armedCode = errorCode;
    remaining = nth;
    armedOperation = int(operation);
}

bool disarm()
{
    armedOperation = -1;
    return injected.exchange(false);
}

const char* name(Operation operation)
{
    switch (operation) {
    case Operation::read:
        return "read";
    case Operation::write:
        return "write";
    case Operation::sync:
        return "sync";
    case Operation::lock:
        return "lock";
    }
    return "?";
}

} // namespace FaultyVfs
