// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Small file helpers of the tests. Each fails the running program loudly when it cannot do its work, so
/// that a test never goes on with a fixture that is not there.
namespace TestFiles {

/// The bytes of a file.
QByteArray read(const QString &path);

/// Writes a file, making its folder when needed.
void write(const QString &path, const QByteArray &bytes);

/// Writes an executable shell script; the text needs no first line.
void writeScript(const QString &path, const QByteArray &text);

/// Runs another program than ours and gives its standard output; it must exit with 0.
QByteArray outputOf(const QString &program, const QStringList &arguments);

} // namespace TestFiles
