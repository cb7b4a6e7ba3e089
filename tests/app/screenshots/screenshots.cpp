// SPDX-License-Identifier: Apache-2.0
// screenshots FOLDER: writes a picture of everything that the tool shows into the folder, from the real
// windows filled with sample settings.
// screenshots FOLDER help: only the Editor's pages, each with the help beside it.
#include "app/ApplicationLook.h"
#include "app/CPDF_Waiting.h"
#include "core/QtCompatibility.h"
#include "resources/Resources.h"
#include "tests/app/looks/Dialogs.h"
#include "tests/app/looks/WindowTour.h"
#include "welcome/webview/WebViewInQt.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QLabel>
#include <QLoggingCategory>
#include <QMovie>
#include <QSet>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include <cstdio>

namespace {

class Album
{
public:
    explicit Album(const QString &folder)
        : m_folder(folder)
    {
        m_folder.mkpath(QStringLiteral("."));
    }

    void add(QWidget &window, const QString &name)
    {
        window.show();
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("%s does not come", qPrintable(name));
        // What has the focus depends on what was shown before.
        if (!window.isModal() && QApplication::focusWidget())
            QApplication::focusWidget()->clearFocus();
        QTest::qWait(20);
        keep(pngOf(window.grab()), name);
    }

private:
    static QByteArray pngOf(const QPixmap &picture)
    {
        QBuffer png;
        if (!picture.save(&png, "PNG"))
            qFatal("no picture can be made");
        return png.data();
    }

    /// What looks the same for both products needs one picture.
    void keep(const QByteArray &png, const QString &name)
    {
        if (m_kept.contains(png))
            return;
        m_kept.insert(png);
        const QString file = m_folder.filePath(name + QStringLiteral(".png"));
        TestFiles::write(file, png);
        std::puts(qPrintable(file));
    }

    QDir m_folder;
    QSet<QByteArray> m_kept;
};

/// The wanted stops, or every one: those of a profile differ in what opens the work and in the toolbar only.
void addPages(Album &album, Choice choice, const QString &prefix, const QStringList &wanted = {})
{
    WindowTour tour(choice);
    if (!tour.open())
        qFatal("the window does not come");
    for (const TourStop &stop : tour.stops()) {
        stop.show();
        for (QTreeWidget *tree : tour.window().findChildren<QTreeWidget *>())
            tree->expandToDepth(1);
        if (wanted.isEmpty() || wanted.contains(stop.name))
            album.add(tour.window(), prefix + stop.name);
    }
}

void visitAll(WindowTour &tour)
{
    if (!tour.open())
        qFatal("the window does not come");
    for (const TourStop &stop : tour.stops())
        stop.show();
}

/// Waits until the help that is shown has been drawn.
void waitForHelp(const DlgCustomizationTool_v2 &window)
{
    const QString script = QStringLiteral("document.readyState");
    const auto isLoaded = [&] {
        auto *view = window.findChild<WebViewInQt *>();
        return view && view->runJavascript(script) == QLatin1String("complete");
    };
    if (!QTest::qWaitFor(isLoaded, 30'000))
        qFatal("the help does not come");
    QTest::qWait(1000);
}

void addHelpPanel(Album &album)
{
    WindowTour tour({});
    visitAll(tour);
    tour.tool("tb_info")->click();
    waitForHelp(tour.window());
    album.add(tour.window(), QStringLiteral("help-panel"));
}

void addGuide(Album &album)
{
    WindowTour tour({});
    visitAll(tour);
    tour.window().ShowUserGuide();
    waitForHelp(tour.window());
    album.add(tour.window(), QStringLiteral("guide"));
}

/// Every page with its help beside it.
void addPagesWithHelp(Album &album, Choice choice, const QString &prefix)
{
    WindowTour tour(choice);
    if (!tour.open())
        qFatal("the window does not come");
    tour.tool("tb_info")->click();
    for (const TourStop &stop : tour.stops()) {
        stop.show();
        waitForHelp(tour.window());
        album.add(tour.window(), prefix + stop.name);
    }
}

/// The window as it stands while a package is built.
void addWaiting(Album &album)
{
    WindowTour tour({});
    visitAll(tour);
    tour.window().setEnabled(false);
    auto *waiting = tour.window().findChild<CPDF_Waiting *>();
    waiting->start();
    QMovie *movie = waiting->findChild<QLabel *>()->movie();
    movie->setPaused(true);
    movie->jumpToFrame(0);
    album.add(tour.window(), QStringLiteral("waiting"));
    waiting->stop();
}

/// A folder whose contents are the same on every machine.
QString deploymentFolder()
{
    const QString folder = QDir::tempPath() + QStringLiteral("/Deployment");
    const QString package = folder + QStringLiteral("/Pelix PDF Editor.pkg");
    TestFiles::write(package, QByteArray());
    QFile file(package);
    if (!file.resize(120 << 20) || !file.open(QIODevice::ReadWrite))
        qFatal("cannot make %s", qPrintable(package));
    file.setFileTime(QDateTime(QDate(2026, 1, 15), QTime(12, 0)), QFileDevice::FileModificationTime);
    return folder;
}

void addDialogs(Album &album)
{
    for (const DialogKind &kind : everyDialog(deploymentFolder())) {
        const std::unique_ptr<QDialog> dialog = kind.make();
        dialog->setModal(true);
        album.add(*dialog, kind.name);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    initPctResources();
    QApplication application(argc, argv);
    QtCompatibility::useHighDpiPixmaps();
    useApplicationLook();

    Album album(QCoreApplication::arguments().value(1));
    if (QCoreApplication::arguments().value(2) == QLatin1String("help")) {
        addPagesWithHelp(album, {true, PCW_CONFIG_PACKAGE}, QString());
        addPagesWithHelp(album, {true, PCW_CONFIG_PROFILE}, QStringLiteral("profile-"));
        return 0;
    }
    addPages(album, {true, PCW_CONFIG_PACKAGE}, QString());
    addPages(album, {false, PCW_CONFIG_PACKAGE}, QStringLiteral("reader-"));
    const QStringList ofProfiles = {QStringLiteral("welcome"), QStringLiteral("preferences-security")};
    addPages(album, {true, PCW_CONFIG_PROFILE}, QStringLiteral("profile-"), ofProfiles);
    addPages(album, {false, PCW_CONFIG_PROFILE}, QStringLiteral("reader-profile-"), ofProfiles);
    addHelpPanel(album);
    addGuide(album);
    addWaiting(album);
    addDialogs(album);
}
