// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"

#include "cli/ExitCode.h"
#include "cli/Interruption.h"
#include "core/PrintableText.h"

#include <QIODevice>
#include <QJsonDocument>

#include <algorithm>

namespace {

/// In pieces: a stream keeps all that it is given at once, and that again in the encoding of its device.
void writeInPieces(QTextStream &stream, const QString &text)
{
    constexpr int pieceLength = 8 * 1024;
    for (int at = 0; at < text.size(); at += pieceLength)
        stream << QStringView(text).mid(at, pieceLength);
}

} // namespace

Console::Console(QTextStream &out, QTextStream &err, Interruption *interruption)
    : m_out(out)
    , m_err(err)
    , m_interruption(interruption)
{
}

void Console::setQuiet(bool quiet)
{
    m_quiet = quiet;
}

QTextStream &Console::out()
{
    return m_out;
}

void Console::writeJson(const QJsonObject &object)
{
    m_out << visibleJson(QString::fromUtf8(QJsonDocument(object).toJson()));
}

void Console::writeJsonLine(const QJsonObject &object)
{
    m_out << visibleJson(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact))) << '\n';
    m_out.flush();
}

void Console::writeTable(const QString &heading, const QList<Row> &rows)
{
    int width = 0;
    for (const Row &row : rows)
        width = std::max(width, static_cast<int>(row.name.size()));
    m_out << heading << '\n';
    for (const Row &row : rows)
        writeRow(row, width);
}

void Console::writeRow(const Row &row, int width)
{
    m_out << QStringLiteral("  ") << row.name.leftJustified(width) << QStringLiteral("  ");
    writeInPieces(m_out, visibleText(row.value));
    m_out << '\n';
}

void Console::confirm(const QString &text)
{
    if (!m_quiet)
        m_out << visibleText(text) << '\n';
}

void Console::note(const QString &file, const QString &text)
{
    if (!m_quiet)
        message(file, text);
}

void Console::warning(const QString &file, const QString &text)
{
    if (!m_quiet)
        message(file, QStringLiteral("warning: ") + text);
}

void Console::warn(const QList<FileWarning> &warnings)
{
    for (const FileWarning &found : warnings)
        warning(found.file, found.warning.text);
}

void Console::error(const Problem &problem)
{
    const bool happened = m_interruption && m_interruption->happened();
    if (!happened || m_interruption->isTheFirstToTell())
        message(problem.file, told(problem).text);
}

Problem Console::told(const Problem &problem)
{
    // What failed because its commands were ended says nothing about the file.
    if (!m_wasInterrupted)
        m_wasInterrupted = m_interruption && m_interruption->happened();
    return *m_wasInterrupted ? Problem{problem.file, Interruption::text()} : problem;
}

Result<> Console::told(const Result<> &result)
{
    return result ? result : told(result.problem());
}

void Console::setMade(const QString &path)
{
    m_made = path;
}

int Console::writeOutcome(const QString &file, const Result<> &result, const QList<FileWarning> &warnings,
                          bool asJson, const std::function<QJsonObject()> &object)
{
    if (result)
        setMade(file);
    if (asJson)
        writeJson(object());
    else if (result)
        confirm(file);
    warn(warnings);
    if (!result)
        error(result.problem());
    return result ? ExitCode::done : ExitCode::refused;
}

bool Console::finish()
{
    m_out.flush();
    if (m_out.status() == QTextStream::Ok)
        return true;
    QString text = m_out.device()->errorString();
    if (!m_made.isEmpty())
        text += QStringLiteral(", but %1 was made").arg(m_made);
    message(QStringLiteral("standard output"), text + QStringLiteral("; write to a place that has room"));
    return false;
}

void Console::message(const QString &subject, const QString &text)
{
    m_err << QStringLiteral("pct: ") << printableText(subject) << QStringLiteral(": ") << visibleText(text)
          << '\n';
    m_err.flush();
}
