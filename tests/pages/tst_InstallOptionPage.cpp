// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "pages/installoption/tab_installoption.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QtTest>

class tst_InstallOptionPage : public QObject
{
    Q_OBJECT

private slots:
    void saysWhereItGoesAndHowItsButtonLooks()
    {
        CHandler_InstallOption handler(true);
        QCOMPARE(handler.GetTabId(), 1);
        QCOMPARE(handler.GetTabName(), QStringLiteral("Installation Options"));
        QCOMPARE(handler.GetTabTitle(), QStringLiteral("Installation Options"));
        QCOMPARE(handler.GetTabTooltip(),
                 QStringLiteral("Allow you to change the default application language, install location, and "
                                "other common installation settings."));
        QCOMPARE(handler.GetTabIcon(), QStringLiteral(":/img/install-option.png"));
        QVERIFY(!handler.IsOnlyForEditor());
    }

    void isNotThereWhenAProfileIsMade() { QVERIFY(!CHandler_InstallOption(true).SupportsProfile()); }

    void helpPageIsUrlEncoded()
    {
        QCOMPARE(CHandler_InstallOption(true).GetInfoName(), QStringLiteral("Installation%20Options.html"));
    }

    void askingForTheWidgetWithoutCreatingGivesNullAndCreatesNothing()
    {
        CHandler_InstallOption handler(true);
        const int before = QApplication::allWidgets().size();
        QCOMPARE(handler.GetWidget(false), nullptr);
        QCOMPARE(QApplication::allWidgets().size(), before);
    }

    void widgetIsMadeOnceWithoutAParent()
    {
        CHandler_InstallOption handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        QVERIFY(qobject_cast<tab_installoption *>(page.get()));
        QCOMPARE(page->parent(), nullptr);
        QCOMPARE(handler.GetWidget(true), page.get());
        QCOMPARE(handler.GetWidget(false), page.get());
    }

    void deletedWidgetReadsAsNullAndIsMadeAfresh()
    {
        CHandler_InstallOption handler(true);
        delete handler.GetWidget(true);
        QCOMPARE(handler.GetWidget(false), nullptr);
        QVERIFY(!handler.GetProperty(QStringLiteral("cb_defaultpdf")).isValid());
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        QVERIFY(page);
    }

    void formHasThePrescribedTexts()
    {
        CHandler_InstallOption handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        QCOMPARE(page->windowTitle(), QStringLiteral("Form"));
        QCOMPARE(page->findChild<QLabel *>(QStringLiteral("label_title"))->text(),
                 QStringLiteral("Installation Options"));
        const auto *box = page->findChild<QCheckBox *>(QStringLiteral("cb_defaultpdf"));
        QCOMPARE(box->text(), QStringLiteral("Set as the default PDF viewer"));
        QCOMPARE(qobject_cast<QGroupBox *>(box->parentWidget())->title(), QStringLiteral("Pre-Setting"));
    }

    void everyImportSetsTheCheckBoxFromTheRecord()
    {
        CHandler_InstallOption handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        EditorXmlData data;
        for (const bool on : {true, false, true}) {
            data.bSetAsDefaultViewer = on;
            QVERIFY(handler.ImportProperty(page.get(), &data));
            QCOMPARE(handler.GetProperty(QStringLiteral("cb_defaultpdf")), QVariant(on));
        }
    }

    void importFailsWithoutALivePage()
    {
        CHandler_InstallOption handler(true);
        tab_installoption other;
        const EditorXmlData data;
        QVERIFY(!handler.ImportProperty(&other, &data));
        QVERIFY(!handler.ImportProperty(nullptr, &data));
    }

    void importFailsOnAWidgetOfAnotherClass()
    {
        CHandler_InstallOption handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        CTabWidget other;
        const EditorXmlData data;
        QVERIFY(!handler.ImportProperty(&other, &data));
        QVERIFY(!handler.ImportProperty(nullptr, &data));
    }

    void importFailsWithoutARecordAndChangesNothing()
    {
        CHandler_InstallOption handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        const EditorXmlData data;
        QVERIFY(handler.ImportProperty(page.get(), &data));
        QVERIFY(!handler.ImportProperty(page.get(), nullptr));
        QCOMPARE(handler.GetProperty(QStringLiteral("cb_defaultpdf")), QVariant(true));
    }

    void errorsAndSavingChangeNothing()
    {
        CHandler_InstallOption handler(true);
        const std::unique_ptr<QWidget> page(handler.GetWidget(true));
        const EditorXmlData before = theEditorXmlData;
        handler.OnError(QStringLiteral("cb_defaultpdf"));
        handler.OnBeforeSave();
        QVERIFY(theEditorXmlData == before);
        QCOMPARE(handler.GetProperty(QStringLiteral("cb_defaultpdf")), QVariant(false));
    }
};

QTEST_MAIN(tst_InstallOptionPage)
#include "tst_InstallOptionPage.moc"
