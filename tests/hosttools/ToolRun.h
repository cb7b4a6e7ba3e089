// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Running the stand-ins as the application does, and what their tests need besides.
namespace ToolRun {

struct Result
{
    int exitCode = -1; ///< -1 when it crashed, hung or did not start
    QByteArray output;
    QByteArray errors;
};

/// Runs a stand-in in a folder, `environment` ("NAME=value") added to ours.
Result run(const QString &tool, const QStringList &arguments, const QString &folder = QString(),
           const QStringList &environment = {});

/// Where a stand-in lies.
QString path(const QString &tool);

/// True when exactly one line was written to standard error, and it begins with the tool's name.
bool hasOneMessage(const Result &result, const QString &tool);

/// Makes an archive of make-xar-variant.py.
void makeVariant(const QString &variant, const QString &path);

/// Makes all "good" or "hostile" ones in a folder, each called as its variant.
void makeAllVariants(const QString &kind, const QString &folder);

/// Everything below a folder: relative paths, types, contents and link targets, one line each.
QByteArray contentsOf(const QString &folder);

/// The members of an archive as bsdtar lists them: mode, owner, size, time and name, sorted.
QStringList listed(const QString &archive);

/// Names in a folder, hidden ones included.
QStringList namesIn(const QString &folder);

/// Runs a program of the system with standard input from bytes; it must exit with 0.
QByteArray filtered(const QByteArray &input, const QString &program, const QStringList &arguments);

/// Whether files below a folder can carry extended attributes of users.
bool keepsExtendedAttributes(const QString &folder);

} // namespace ToolRun
