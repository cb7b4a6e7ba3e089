// SPDX-License-Identifier: Apache-2.0
#include "config/LoginDomain.h"
#include "pages/preferences/tab_preference.h"
#include "resources/Resources.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QString controlStyle = QStringLiteral("font-family: SF Pro Text;\nfont-style: normal;\n"
                                            "font-weight: normal;\nfont-size: 13px;\nline-height: 16px;");
const QString editorOnly = QStringLiteral("apptype:onlyeditor;\n");

QWidget *child(const QWidget &page, const char *name)
{
    return page.findChild<QWidget *>(QLatin1String(name));
}

QStringList itemsOf(const QWidget &page, const char *name)
{
    const auto *box = qobject_cast<QComboBox *>(child(page, name));
    QStringList items;
    for (int i = 0; box && i < box->count(); ++i)
        items += box->itemText(i);
    return items;
}

/// The label whose mnemonic, if it had one, would lead to the control.
QString labelOf(const QWidget &page, const char *name)
{
    for (const QLabel *label : page.findChildren<QLabel *>()) {
        if (label->buddy() && label->buddy()->objectName() == QLatin1String(name))
            return label->text();
    }
    return {};
}

QStringList groupTitlesOf(const QWidget &form)
{
    QStringList titles;
    for (const QGroupBox *box : form.findChildren<QGroupBox *>())
        titles += box->title();
    return titles;
}

} // namespace

class tst_PreferenceForms : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
        m_page.reset(m_handler.GetWidget(true));
    }

    void everyFormIsWhiteAndHasItsTitles_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("groups");
        const QString title = QStringLiteral("Form");
        const QStringList options{QStringLiteral("Options")};
        for (const char *form : {"advertisement", "AIP", "imanage", "myapps", "startpage", "login_domain"})
            QTest::newRow(form) << QString(QStringLiteral("tab_prefer_") + QLatin1String(form)) << title
                                << options;
        QTest::newRow("security") << QStringLiteral("tab_prefer_security") << QStringLiteral("Security")
                                  << QStringList{
                                         QStringLiteral("Disable all actions in PDFs"),
                                         QStringLiteral("PDF File Attachments"),
                                         QStringLiteral("Edit the default list of file types (Extension)")};
    }

    void everyFormIsWhiteAndHasItsTitles()
    {
        QFETCH(QString, form);
        const auto *widget = m_page->findChild<CTabWidget *>(form);
        QVERIFY(widget);
        QCOMPARE(QLatin1String(widget->metaObject()->className()), form);
        QTEST(widget->windowTitle(), "title");
        QTEST(groupTitlesOf(*widget), "groups");
        QCOMPARE(widget->styleSheet(),
                 QStringLiteral("QWidget#%1{\n\tbackground-color: rgb(255, 255, 255);\n}").arg(form));
    }

    void everyButtonHasItsTextAndStyle_data()
    {
        QTest::addColumn<QByteArray>("className");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("style");
        const QByteArray box("QCheckBox");
        const QByteArray radio("QRadioButton");
        const QString marked = editorOnly + controlStyle;
        QTest::newRow("checkBox_removeAdvertise")
            << box << QStringLiteral("Remove Advertisement") << controlStyle;
        QTest::newRow("cb_UseExternalBrowserForSSO")
            << box << QStringLiteral("Use the external browser for single sign-on") << controlStyle;
        QTest::newRow("cb_biManageLogin") << box << QStringLiteral("Enable iManage 10 SSO Login") << marked;
        QTest::newRow("cb_hidemyapps") << box << QStringLiteral("Hide My Apps") << marked;
        QTest::newRow("checkBox_showStartPg") << box << QStringLiteral("Show Start Page") << controlStyle;
        QTest::newRow("rb_disableopenfile_all")
            << box << QStringLiteral("Disable all actions in PDFs") << controlStyle;
        QTest::newRow("cb_allowed_whitelist")
            << radio << QStringLiteral("Configure allowed login domain whitelist") << marked;
        QTest::newRow("cb_disallowed_blacklist")
            << radio << QStringLiteral("Configure disallowed login domain blacklist") << marked;
    }

    void everyButtonHasItsTextAndStyle()
    {
        const auto *button = qobject_cast<QAbstractButton *>(child(*m_page, QTest::currentDataTag()));
        QVERIFY(button);
        QTEST(QByteArray(button->metaObject()->className()), "className");
        QTEST(button->text(), "text");
        QTEST(button->styleSheet(), "style");
        QVERIFY(button->isCheckable());
    }

    void listsOfferWhatTheyShould()
    {
        QCOMPARE(
            itemsOf(*m_page, "cb_aip_options"),
            (QStringList{QStringLiteral("Default"), QStringLiteral("Disabled"), QStringLiteral("Enabled")}));
        QCOMPARE(itemsOf(*m_page, "cb_auth_lib_options"),
                 (QStringList{QStringLiteral("MSAL"), QStringLiteral("ADAL")}));
        QCOMPARE(
            itemsOf(*m_page, "cb_fileattachmentsMode"),
            (QStringList{QStringLiteral("Default"), QStringLiteral("Enabled"), QStringLiteral("Disabled")}));
    }

    void labelsStandForTheirControls()
    {
        QCOMPARE(labelOf(*m_page, "cb_aip_options"),
                 QStringLiteral("Enable Default Sensitivity Label and Mandatory Sensitivity Labeling:"));
        QCOMPARE(labelOf(*m_page, "cb_auth_lib_options"), QStringLiteral("MIP Authentication Library:"));
        QCOMPARE(labelOf(*m_page, "cb_fileattachmentsMode"),
                 QStringLiteral("All file attachments may be opened or saved to disk"));
        QCOMPARE(labelOf(*m_page, "lineEdit_domain"), QStringLiteral("Input domain:"));
    }

    void controlsWithoutALabelSayWhatTheyAre()
    {
        for (const char *name : {"listView", "tt_defaultLaunchAttachmentPerms", "tableView_domains",
                                 "cb_aip_options", "cb_auth_lib_options", "cb_fileattachmentsMode"})
            QVERIFY2(!child(*m_page, name)->accessibleName().isEmpty(), name);
    }

    void informationIconsExplainThemselves()
    {
        const auto *info = qobject_cast<QLabel *>(child(*m_page, "info"));
        const auto *info2 = qobject_cast<QLabel *>(child(*m_page, "info2"));
        for (const QLabel *icon : {info, info2}) {
            QVERIFY(icon);
            QVERIFY(icon->property("pixmap").value<QPixmap>().toImage() ==
                    QPixmap(QStringLiteral(":/img/info.png")).toImage());
        }
        QVERIFY(info->toolTip().contains(
            QStringLiteral("This setting determines whether to disable all the actions in PDF files.")));
        QVERIFY(info->toolTip().contains(QStringLiteral(
            "When the item is selected, the application will block all the actions in PDF files, including "
            "GoToE, GoToR, Launch, Thread, Import Data, Export Form Data, Submit Form, and Reset Form.")));
        for (const char *part : {"whitelist", "blacklist", "other than PDF and FDF", "first", "version:1",
                                 "0:", "1:", "2:", "3:"})
            QVERIFY2(info2->toolTip().contains(QLatin1String(part)), part);
    }

    void longToolTipsAreWrapped()
    {
        for (const char *name : {"info", "info2"})
            QVERIFY(Qt::mightBeRichText(child(*m_page, name)->toolTip()));
    }

    void theSampleEntryIsADomain()
    {
        const auto *edit = qobject_cast<QLineEdit *>(child(*m_page, "lineEdit_domain"));
        QVERIFY(isLoginDomain(edit->placeholderText()));
        QCOMPARE(qobject_cast<QPushButton *>(child(*m_page, "btn_add_domain"))->text(),
                 QStringLiteral("Add"));
        QCOMPARE(qobject_cast<QPushButton *>(child(*m_page, "btn_remove_domains"))->text(),
                 QStringLiteral("Remove"));
    }

    void theStartPageGroupHasItsName()
    {
        const auto *group = qobject_cast<QGroupBox *>(child(*m_page, "groupBox_xmlEditor"));
        QVERIFY(group && group->isAncestorOf(child(*m_page, "checkBox_showStartPg")));
    }

private:
    CHandler_Preference m_handler{true};
    std::unique_ptr<QWidget> m_page;
};

QTEST_MAIN(tst_PreferenceForms)
#include "tst_PreferenceForms.moc"
