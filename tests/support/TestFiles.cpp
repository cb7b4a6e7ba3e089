// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

QByteArray TestFiles::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s: %s", qPrintable(path), qPrintable(file.errorString()));
    return file.readAll();
}

void TestFiles::write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s: %s", qPrintable(path), qPrintable(file.errorString()));
}

void TestFiles::writeScript(const QString &path, const QByteArray &text)
{
    write(path, "#!/bin/sh\n" + text);
    QFile::setPermissions(path,
                          QFile::permissions(path) | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther);
}

QByteArray TestFiles::outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
        qFatal("%s %s failed: %s", qPrintable(program), qPrintable(arguments.join(QLatin1Char(' '))),
               process.readAllStandardError().constData());
    return process.readAllStandardOutput();
}
