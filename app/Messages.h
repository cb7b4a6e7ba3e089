// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

/// Something that the tool said.
struct Message
{
    QDateTime time;
    QString text; ///< what happened, why, and what to do; plain text, may have several lines
    QString file; ///< absolute path of what was saved; empty for all else
};

/// What the tool has said since it started, oldest first. Every warning that a category of ours logs comes in
/// by itself, from any thread; who has a reason to tell logs it and needs to know nothing of this.
/// User-interface thread only.
class Messages : public QObject
{
    Q_OBJECT

public:
    /// Those of this process. The first call begins to listen to the log.
    static Messages &ofThisRun();

    const QList<Message> &all() const { return m_all; }

    /// Adds one that is no warning: what was saved, and where.
    void tell(const QString &text, const QString &file);

signals:
    void added(const Message &message);

private:
    Messages();
    void add(const Message &message);

    QList<Message> m_all;
};
