// SPDX-License-Identifier: Apache-2.0
#include "tests/profile/LogLines.h"

LogLines *LogLines::s_current = nullptr;

LogLines::LogLines()
    : m_before(qInstallMessageHandler(&LogLines::take))
{
    s_current = this;
}

LogLines::~LogLines()
{
    s_current = nullptr;
    qInstallMessageHandler(m_before);
}

bool LogLines::has(const QString &start) const
{
    for (const QString &line : m_lines) {
        if (line.startsWith(start))
            return true;
    }
    return false;
}

void LogLines::take(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    s_current->m_lines << (type == QtWarningMsg ? QStringLiteral("warning ") : QStringLiteral("debug ")) +
                              text;
}
