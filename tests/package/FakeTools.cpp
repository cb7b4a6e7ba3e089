// SPDX-License-Identifier: Apache-2.0
#include "tests/package/FakeTools.h"

#include "tests/support/TestFiles.h"

#include <QFile>
#include <QStandardPaths>

namespace {

QByteArray quoted(const QString &path)
{
    return '\'' + QFile::encodeName(path) + '\'';
}

} // namespace

FakeTools::FakeTools()
    : m_path(qgetenv("PATH"))
{
    const QByteArray searched = QFile::encodeName(m_folder.path()) + ':' + m_path;
    qputenv("PATH", searched);
}

FakeTools::~FakeTools()
{
    qputenv("PATH", m_path);
}

void FakeTools::add(const QString &name, const QByteArray &text)
{
    const QByteArray note =
        "printf '%s\\0' \"$#\" \"$@\" >> " + quoted(pathOf(name) + QStringLiteral(".calls")) + "\n";
    QFile::remove(pathOf(name));
    TestFiles::writeScript(pathOf(name), note + text);
}

void FakeTools::addSed()
{
    const QString system = QStandardPaths::findExecutable(
        QStringLiteral("sed"), {QStringLiteral("/usr/bin"), QStringLiteral("/bin")});
    add(QStringLiteral("sed"), "[ \"$1$2\" = -i ] || exec " + quoted(system) + " \"$@\"\n" + quoted(system) +
                                   " \"$3\" \"$4\" > \"$4.new\" && mv \"$4.new\" \"$4\"\n");
}

void FakeTools::addPackageTools(const QByteArray &preinstall, const QByteArray &postinstall,
                                const QByteArray &change, const QByteArray &flatten)
{
    const QString scripts = m_folder.filePath(QStringLiteral("scripts"));
    TestFiles::write(scripts + QStringLiteral("/preinstall"), preinstall);
    TestFiles::write(scripts + QStringLiteral("/postinstall"), postinstall);
    add(QStringLiteral("pkgutil"),
        "if [ \"$1\" = --flatten ]; then " + flatten +
            "; exit; fi\n"
            "mkdir \"$3\" \"$3/Pelix_PDF_Editor.pkg\" && cp -R " +
            quoted(scripts) + " \"$3/Pelix_PDF_Editor.pkg/Scripts\" && cd \"$3\" && { " + change + "; }\n");
    add(QStringLiteral("xar"), "[ \"$1\" != -t ] || echo Pelix_PDF_Editor.pkg/Scripts\n");
}

void FakeTools::hideOthers()
{
    qputenv("PATH", QFile::encodeName(m_folder.path()));
}

QList<QStringList> FakeTools::calls(const QString &name) const
{
    QFile log(pathOf(name) + QStringLiteral(".calls"));
    if (!log.open(QIODevice::ReadOnly))
        return {};
    QList<QByteArray> words = log.readAll().split('\0');
    QList<QStringList> calls;
    while (words.size() > 1) {
        QStringList arguments;
        for (int count = words.takeFirst().toInt(); count > 0; --count)
            arguments.append(QString::fromUtf8(words.takeFirst()));
        calls.append(arguments);
    }
    return calls;
}

QString FakeTools::pathOf(const QString &name) const
{
    return m_folder.filePath(name);
}
