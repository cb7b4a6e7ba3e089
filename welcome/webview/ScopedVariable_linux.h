// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// Sets an environment variable for as long as it lives. Not while other threads read the environment.
class ScopedVariable
{
public:
    ScopedVariable(const char *name, const QByteArray &value)
        : m_name(name)
        , m_wasSet(qEnvironmentVariableIsSet(name))
        , m_before(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~ScopedVariable()
    {
        if (m_wasSet)
            qputenv(m_name, m_before);
        else
            qunsetenv(m_name);
    }
    Q_DISABLE_COPY(ScopedVariable)

private:
    const char *const m_name;
    const bool m_wasSet;
    const QByteArray m_before;
};
