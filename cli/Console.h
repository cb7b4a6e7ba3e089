// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "core/Result.h"

#include <QJsonObject>
#include <QList>
#include <QTextStream>

#include <functional>
#include <optional>

class Interruption;

/// The two streams of a verb: data goes to `out` and nothing else does; messages are single lines on
/// `err`. Owns neither stream, nor the interruption that a run may have.
class Console
{
public:
    /// Without an interruption the run is one that cannot be interrupted.
    Console(QTextStream &out, QTextStream &err, Interruption *interruption = nullptr);

    /// Holds back warnings and confirmations; errors and data still appear.
    void setQuiet(bool quiet);

    /// A name and its value.
    struct Row
    {
        QString name;
        QString value;
    };

    QTextStream &out();
    void writeJson(const QJsonObject &object);
    /// On one line, at once.
    void writeJsonLine(const QJsonObject &object);

    /// A heading and below it the rows, indented, with the values in one column.
    void writeTable(const QString &heading, const QList<Row> &rows);

    /// A line of `out` that only tells a person that all went well.
    void confirm(const QString &text);

    /// A line of `err` that only tells a person something about a file.
    void note(const QString &file, const QString &text);
    void warning(const QString &file, const QString &text);
    void warn(const QList<FileWarning> &warnings);
    void error(const Problem &problem);

    /// What is told of a problem: that the run was interrupted, when a signal had arrived before this or
    /// error() was called for the first time. So all that is told of one failure is the same.
    Problem told(const Problem &problem);
    Result<> told(const Result<> &result);

    /// Remembers a file that the run has made: should `out` fail, the message says that it is there.
    void setMade(const QString &path);

    /// Ends a verb that makes a file: says what came of it, as JSON by the object or as lines, and returns the
    /// exit code. The result is one that told() has given.
    int writeOutcome(const QString &file, const Result<> &result, const QList<FileWarning> &warnings,
                     bool asJson, const std::function<QJsonObject()> &object);

    /// False, after a message, when what was written to `out` has not all arrived.
    bool finish();

private:
    void writeRow(const Row &row, int width);
    void message(const QString &subject, const QString &text);

    QTextStream &m_out;
    QTextStream &m_err;
    Interruption *m_interruption;
    std::optional<bool> m_wasInterrupted; ///< not asked yet, or the answer that counts
    QString m_made;
    bool m_quiet = false;
};
