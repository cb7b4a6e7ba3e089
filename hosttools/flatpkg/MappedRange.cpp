// SPDX-License-Identifier: Apache-2.0
#include "hosttools/flatpkg/MappedRange.h"

#include <csignal>
#include <sys/mman.h>
#include <unistd.h>

namespace FlatPkg {

namespace {

/// That of this thread: the signal comes to the thread that reads.
thread_local MappedRange *current = nullptr;

void onUnreadablePage(int signal, siginfo_t *information, void * /*context*/)
{
    if (!current || !current->mend(information->si_addr))
        std::signal(signal, SIG_DFL);
}

bool watchForUnreadablePages()
{
    struct sigaction action = {};
    action.sa_sigaction = onUnreadablePage;
    action.sa_flags = SA_SIGINFO;
    return sigaction(SIGBUS, &action, nullptr) == 0;
}

} // namespace

MappedRange::MappedRange(const ByteRange &range)
    : m_shift(range.offset % sysconf(_SC_PAGESIZE))
    , m_length(static_cast<std::size_t>(m_shift + range.length))
    , m_start(mmap(nullptr, m_length, PROT_READ, MAP_SHARED | MAP_POPULATE, range.fd, range.offset - m_shift))
{
    static const bool isWatched = watchForUnreadablePages();
    current = isWatched ? this : nullptr;
}

MappedRange::~MappedRange()
{
    current = nullptr;
    if (isThere())
        munmap(m_start, m_length);
}

bool MappedRange::isThere() const
{
    return m_start != MAP_FAILED;
}

const char *MappedRange::bytes() const
{
    return static_cast<const char *>(m_start) + m_shift;
}

bool MappedRange::mend(const void *address)
{
    const auto *start = static_cast<const char *>(m_start);
    const bool isOurs = isThere() && address >= start && address < start + m_length;
    if (isOurs)
        m_isBroken = true;
    return isOurs &&
           mmap(m_start, m_length, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) == m_start;
}

} // namespace FlatPkg
