// SPDX-License-Identifier: Apache-2.0
#include "hosttools/base/Interrupt.h"

#include "hosttools/base/Error.h"

#include <atomic>
#include <csignal>

namespace FlatPkg::Interrupt {

namespace {

std::atomic<bool> stopRequested{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may touch nothing else");

void requestStop(int /*signal*/)
{
    stopRequested = true;
}

} // namespace

void watch()
{
    struct sigaction action = {};
    action.sa_handler = requestStop;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
}

bool isRequested()
{
    return stopRequested;
}

void check()
{
    if (isRequested())
        throw Error("stopped by a signal");
}

} // namespace FlatPkg::Interrupt
