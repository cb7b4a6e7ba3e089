// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

/// Collects what Qt's log receives while it lives; each line starts with "warning " or "debug ".
class LogLines
{
public:
    LogLines();
    ~LogLines();
    LogLines(const LogLines &) = delete;
    LogLines &operator=(const LogLines &) = delete;

    /// Whether a line starts with the text.
    bool has(const QString &start) const;
    QString all() const { return m_lines.join(QLatin1Char('\n')); }

private:
    static void take(QtMsgType type, const QMessageLogContext &, const QString &text);

    static LogLines *s_current;
    QStringList m_lines;
    QtMessageHandler m_before;
};
