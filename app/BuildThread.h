// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QThread>

#include <functional>
#include <utility>

/// Runs one build, or what follows it, and ends. A class of its own rather than QThread::create, whose
/// deferred task is not made to be unwound when a running build is terminated.
class BuildThread : public QThread
{
public:
    explicit BuildThread(std::function<void()> work)
        : m_work(std::move(work))
    {
    }

protected:
    void run() override { m_work(); }

private:
    std::function<void()> m_work;
};
