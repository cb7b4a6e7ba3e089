// SPDX-License-Identifier: Apache-2.0
#include "tests/app/looks/WindowTour.h"

#include "app/RegisterPages.h"
#include "tests/app/looks/SampleSettings.h"

#include <QApplication>
#include <QListView>
#include <QTest>
#include <QToolButton>

WindowTour::WindowTour(Choice choice)
    : m_choice(choice)
{
    m_packages.useAsInstaller();
    theEditorXmlData = sampleSettings(choice.editor);
    m_window = std::make_unique<DlgCustomizationTool_v2>(choice.editor, choice.type);
    registerPages(*m_window);
    // A caret that blinks would make two pictures of the same thing differ.
    QApplication::setCursorFlashTime(0);
}

bool WindowTour::open()
{
    m_window->show();
    m_window->activateWindow();
    return QTest::qWaitForWindowActive(m_window.get());
}

QToolButton *WindowTour::tool(const char *name) const
{
    return m_window->findChild<QToolButton *>(QLatin1String(name));
}

QList<TourStop> WindowTour::stops()
{
    QList<TourStop> stops = {{QStringLiteral("welcome"), [] {}}};
    if (m_choice.type == PCW_CONFIG_PACKAGE) {
        stops += {QStringLiteral("import"), [this] { loadPackage(); }};
        stops += pageStop(QStringLiteral("installation-options"), QStringLiteral("Installation Options"));
    }
    stops += preferenceStops();
    stops += ribbonStops();
    stops += pageStop(QStringLiteral("plugins"), QStringLiteral("Plugins"));
    return stops;
}

QList<TourStop> WindowTour::preferenceStops()
{
    const QStringList ofEditor = {QStringLiteral("advertisement"), QStringLiteral("mip"),
                                  QStringLiteral("login-domain"),  QStringLiteral("imanage"),
                                  QStringLiteral("my-apps"),       QStringLiteral("security"),
                                  QStringLiteral("start-page")};
    const QStringList ofReader = {QStringLiteral("mip"), QStringLiteral("security"),
                                  QStringLiteral("start-page")};
    QList<TourStop> stops;
    for (const QString &subPage : m_choice.editor ? ofEditor : ofReader) {
        const int row = stops.size();
        stops += {QStringLiteral("preferences-") + subPage, [this, row] {
                      showPage(QStringLiteral("Preferences"));
                      auto *list = m_window->findChild<QListView *>(QStringLiteral("listView"));
                      list->setCurrentIndex(list->model()->index(row, 0));
                  }};
    }
    return stops;
}

QList<TourStop> WindowTour::ribbonStops()
{
    const QString page = QStringLiteral("Ribbon Set");
    const auto subPage = [this, page](int index) {
        return [this, page, index] {
            showPage(page);
            const QWidget *ribbonSet = m_window->findChild<QWidget *>(QStringLiteral("tab_ribbonset"));
            ribbonSet->findChildren<QToolButton *>().at(index)->click();
        };
    };
    return {{QStringLiteral("ribbon-category"), subPage(0)},
            {QStringLiteral("ribbon-quick-access"), subPage(1)}};
}

TourStop WindowTour::pageStop(const QString &name, const QString &page)
{
    return {name, [this, page] { showPage(page); }};
}

void WindowTour::loadPackage()
{
    if (!m_window->on_fileloaded(m_packages.make(m_choice.editor ? editorTitle : readerTitle)))
        QTest::qFail("the package was refused", __FILE__, __LINE__);
}

void WindowTour::showPage(const QString &page)
{
    m_window->findChild<QToolButton *>(page)->click();
}

void addChoiceRows()
{
    QTest::addColumn<Choice>("choice");
    QTest::newRow("Editor package") << Choice{true, PCW_CONFIG_PACKAGE};
    QTest::newRow("Reader package") << Choice{false, PCW_CONFIG_PACKAGE};
    QTest::newRow("Editor profile") << Choice{true, PCW_CONFIG_PROFILE};
    QTest::newRow("Reader profile") << Choice{false, PCW_CONFIG_PROFILE};
}
