// SPDX-License-Identifier: Apache-2.0
//
// A library to be loaded before all others (LD_PRELOAD): one file operation below a folder fails.
//
// PCT_FAULT_FOLDER   operations on files below it count, whichever process of the tree makes them
// PCT_FAULT_PLACE    and whose path holds this text; when it is empty, all below the folder
// PCT_FAULT_COUNTER  a file with an integer in it, shared by all processes, that counts them; it must exist
// PCT_FAULT_AT       which one fails, from 1; 0 counts only
// PCT_FAULT_KIND     how: "error" (EIO), "full" (no space), "short" (one byte less is written, then no
// space),
//                    "kill" (the process dies before the operation)
//
// Files are named by descriptors as often as by paths, so both are resolved to where the file lies.

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

enum class Fault { None, Error, Full, Short };

std::string setting(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

template <typename Function> Function *following(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

/// The counter is mapped, so that children and their children add to the same one.
int *mapCounter()
{
    const auto open = following<int(const char *, int, ...)>("open");
    const int descriptor = open(setting("PCT_FAULT_COUNTER").c_str(), O_RDWR | O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    void *memory = mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    following<int(int)>("close")(descriptor);
    return memory == MAP_FAILED ? nullptr : static_cast<int *>(memory);
}

struct Plan
{
    std::string folder = setting("PCT_FAULT_FOLDER");
    std::string place = setting("PCT_FAULT_PLACE");
    std::string kind = setting("PCT_FAULT_KIND");
    int at = std::atoi(setting("PCT_FAULT_AT").c_str());
    int *counter = mapCounter();
};

const Plan &plan()
{
    static const Plan one;
    return one;
}

bool isBelow(const std::string &path)
{
    const std::string &folder = plan().folder;
    return path.compare(0, folder.size(), folder) == 0 &&
           (path.size() == folder.size() || path[folder.size()] == '/') &&
           path.find(plan().place) != std::string::npos;
}

std::string placeOf(int descriptor)
{
    char link[64];
    char target[PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const ssize_t length = readlink(link, target, sizeof target);
    return length > 0 ? std::string(target, static_cast<std::size_t>(length)) : std::string();
}

/// Callers may pass a null path, though the declarations of what they call say otherwise.
[[gnu::noinline]] std::string placeOf(int folder, const char *path)
{
    if (path == nullptr || path[0] == '\0')
        return placeOf(folder);
    if (path[0] == '/')
        return path;
    if (folder != AT_FDCWD)
        return placeOf(folder) + '/' + path;
    char current[PATH_MAX];
    return getcwd(current, sizeof current) ? std::string(current) + '/' + path : path;
}

Fault fault(const std::string &place)
{
    if (!plan().counter || plan().folder.empty() || !isBelow(place))
        return Fault::None;
    if (__atomic_add_fetch(plan().counter, 1, __ATOMIC_SEQ_CST) != plan().at)
        return Fault::None;
    if (plan().kind == "kill")
        raise(SIGKILL);
    if (plan().kind == "error")
        return Fault::Error;
    return plan().kind == "short" ? Fault::Short : Fault::Full;
}

int errorOf(Fault kind)
{
    return kind == Fault::Error ? EIO : ENOSPC;
}

/// True, with errno set, when this operation is the one that fails.
bool fails(const std::string &place)
{
    const Fault kind = fault(place);
    if (kind == Fault::None)
        return false;
    errno = errorOf(kind);
    return true;
}

/// How many bytes to let through, or -1 with errno set. A short write is no error by itself; what would
/// follow it is.
ssize_t allowed(int descriptor, std::size_t size)
{
    static bool fullSinceShort = false;
    const std::string place = placeOf(descriptor);
    const Fault kind = fullSinceShort && isBelow(place) ? Fault::Full : fault(place);
    if (kind == Fault::Short && size > 1) {
        fullSinceShort = true;
        return static_cast<ssize_t>(size - 1);
    }
    if (kind == Fault::None)
        return static_cast<ssize_t>(size);
    errno = errorOf(kind);
    return -1;
}

mode_t modeOf(int flags, mode_t given)
{
    return flags & (O_CREAT | O_TMPFILE) ? given : 0;
}

} // namespace

// NOLINTBEGIN: the names and types are the C library's.
#define PASS_ON(name, place, failure, ...)                                                                   \
    return fails(place) ? failure : following<decltype(name)>(#name)(__VA_ARGS__)

#define OPENING(name, place, ...)                                                                            \
    va_list rest;                                                                                            \
    va_start(rest, flags);                                                                                   \
    const mode_t mode = modeOf(flags, static_cast<mode_t>(va_arg(rest, int)));                               \
    va_end(rest);                                                                                            \
    PASS_ON(name, place, -1, __VA_ARGS__, flags, mode)

extern "C" {

int open(const char *path, int flags, ...)
{
    OPENING(open, placeOf(AT_FDCWD, path), path);
}

int open64(const char *path, int flags, ...)
{
    OPENING(open64, placeOf(AT_FDCWD, path), path);
}

int openat(int folder, const char *path, int flags, ...)
{
    OPENING(openat, placeOf(folder, path), folder, path);
}

int openat64(int folder, const char *path, int flags, ...)
{
    OPENING(openat64, placeOf(folder, path), folder, path);
}

FILE *fopen(const char *path, const char *mode)
{
    PASS_ON(fopen, placeOf(AT_FDCWD, path), nullptr, path, mode);
}

FILE *fopen64(const char *path, const char *mode)
{
    PASS_ON(fopen64, placeOf(AT_FDCWD, path), nullptr, path, mode);
}

DIR *opendir(const char *path)
{
    PASS_ON(opendir, placeOf(AT_FDCWD, path), nullptr, path);
}

DIR *fdopendir(int descriptor)
{
    PASS_ON(fdopendir, placeOf(descriptor), nullptr, descriptor);
}

/// The descriptor is gone in any case.
int close(int descriptor)
{
    const bool failing = fails(placeOf(descriptor));
    const int reason = errno;
    const int result = following<decltype(close)>("close")(descriptor);
    if (!failing)
        return result;
    errno = reason;
    return -1;
}

ssize_t read(int descriptor, void *bytes, size_t size)
{
    PASS_ON(read, placeOf(descriptor), -1, descriptor, bytes, size);
}

ssize_t pread(int descriptor, void *bytes, size_t size, off_t offset)
{
    PASS_ON(pread, placeOf(descriptor), -1, descriptor, bytes, size, offset);
}

ssize_t pread64(int descriptor, void *bytes, size_t size, off64_t offset)
{
    PASS_ON(pread64, placeOf(descriptor), -1, descriptor, bytes, size, offset);
}

ssize_t write(int descriptor, const void *bytes, size_t size)
{
    const ssize_t some = allowed(descriptor, size);
    return some < 0 ? -1 : following<decltype(write)>("write")(descriptor, bytes, static_cast<size_t>(some));
}

ssize_t pwrite(int descriptor, const void *bytes, size_t size, off_t offset)
{
    const ssize_t some = allowed(descriptor, size);
    const auto next = following<decltype(pwrite)>("pwrite");
    return some < 0 ? -1 : next(descriptor, bytes, static_cast<size_t>(some), offset);
}

ssize_t pwrite64(int descriptor, const void *bytes, size_t size, off64_t offset)
{
    const ssize_t some = allowed(descriptor, size);
    const auto next = following<decltype(pwrite64)>("pwrite64");
    return some < 0 ? -1 : next(descriptor, bytes, static_cast<size_t>(some), offset);
}

ssize_t copy_file_range(int from, off64_t *source, int to, off64_t *target, size_t size, unsigned flags)
{
    const ssize_t some = allowed(to, size);
    const auto next = following<decltype(copy_file_range)>("copy_file_range");
    return some < 0 ? -1 : next(from, source, to, target, static_cast<size_t>(some), flags);
}

int fsync(int descriptor)
{
    PASS_ON(fsync, placeOf(descriptor), -1, descriptor);
}

int ftruncate(int descriptor, off_t size)
{
    PASS_ON(ftruncate, placeOf(descriptor), -1, descriptor, size);
}

int ftruncate64(int descriptor, off64_t size)
{
    PASS_ON(ftruncate64, placeOf(descriptor), -1, descriptor, size);
}

int fchmod(int descriptor, mode_t mode)
{
    PASS_ON(fchmod, placeOf(descriptor), -1, descriptor, mode);
}

int chmod(const char *path, mode_t mode)
{
    PASS_ON(chmod, placeOf(AT_FDCWD, path), -1, path, mode);
}

int mkdir(const char *path, mode_t mode)
{
    PASS_ON(mkdir, placeOf(AT_FDCWD, path), -1, path, mode);
}

int mkdirat(int folder, const char *path, mode_t mode)
{
    PASS_ON(mkdirat, placeOf(folder, path), -1, folder, path, mode);
}

int unlink(const char *path)
{
    PASS_ON(unlink, placeOf(AT_FDCWD, path), -1, path);
}

int unlinkat(int folder, const char *path, int flags)
{
    PASS_ON(unlinkat, placeOf(folder, path), -1, folder, path, flags);
}

int rmdir(const char *path)
{
    PASS_ON(rmdir, placeOf(AT_FDCWD, path), -1, path);
}

int rename(const char *from, const char *to)
{
    PASS_ON(rename, placeOf(AT_FDCWD, to), -1, from, to);
}

int renameat(int fromFolder, const char *from, int toFolder, const char *to)
{
    PASS_ON(renameat, placeOf(toFolder, to), -1, fromFolder, from, toFolder, to);
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags)
{
    PASS_ON(renameat2, placeOf(toFolder, to), -1, fromFolder, from, toFolder, to, flags);
}

int link(const char *from, const char *to)
{
    PASS_ON(link, placeOf(AT_FDCWD, to), -1, from, to);
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags)
{
    PASS_ON(linkat, placeOf(toFolder, to), -1, fromFolder, from, toFolder, to, flags);
}

int symlink(const char *target, const char *path)
{
    PASS_ON(symlink, placeOf(AT_FDCWD, path), -1, target, path);
}

int stat(const char *path, struct stat *status)
{
    PASS_ON(stat, placeOf(AT_FDCWD, path), -1, path, status);
}

int stat64(const char *path, struct stat64 *status)
{
    PASS_ON(stat64, placeOf(AT_FDCWD, path), -1, path, status);
}

int lstat(const char *path, struct stat *status)
{
    PASS_ON(lstat, placeOf(AT_FDCWD, path), -1, path, status);
}

int lstat64(const char *path, struct stat64 *status)
{
    PASS_ON(lstat64, placeOf(AT_FDCWD, path), -1, path, status);
}

int fstat(int descriptor, struct stat *status)
{
    PASS_ON(fstat, placeOf(descriptor), -1, descriptor, status);
}

int fstat64(int descriptor, struct stat64 *status)
{
    PASS_ON(fstat64, placeOf(descriptor), -1, descriptor, status);
}

int fstatat(int folder, const char *path, struct stat *status, int flags)
{
    PASS_ON(fstatat, placeOf(folder, path), -1, folder, path, status, flags);
}

int fstatat64(int folder, const char *path, struct stat64 *status, int flags)
{
    PASS_ON(fstatat64, placeOf(folder, path), -1, folder, path, status, flags);
}

int statx(int folder, const char *path, int flags, unsigned mask, struct statx *status)
{
    PASS_ON(statx, placeOf(folder, path), -1, folder, path, flags, mask, status);
}

int utimensat(int folder, const char *path, const struct timespec times[2], int flags)
{
    PASS_ON(utimensat, placeOf(folder, path), -1, folder, path, times, flags);
}

int futimens(int descriptor, const struct timespec times[2])
{
    PASS_ON(futimens, placeOf(descriptor), -1, descriptor, times);
}

} // extern "C"
// NOLINTEND
