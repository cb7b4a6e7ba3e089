// SPDX-License-Identifier: Apache-2.0
#include "tests/packaging/CommandRun.h"

#include <QProcess>

CommandRun runCommand(const QString &program, const QStringList &arguments,
                      const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QProcessEnvironment playedMac(const QString &logPath)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), projectFile("tests/packaging/bundle/commands") +
                                                   QLatin1Char(':') +
                                                   environment.value(QStringLiteral("PATH")));
    environment.insert(QStringLiteral("PCT_TEST_LOG"), logPath);
    for (const char *name : {"PCT_SIGNING_IDENTITY", "PCT_NOTARY_PROFILE", "PCT_NOTARY_KEYCHAIN", "DESTDIR"})
        environment.remove(QLatin1String(name));
    return environment;
}

QString projectFile(const char *path)
{
    return QStringLiteral(PCT_SOURCE_DIR "/") + QLatin1String(path);
}
