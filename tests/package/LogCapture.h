// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

/// Collects the debug lines that are written while the object lives. One at a time, one thread.
class LogCapture
{
public:
    LogCapture()
    {
        s_lines.clear();
        m_previous = qInstallMessageHandler(collect);
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    bool has(const QString &line) const { return s_lines.contains(line); }
    QStringList lines() const { return s_lines; }

private:
    static void collect(QtMsgType, const QMessageLogContext &, const QString &line) { s_lines.append(line); }

    static inline QStringList s_lines;
    QtMessageHandler m_previous = nullptr;
};
