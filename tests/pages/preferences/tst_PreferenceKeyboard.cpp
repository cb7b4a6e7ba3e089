// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "pages/ISubPageHandler.h"
#include "pages/preferences/tab_preference.h"
#include "resources/Resources.h"

#include <QtTest>
#include <QtWidgets>

#include <algorithm>

namespace {

void press(Qt::Key key)
{
    QTest::keyClick(QApplication::focusWidget(), key);
}

QString focusName()
{
    const QWidget *focus = QApplication::focusWidget();
    return focus ? focus->objectName() : QString();
}

/// The names of what Tab leads to from the list until it is back there.
QStringList tabChain()
{
    QStringList names;
    for (int i = 0; i < 20; ++i) {
        press(Qt::Key_Tab);
        if (focusName() == QLatin1String("listView"))
            return names;
        names += focusName();
    }
    return names;
}

} // namespace

class tst_PreferenceKeyboard : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    }

    void init()
    {
        m_handler = std::make_unique<CHandler_Preference>(true);
        m_page.reset(static_cast<tab_preference *>(m_handler->GetWidget(true)));
        const EditorXmlData data;
        QVERIFY(m_handler->ImportProperty(m_page.get(), &data));
        m_page->resize(900, 700);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
        m_page->findChild<QListView *>(QStringLiteral("listView"))->setFocus();
    }

    void cleanup() { m_page.reset(); }

    void arrowsInTheListShowTheSubPages()
    {
        press(Qt::Key_Home);
        for (const int id : {1, 2, 7, 3, 4, 6, 5}) {
            QCOMPARE(m_page->GetCurrentHandler()->GetTabId(), id);
            press(Qt::Key_Down);
        }
        press(Qt::Key_Up);
        QCOMPARE(m_page->GetCurrentHandler()->GetTabId(), 6);
        QCOMPARE(focusName(), QStringLiteral("listView"));
    }

    void typingATitleShowsItsSubPage()
    {
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Hide"));
        QCOMPARE(m_page->GetCurrentHandler()->GetTabId(), 4);
    }

    void tabLeadsThroughTheSubPageInReadingOrder_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QStringList>("chain");
        QTest::newRow("Advertisement") << 0 << QStringList{QStringLiteral("checkBox_removeAdvertise")};
        QTest::newRow("MIP") << 1
                             << QStringList{QStringLiteral("cb_aip_options"),
                                            QStringLiteral("cb_auth_lib_options"),
                                            QStringLiteral("cb_UseExternalBrowserForSSO")};
        QTest::newRow("Login Domain")
            << 2
            << QStringList{QStringLiteral("cb_allowed_whitelist"), QStringLiteral("lineEdit_domain"),
                           QStringLiteral("tableView_domains")};
        QTest::newRow("iManage") << 3 << QStringList{QStringLiteral("cb_biManageLogin")};
        QTest::newRow("My Apps") << 4 << QStringList{QStringLiteral("cb_hidemyapps")};
        QTest::newRow("Security") << 5
                                  << QStringList{QStringLiteral("rb_disableopenfile_all"),
                                                 QStringLiteral("cb_fileattachmentsMode"),
                                                 QStringLiteral("tt_defaultLaunchAttachmentPerms")};
        QTest::newRow("Start Page") << 6 << QStringList{QStringLiteral("checkBox_showStartPg")};
    }

    void tabLeadsThroughTheSubPageInReadingOrder()
    {
        QFETCH(int, row);
        press(Qt::Key_Home);
        for (int i = 0; i < row; ++i)
            press(Qt::Key_Down);
        // What looks at every window compares the order of all controls with their places.
        QFETCH(QStringList, chain);
        QStringList passed = tabChain();
        const auto isFurther = [&](const QString &name) { return !chain.contains(name); };
        passed.erase(std::remove_if(passed.begin(), passed.end(), isFurther), passed.end());
        QCOMPARE(passed, chain);
    }

    void spaceTogglesACheckBox()
    {
        press(Qt::Key_Home);
        press(Qt::Key_Tab);
        for (const bool expected : {true, false}) {
            press(Qt::Key_Space);
            QCOMPARE(m_handler->GetProperty(QStringLiteral("checkBox_removeAdvertise")), QVariant(expected));
        }
    }

    void arrowsChooseFromAList()
    {
        press(Qt::Key_Home);
        press(Qt::Key_Down);
        press(Qt::Key_Tab);
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        QCOMPARE(m_handler->GetProperty(QStringLiteral("cb_aip_options")), QVariant(2));
    }

    void domainsAreAddedChosenAndRemoved()
    {
        showLoginDomains();
        press(Qt::Key_Down);
        QCOMPARE(m_handler->GetProperty(QStringLiteral("cb_disallowed_blacklist")), QVariant(true));
        press(Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("@a.com;@b.com;@c.com"));
        press(Qt::Key_Tab);
        press(Qt::Key_Space);
        QCOMPARE(domains(), QStringLiteral("@a.com;@b.com;@c.com"));
        press(Qt::Key_Tab);
        press(Qt::Key_Home);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down, Qt::ShiftModifier);
        press(Qt::Key_Tab);
        press(Qt::Key_Space);
        QCOMPARE(domains(), QStringLiteral("@c.com"));
    }

private:
    void showLoginDomains()
    {
        press(Qt::Key_Home);
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        press(Qt::Key_Tab);
    }

    QString domains() { return m_handler->GetProperty(QStringLiteral("tableView_domains")).toString(); }

    std::unique_ptr<CHandler_Preference> m_handler;
    std::unique_ptr<tab_preference> m_page;
};

QTEST_MAIN(tst_PreferenceKeyboard)
#include "tst_PreferenceKeyboard.moc"
