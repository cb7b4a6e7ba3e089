// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/PctRunner.h"

#include "tests/support/TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

constexpr int hangsAfterMilliseconds = 100 * 1000;

QString sampleName(bool editor)
{
    return editor ? QStringLiteral("Pelix PDF Editor.pkg") : QStringLiteral("Pelix PDF Reader.pkg");
}

/// The commands that the tests are to run over: the stand-ins of the build folder, or others in their place.
QString commandFolder()
{
    return qEnvironmentVariable("PCT_HOSTTOOLS", QStringLiteral(PCT_HOSTTOOLS_DIR));
}

/// These; on a Mac, which has none, the commands that pct finds by their names.
QStringList toolNames()
{
    const QStringList standIns = QDir(commandFolder()).entryList(QDir::Files);
    if (!standIns.isEmpty())
        return standIns;
    return {QStringLiteral("ditto"), QStringLiteral("installer"), QStringLiteral("pkgutil"),
            QStringLiteral("sed"), QStringLiteral("xar")};
}

/// One of them; on a Mac, the command itself.
QString realTool(const QString &name)
{
    const QString standIn = commandFolder() + QLatin1Char('/') + name;
    return QFileInfo::exists(standIn) ? standIn : QStandardPaths::findExecutable(name);
}

QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace

QJsonObject PctResult::json() const
{
    return QJsonDocument::fromJson(out).object();
}

QStringList PctResult::messages() const
{
    return QString::fromUtf8(err).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

bool PctResult::isOneLineRefusal() const
{
    static const QRegularExpression form(QStringLiteral("\\Apct: [^\\n]+: [^\\n]+; [^\\n]+\\n\\z"));
    return status == QProcess::NormalExit && exitCode == 1 && out.isEmpty() &&
           form.match(QString::fromUtf8(err)).hasMatch();
}

PctRunner::PctRunner()
    : m_environment(QProcessEnvironment::systemEnvironment())
{
    const QDir folder(m_folder.path());
    for (const auto *name : {"files", "tmp", "tools"})
        folder.mkdir(QString::fromLatin1(name));
    for (const QString &tool : toolNames())
        linkTool(tool);
    // On a Mac nothing else makes pct find them.
    m_environment.insert(QStringLiteral("PATH"),
                         m_folder.filePath(QStringLiteral("tools:")) + qEnvironmentVariable("PATH"));
    m_environment.insert(QStringLiteral("TMPDIR"), m_folder.filePath(QStringLiteral("tmp")));
    m_environment.insert(QStringLiteral("PCT_HOSTTOOLS"), m_folder.filePath(QStringLiteral("tools")));
    m_environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    m_environment.remove(QStringLiteral("PCT_DEBUG"));
}

QString PctRunner::file(const QString &name) const
{
    return m_folder.filePath(QStringLiteral("files/") + name);
}

QString PctRunner::samplePackage(bool editor, const QString &name) const
{
    const QString copy = file(name.isEmpty() ? sampleName(editor) : name);
    if (!QFile::copy(QStringLiteral(PCT_SAMPLES_DIR "/") + sampleName(editor), copy))
        qFatal("cannot copy the sample to %s", qPrintable(copy));
    return copy;
}

QString PctRunner::alteredPackage(bool editor, const QString &script, const QString &sedExpression) const
{
    const QString maker = m_folder.filePath(QStringLiteral("maker"));
    const QString original = QFileInfo(QStringLiteral(PCT_MAKE_VENDOR_PACKAGE)).path();
    const QString product = editor ? QStringLiteral("editor") : QStringLiteral("reader");
    const QString package = file(QStringLiteral("altered.pkg"));
    TestFiles::outputOf(QStringLiteral("cp"), {QStringLiteral("-R"), original, maker});
    const QString path = maker + QStringLiteral("/scripts/common/") + script;
    const QString sed = QStandardPaths::findExecutable(QStringLiteral("sed"),
                                                       {QStringLiteral("/bin"), QStringLiteral("/usr/bin")});
    const QByteArray edited = TestFiles::outputOf(sed, {sedExpression, path});
    if (edited == TestFiles::read(path))
        qFatal("the expression changes nothing in %s", qPrintable(path));
    TestFiles::write(path, edited);
    TestFiles::outputOf(maker + QStringLiteral("/make-vendor-package"),
                        {QStringLiteral("--product"), product, QStringLiteral("--output"), package});
    return package;
}

QString PctRunner::changedPackage(bool editor, const QString &command) const
{
    const QString package = file(QStringLiteral("changed.pkg"));
    TestFiles::outputOf(QStringLiteral(PCT_MAKE_VENDOR_PACKAGE),
                        {QStringLiteral("--product"),
                         editor ? QStringLiteral("editor") : QStringLiteral("reader"),
                         QStringLiteral("--output"), package, QStringLiteral("--change-scripts"), command});
    return package;
}

QString PctRunner::document(const QByteArray &root, const QByteArray &body, const QString &name) const
{
    const QString path = file(name.isEmpty() ? QStringLiteral("settings.xml") : name);
    TestFiles::write(path,
                     "<?xml version='1.0' encoding='UTF-8'?>\n<" + root + ">" + body + "</" + root + ">\n");
    return path;
}

void PctRunner::replaceTool(const QString &name, const QByteArray &script) const
{
    removeTool(name);
    TestFiles::writeScript(m_folder.filePath(QStringLiteral("tools/") + name),
                           "real='" + QFile::encodeName(realTool(name)) + "'\n" + script);
}

void PctRunner::breakTool(const QString &name) const
{
    replaceTool(name, QByteArray());
    const QString path = m_folder.filePath(QStringLiteral("tools/") + name);
    TestFiles::write(path, "#!/no/such/interpreter\n");
}

void PctRunner::removeTool(const QString &name) const
{
    if (!QFile::remove(m_folder.filePath(QStringLiteral("tools/") + name)))
        qFatal("there is no command %s", qPrintable(name));
}

void PctRunner::restoreTool(const QString &name) const
{
    removeTool(name);
    linkTool(name);
}

void PctRunner::linkTool(const QString &name) const
{
    const QString real = realTool(name);
    if (!QFile::link(real, m_folder.filePath(QStringLiteral("tools/") + name)))
        qFatal("cannot link to %s", qPrintable(real));
}

void PctRunner::withoutCalls(const QString &calls)
{
    interpose("PCT_TEST_WITHOUT", calls);
}

void PctRunner::withEndlessCall(const QString &call)
{
    setEnvironment(QStringLiteral("PCT_TEST_NOTE"), m_folder.filePath(QStringLiteral("busy")));
    interpose("PCT_TEST_BUSY", call);
}

bool PctRunner::isBusy() const
{
    return QFile::exists(m_folder.filePath(QStringLiteral("busy")));
}

void PctRunner::interpose(const char *variable, const QString &calls)
{
    setEnvironment(QString::fromLatin1(variable), calls);
    setEnvironment(QStringLiteral("LD_PRELOAD"), QStringLiteral(PCT_INTERPOSE_LIBRARY));
    setEnvironment(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0:verify_asan_link_order=0"));
}

void PctRunner::setEnvironment(const QString &name, const QString &value)
{
    m_environment.insert(name, value);
}

const QProcessEnvironment &PctRunner::environment() const
{
    return m_environment;
}

PctResult PctRunner::run(const QStringList &arguments) const
{
    QProcess process;
    start(process, arguments);
    return waitFor(process);
}

void PctRunner::start(QProcess &process, const QStringList &arguments) const
{
    process.setProcessEnvironment(m_environment);
    process.setWorkingDirectory(m_folder.filePath(QStringLiteral("files")));
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(QStringLiteral(PCT_EXECUTABLE), arguments);
    if (!process.waitForStarted(-1))
        qFatal("pct cannot be started: %s", qPrintable(process.errorString()));
}

PctResult PctRunner::waitFor(QProcess &process)
{
    if (!process.waitForFinished(hangsAfterMilliseconds) && process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished(-1);
    }
    PctResult result;
    result.status = process.exitStatus();
    result.exitCode = process.exitCode();
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

QStringList PctRunner::temporaryLeftovers() const
{
    return namesIn(m_folder.filePath(QStringLiteral("tmp")));
}

QStringList PctRunner::files() const
{
    return namesIn(m_folder.filePath(QStringLiteral("files")));
}
