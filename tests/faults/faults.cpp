// SPDX-License-Identifier: Apache-2.0
//
// A library to be loaded before all others (LD_PRELOAD): one file operation below a folder fails.
//
// PCT_FAULT_FOLDER   operations on files below it count, whichever process of the tree makes them
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
#include <sys/uio.h>
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
           (path.size() == folder.size() || path[folder.size()] == '/');
}

std::string placeOf(int descriptor)
{
    char link[64];
    char target[PATH_MAX];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const ssize_t length = readlink(link, target, sizeof target);
    return length > 0 ? std::string(target, static_cast<std::size_t>(length)) : std::string();
}

std::string placeOf(int folder, const char *path)
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
    const Fault kind = fullSinceShort ? Fault::Full : fault(placeOf(descriptor));
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
extern "C" {

#define OPEN_LIKE(name)                                                                                      \
    int name(const char *path, int flags, ...)                                                               \
    {                                                                                                        \
        va_list rest;                                                                                        \
        va_start(rest, flags);                                                                               \
        const mode_t mode = modeOf(flags, static_cast<mode_t>(va_arg(rest, int)));                           \
        va_end(rest);                                                                                        \
        if (fails(placeOf(AT_FDCWD, path)))                                                                  \
            return -1;                                                                                       \
        return following<int(const char *, int, ...)>(#name)(path, flags, mode);                             \
    }

#define OPENAT_LIKE(name)                                                                                    \
    int name(int folder, const char *path, int flags, ...)                                                   \
    {                                                                                                        \
        va_list rest;                                                                                        \
        va_start(rest, flags);                                                                               \
        const mode_t mode = modeOf(flags, static_cast<mode_t>(va_arg(rest, int)));                           \
        va_end(rest);                                                                                        \
        if (fails(placeOf(folder, path)))                                                                    \
            return -1;                                                                                       \
        return following<int(int, const char *, int, ...)>(#name)(folder, path, flags, mode);                \
    }

OPEN_LIKE(open)
OPEN_LIKE(open64)
OPENAT_LIKE(openat)
OPENAT_LIKE(openat64)

FILE *fopen(const char *path, const char *mode)
{
    return fails(placeOf(AT_FDCWD, path))
               ? nullptr
               : following<FILE *(const char *, const char *)>("fopen")(path, mode);
}

FILE *fopen64(const char *path, const char *mode)
{
    return fails(placeOf(AT_FDCWD, path))
               ? nullptr
               : following<FILE *(const char *, const char *)>("fopen64")(path, mode);
}

ssize_t write(int descriptor, const void *bytes, size_t size)
{
    const ssize_t some = allowed(descriptor, size);
    return some < 0 ? -1
                    : following<ssize_t(int, const void *, size_t)>("write")(descriptor, bytes,
                                                                             static_cast<size_t>(some));
}

#define PWRITE_LIKE(name, offset_type)                                                                       \
    ssize_t name(int descriptor, const void *bytes, size_t size, offset_type offset)                         \
    {                                                                                                        \
        const ssize_t some = allowed(descriptor, size);                                                      \
        if (some < 0)                                                                                        \
            return -1;                                                                                       \
        return following<ssize_t(int, const void *, size_t, offset_type)>(#name)(                            \
            descriptor, bytes, static_cast<size_t>(some), offset);                                           \
    }

PWRITE_LIKE(pwrite, off_t)
PWRITE_LIKE(pwrite64, off64_t)

ssize_t writev(int descriptor, const struct iovec *parts, int count)
{
    return fails(placeOf(descriptor))
               ? -1
               : following<ssize_t(int, const iovec *, int)>("writev")(descriptor, parts, count);
}

ssize_t copy_file_range(int from, off64_t *source, int to, off64_t *target, size_t size, unsigned flags)
{
    const ssize_t some = allowed(to, size);
    return some < 0 ? -1
                    : following<ssize_t(int, off64_t *, int, off64_t *, size_t, unsigned)>("copy_file_range")(
                          from, source, to, target, static_cast<size_t>(some), flags);
}

ssize_t read(int descriptor, void *bytes, size_t size)
{
    return fails(placeOf(descriptor))
               ? -1
               : following<ssize_t(int, void *, size_t)>("read")(descriptor, bytes, size);
}

#define PREAD_LIKE(name, offset_type)                                                                        \
    ssize_t name(int descriptor, void *bytes, size_t size, offset_type offset)                               \
    {                                                                                                        \
        if (fails(placeOf(descriptor)))                                                                      \
            return -1;                                                                                       \
        return following<ssize_t(int, void *, size_t, offset_type)>(#name)(descriptor, bytes, size, offset); \
    }

PREAD_LIKE(pread, off_t)
PREAD_LIKE(pread64, off64_t)

#define ON_DESCRIPTOR(name)                                                                                  \
    int name(int descriptor)                                                                                 \
    {                                                                                                        \
        return fails(placeOf(descriptor)) ? -1 : following<int(int)>(#name)(descriptor);                     \
    }

ON_DESCRIPTOR(fsync)
ON_DESCRIPTOR(fdatasync)

int ftruncate(int descriptor, off_t size)
{
    return fails(placeOf(descriptor)) ? -1 : following<int(int, off_t)>("ftruncate")(descriptor, size);
}

int ftruncate64(int descriptor, off64_t size)
{
    return fails(placeOf(descriptor)) ? -1 : following<int(int, off64_t)>("ftruncate64")(descriptor, size);
}

int fchmod(int descriptor, mode_t mode)
{
    return fails(placeOf(descriptor)) ? -1 : following<int(int, mode_t)>("fchmod")(descriptor, mode);
}

#define ON_PATH(name)                                                                                        \
    int name(const char *path)                                                                               \
    {                                                                                                        \
        return fails(placeOf(AT_FDCWD, path)) ? -1 : following<int(const char *)>(#name)(path);              \
    }

ON_PATH(unlink)
ON_PATH(rmdir)
ON_PATH(remove)

#define WITH_MODE(name)                                                                                      \
    int name(const char *path, mode_t mode)                                                                  \
    {                                                                                                        \
        return fails(placeOf(AT_FDCWD, path)) ? -1                                                           \
                                              : following<int(const char *, mode_t)>(#name)(path, mode);     \
    }

WITH_MODE(mkdir)
WITH_MODE(chmod)

int mkdirat(int folder, const char *path, mode_t mode)
{
    return fails(placeOf(folder, path))
               ? -1
               : following<int(int, const char *, mode_t)>("mkdirat")(folder, path, mode);
}

int unlinkat(int folder, const char *path, int flags)
{
    return fails(placeOf(folder, path))
               ? -1
               : following<int(int, const char *, int)>("unlinkat")(folder, path, flags);
}

#define ON_TWO_PATHS(name)                                                                                   \
    int name(const char *from, const char *to)                                                               \
    {                                                                                                        \
        if (fails(placeOf(AT_FDCWD, to)))                                                                    \
            return -1;                                                                                       \
        return following<int(const char *, const char *)>(#name)(from, to);                                  \
    }

ON_TWO_PATHS(rename)
ON_TWO_PATHS(link)
ON_TWO_PATHS(symlink)

int renameat(int fromFolder, const char *from, int toFolder, const char *to)
{
    if (fails(placeOf(toFolder, to)))
        return -1;
    return following<int(int, const char *, int, const char *)>("renameat")(fromFolder, from, toFolder, to);
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags)
{
    if (fails(placeOf(toFolder, to)))
        return -1;
    return following<int(int, const char *, int, const char *, unsigned)>("renameat2")(fromFolder, from,
                                                                                       toFolder, to, flags);
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags)
{
    if (fails(placeOf(toFolder, to)))
        return -1;
    return following<int(int, const char *, int, const char *, int)>("linkat")(fromFolder, from, toFolder, to,
                                                                               flags);
}

/// The descriptor is gone in any case.
int close(int descriptor)
{
    const bool failing = fails(placeOf(descriptor));
    const int reason = errno;
    const int result = following<int(int)>("close")(descriptor);
    if (!failing)
        return result;
    errno = reason;
    return -1;
}

#define STATUS_LIKE(name, type)                                                                              \
    int name(const char *path, struct type *status)                                                          \
    {                                                                                                        \
        if (fails(placeOf(AT_FDCWD, path)))                                                                  \
            return -1;                                                                                       \
        return following<int(const char *, struct type *)>(#name)(path, status);                             \
    }

#define FSTATUS_LIKE(name, type)                                                                             \
    int name(int descriptor, struct type *status)                                                            \
    {                                                                                                        \
        return fails(placeOf(descriptor)) ? -1                                                               \
                                          : following<int(int, struct type *)>(#name)(descriptor, status);   \
    }

#define STATUSAT_LIKE(name, type)                                                                            \
    int name(int folder, const char *path, struct type *status, int flags)                                   \
    {                                                                                                        \
        if (fails(placeOf(folder, path)))                                                                    \
            return -1;                                                                                       \
        return following<int(int, const char *, struct type *, int)>(#name)(folder, path, status, flags);    \
    }

STATUS_LIKE(stat, stat)
STATUS_LIKE(stat64, stat64)
STATUS_LIKE(lstat, stat)
STATUS_LIKE(lstat64, stat64)
FSTATUS_LIKE(fstat, stat)
FSTATUS_LIKE(fstat64, stat64)
STATUSAT_LIKE(fstatat, stat)
STATUSAT_LIKE(fstatat64, stat64)

int statx(int folder, const char *path, int flags, unsigned mask, struct statx *status)
{
    if (fails(placeOf(folder, path)))
        return -1;
    return following<int(int, const char *, int, unsigned, struct statx *)>("statx")(folder, path, flags,
                                                                                     mask, status);
}

int access(const char *path, int mode)
{
    return fails(placeOf(AT_FDCWD, path)) ? -1 : following<int(const char *, int)>("access")(path, mode);
}

DIR *opendir(const char *path)
{
    return fails(placeOf(AT_FDCWD, path)) ? nullptr : following<DIR *(const char *)>("opendir")(path);
}

DIR *fdopendir(int descriptor)
{
    return fails(placeOf(descriptor)) ? nullptr : following<DIR *(int)>("fdopendir")(descriptor);
}

int utimensat(int folder, const char *path, const struct timespec times[2], int flags)
{
    if (fails(placeOf(folder, path)))
        return -1;
    return following<int(int, const char *, const timespec *, int)>("utimensat")(folder, path, times, flags);
}

int futimens(int descriptor, const struct timespec times[2])
{
    return fails(placeOf(descriptor)) ? -1
                                      : following<int(int, const timespec *)>("futimens")(descriptor, times);
}

} // extern "C"
// NOLINTEND
