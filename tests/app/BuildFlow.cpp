// SPDX-License-Identifier: Apache-2.0
#include "tests/app/BuildFlow.h"

#include "app/RegisterPages.h"
#include "core/HostPaths.h"

#include <QProcess>
#include <QTest>
#include <QToolButton>

BuildFlow::BuildFlow()
{
    HostPaths::putStandInsFirst();
    QDir().mkpath(path("out"));
    QDir().mkpath(path("in"));
    // Whoever runs the tests may have identities.
    QDir().mkpath(path("identities"));
    qputenv("PCT_IDENTITIES_DIR", QFile::encodeName(path("identities")));
}

QString BuildFlow::sample(bool editor) const
{
    const QString name =
        editor ? QStringLiteral("Pelix PDF Editor.pkg") : QStringLiteral("Pelix PDF Reader.pkg");
    const QString copy = path("in/") + name;
    if (!QFile::copy(QStringLiteral(PCT_SAMPLES_DIR "/") + name, copy))
        qFatal("cannot copy %s", qPrintable(name));
    return copy;
}

std::unique_ptr<DlgCustomizationTool_v2> BuildFlow::openWindow(const QString &package, bool editor) const
{
    auto window = std::make_unique<DlgCustomizationTool_v2>(editor, PCW_CONFIG_PACKAGE);
    registerPages(*window);
    window->show();
    if (!window->on_fileloaded(package))
        QTest::qFail("the package was refused", __FILE__, __LINE__);
    return window;
}

ShownMessage BuildFlow::save(DlgCustomizationTool_v2 &window, const QString &output, bool keepDocument,
                             const std::function<void()> &next)
{
    WindowDriver::saveAs(
        &m_context, output, keepDocument, next ? next : [] {});
    tool(window, "tb_save")->click();
    ShownMessage shown;
    WindowDriver::acceptMessage(&m_context, &shown);
    if (!QTest::qWaitFor([&] { return shown.count == 1; }, 60'000))
        QTest::qFail("no message came", __FILE__, __LINE__);
    return shown;
}

QString BuildFlow::workFolder(const QString &package) const
{
    return path("tmp/") + QFileInfo(package).fileName();
}

QToolButton *tool(const DlgCustomizationTool_v2 &window, const char *name)
{
    return window.findChild<QToolButton *>(QLatin1String(name));
}

bool equalFiles(const QString &first, const QString &second)
{
    return QProcess::execute(QStringLiteral("cmp"), {first, second}) == 0;
}
