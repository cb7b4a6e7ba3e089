// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>

/// Lets a number of events pass in each second, so that a page cannot flood what lies behind.
class RateLimit
{
public:
    explicit RateLimit(int perSecond)
        : m_perSecond(perSecond)
    {
    }

    /// Counts one more event: true while there is room for it.
    bool admits()
    {
        if (!m_second.isValid() || m_second.hasExpired(1000)) {
            m_second.start();
            m_count = 0;
        }
        return ++m_count <= m_perSecond;
    }

    /// Whether the last event was the first too many, the moment to say so.
    bool hasJustFilled() const { return m_count == m_perSecond + 1; }

private:
    const int m_perSecond;
    int m_count = 0;
    QElapsedTimer m_second;
};
