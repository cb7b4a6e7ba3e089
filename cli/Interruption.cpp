// SPDX-License-Identifier: Apache-2.0
#include "cli/Interruption.h"

#include "cli/ChildProcesses.h"
#include "core/PrintableText.h"
#include "core/TransientFolder.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr std::array caughtSignals = {SIGINT, SIGTERM, SIGHUP};
// Together less than a second, with time left to take away what was made.
constexpr auto patienceWithChildren = 300ms;
constexpr auto patienceWithWork = 600ms;
constexpr auto timeBetweenLooks = 20ms;

// A signal handler reaches nothing but these.
std::atomic<int> arrivedSignal{0};
std::atomic<int> wakeUpEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler must not wait for a lock");

void wakeWatcher()
{
    const char byte = 0;
    while (::write(wakeUpEnd, &byte, 1) < 0 && errno == EINTR) {
    }
}

void onSignal(int signal)
{
    const int before = errno;
    arrivedSignal = signal;
    wakeWatcher();
    errno = before;
}

/// A signal that the starter has set to be ignored, as nohup does, stays ignored.
void catchSignal(int signal)
{
    struct sigaction action = {};
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
        return;
    action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

void endDescendants(pid_t process, int signal)
{
    for (const pid_t child : childProcessesOf(process)) {
        if (child <= 0)
            continue;
        endDescendants(child, signal);
        ::kill(child, signal);
    }
}

} // namespace

Interruption::Interruption(const QString &subject)
    : m_lastWords(QStringLiteral("pct: %1: %2\n").arg(printableText(subject), text()).toUtf8())
{
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        return;
    ::fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    ::fcntl(ends[1], F_SETFD, FD_CLOEXEC);
    m_readEnd = ends[0];
    wakeUpEnd = ends[1];
    m_watcher = std::thread(&Interruption::watch, this);
    for (const int signal : caughtSignals)
        catchSignal(signal);
}

Interruption::~Interruption()
{
    m_finished = true;
    if (!m_watcher.joinable())
        return;
    wakeWatcher();
    m_watcher.join();
}

bool Interruption::happened() const
{
    return arrivedSignal != 0;
}

bool Interruption::isTheFirstToTell()
{
    return !m_told.exchange(true);
}

QString Interruption::text()
{
    return QStringLiteral("interrupted; run it again");
}

void Interruption::endBySignal()
{
    if (arrivedSignal == 0)
        return;
    std::signal(arrivedSignal, SIG_DFL);
    std::raise(arrivedSignal);
}

void Interruption::watch()
{
    char byte = 0;
    while (::read(m_readEnd, &byte, 1) < 0 && errno == EINTR) {
    }
    if (!endChildrenUntilFinished())
        endWork();
}

/// Again and again, because the failing work may start another child before it ends. False when the work
/// goes on nevertheless.
bool Interruption::endChildrenUntilFinished() const
{
    const auto start = std::chrono::steady_clock::now();
    while (!m_finished) {
        const auto waited = std::chrono::steady_clock::now() - start;
        endDescendants(::getpid(), waited > patienceWithChildren ? SIGKILL : SIGTERM);
        if (waited > patienceWithWork)
            return false;
        std::this_thread::sleep_for(timeBetweenLooks);
    }
    return true;
}

void Interruption::endWork()
{
    if (isTheFirstToTell())
        std::fputs(m_lastWords.constData(), stderr);
    TransientFolder::removeAllAtTheEnd();
    endBySignal();
}
