// SPDX-License-Identifier: Apache-2.0
#include "config/EditorXmlData.h"
#include "pages/preferences/logindomain/tab_prefer_login_domain.h"
#include "pages/preferences/tab_preference.h"
#include "resources/Resources.h"
#include "tests/support/DialogDriver.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QString tableName = QStringLiteral("tableView_domains");

/// The sub-page by itself, on the screen.
struct Page
{
    Page()
        : handler(true)
        , widget(handler.GetWidget(true))
        , edit(widget->findChild<QLineEdit *>(QStringLiteral("lineEdit_domain")))
        , table(widget->findChild<QTableView *>(tableName))
    {
        widget->resize(500, 400);
        widget->show();
    }

    void click(const char *name) const
    {
        QTest::mouseClick(widget->findChild<QPushButton *>(QLatin1String(name)), Qt::LeftButton);
    }

    void add(const QString &text) const
    {
        edit->clear();
        QTest::keyClicks(edit, text);
        click("btn_add_domain");
    }

    void clickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        const QRect cell = table->visualRect(table->model()->index(row, 0));
        QTest::mouseClick(table->viewport(), Qt::LeftButton, modifiers, cell.center());
    }

    bool import(const QString &mode, const QString &domains)
    {
        EditorXmlData data;
        data.strLoginDomain = mode;
        data.strLoginDomainList = domains;
        return handler.ImportProperty(widget.get(), &data);
    }

    bool isChecked(const char *name) const
    {
        return widget->findChild<QRadioButton *>(QLatin1String(name))->isChecked();
    }

    QString domains() { return handler.GetProperty(tableName).toString(); }

    CHandler_Prefer_LoginDomain handler;
    const std::unique_ptr<QWidget> widget;
    QLineEdit *const edit;
    QTableView *const table;
};

/// The text of the warning that adding `typed` brings up.
QString warningFor(const Page &page, const QString &typed, QString *title = nullptr,
                   QMessageBox::StandardButtons *buttons = nullptr)
{
    QString text;
    DialogDriver::onNextModal(page.widget.get(), [&](QDialog *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        text = box ? box->text() : QString();
        if (box && title)
            *title = box->windowTitle();
        if (box && buttons)
            *buttons = box->standardButtons();
        dialog->accept();
    });
    page.add(typed);
    return text;
}

const QString mismatch = QStringLiteral("\nThe entered domain name does not match.");

} // namespace

class tst_LoginDomainPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    }

    void whatIsWrongIsSaidWhileTyping_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("said");
        QTest::newRow("nothing") << QString() << QString();
        QTest::newRow("a domain") << QStringLiteral("@example.com") << QString();
        QTest::newRow("no at") << QStringLiteral("example.com")
                               << QStringLiteral("\"example.com\" does not begin with \"@\".");
        QTest::newRow("no dot") << QStringLiteral("@example")
                                << QStringLiteral("\"@example\" has no dot, as in \"@example.com\".");
        QTest::newRow("the second") << QStringLiteral("@example.com;@-.de")
                                    << QStringLiteral("\"@-.de\" is no domain");
    }

    void whatIsWrongIsSaidWhileTyping()
    {
        QFETCH(QString, typed);
        QFETCH(QString, said);
        const Page page;
        QTest::keyClicks(page.edit, typed);
        const auto *label = page.widget->findChild<QLabel *>(QStringLiteral("label_mismatch"));
        QCOMPARE(label->isVisible(), !said.isEmpty());
        QVERIFY2(said.isEmpty() || label->text().startsWith(said), qPrintable(label->text()));
        QCOMPARE(page.widget->findChild<QPushButton *>(QStringLiteral("btn_add_domain"))->isEnabled(),
                 !typed.isEmpty());
    }

    void removeIsForSelectedRows()
    {
        Page page;
        QVERIFY(page.import(QStringLiteral("1"), QStringLiteral("@a.de;@b.de")));
        const auto *remove = page.widget->findChild<QPushButton *>(QStringLiteral("btn_remove_domains"));
        QVERIFY(!remove->isEnabled());
        page.clickRow(0);
        QVERIFY(remove->isEnabled());
        page.click("btn_remove_domains");
        QCOMPARE(page.domains(), QStringLiteral("@b.de"));
    }

    void theEmptyTableGivesAnEmptyStringNotAnInvalidValue()
    {
        Page page;
        const QVariant value = page.handler.GetProperty(tableName);
        QVERIFY(value.isValid());
        QVERIFY(value.canConvert<QString>());
        QCOMPARE(value.toString(), QString());
        CHandler_Preference preferences(true);
        const std::unique_ptr<QWidget> whole(preferences.GetWidget(true));
        QVERIFY(preferences.GetProperty(tableName).isValid());
    }

    void otherNamesAndAMissingPageGiveInvalidValues()
    {
        Page page;
        QVERIFY(!page.handler.GetProperty(QStringLiteral("cb_allowed_whitelist")).isValid());
        QVERIFY(!CHandler_Prefer_LoginDomain(true).GetProperty(tableName).isValid());
    }

    void onlyTheModeOneChecksTheWhitelist_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<bool>("whitelist");
        QTest::newRow("1") << QStringLiteral("1") << true;
        QTest::newRow("0") << QStringLiteral("0") << false;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("true") << QStringLiteral("true") << false;
        QTest::newRow("2") << QStringLiteral("2") << false;
        QTest::newRow("blank after") << QStringLiteral("1 ") << false;
    }

    void onlyTheModeOneChecksTheWhitelist()
    {
        QFETCH(QString, mode);
        Page page;
        QVERIFY(page.import(QStringLiteral("1"), QString()));
        QVERIFY(page.import(mode, QString()));
        QTEST(page.isChecked("cb_allowed_whitelist"), "whitelist");
        QCOMPARE(page.isChecked("cb_disallowed_blacklist"), !page.isChecked("cb_allowed_whitelist"));
    }

    void importReplacesTheTableAndKeepsItsOrder()
    {
        Page page;
        QVERIFY(page.import(QStringLiteral("1"), QStringLiteral("@old.com")));
        QVERIFY(page.import(QStringLiteral("1"), QStringLiteral("@b.com;;@a.com;@b.com;odd")));
        QCOMPARE(page.domains(), QStringLiteral("@b.com;@a.com;@b.com;odd"));
        QCOMPARE(page.table->model()->headerData(0, Qt::Horizontal).toString(),
                 QStringLiteral("Domain List"));
    }

    void twoEntriesSeparatedByTwoSemicolonsAddTwoRows()
    {
        Page page;
        page.add(QStringLiteral("@b.com;;@a.com"));
        QCOMPARE(page.domains(), QStringLiteral("@b.com;@a.com"));
        QCOMPARE(page.edit->text(), QString());
    }

    void anInvalidEntryAmongValidOnesAddsNothingAndWarns()
    {
        Page page;
        QString title = QStringLiteral("unset");
        QMessageBox::StandardButtons buttons;
        const QString typed = QStringLiteral("@a.com;nonsense");
        QCOMPARE(warningFor(page, typed, &title, &buttons), mismatch);
        QCOMPARE(title, QString());
        QCOMPARE(buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QCOMPARE(page.domains(), QString());
        QCOMPARE(page.edit->text(), typed);
    }

    void blanksAreTrimmedAroundTheWholeTextOnly()
    {
        Page page;
        page.add(QStringLiteral("  @a.com  "));
        QCOMPARE(page.domains(), QStringLiteral("@a.com"));
        QCOMPARE(warningFor(page, QStringLiteral("@b.com; @c.com")), mismatch);
        QCOMPARE(page.domains(), QStringLiteral("@a.com"));
    }

    void whatIsListedAlreadyIsSkippedInSilence()
    {
        Page page;
        page.add(QStringLiteral("@a.com"));
        page.add(QStringLiteral("@a.com;@A.com;@b.com;@b.com"));
        QCOMPARE(page.domains(), QStringLiteral("@a.com;@A.com;@b.com"));
    }

    void addingNothingDoesNothing()
    {
        Page page;
        page.add(QStringLiteral(" ;; "));
        QCOMPARE(page.domains(), QString());
        QCOMPARE(page.edit->text(), QString());
    }

    void aMillionCharactersAreRefusedWithTheWarning()
    {
        Page page;
        page.edit->setMaxLength(2'000'000);
        page.edit->setText(QLatin1Char('@') + QString(1'000'000, QLatin1Char('a')) + QStringLiteral(".com"));
        QString text;
        DialogDriver::onNextModal(page.widget.get(), [&](QDialog *dialog) {
            text = qobject_cast<QMessageBox *>(dialog)->text();
            dialog->accept();
        });
        page.click("btn_add_domain");
        QCOMPARE(text, mismatch);
        QCOMPARE(page.domains(), QString());
    }

    void removesTheSelectedRow()
    {
        Page page;
        page.add(QStringLiteral("@a.com;@b.com;@c.com"));
        page.clickRow(1);
        page.click("btn_remove_domains");
        QCOMPARE(page.domains(), QStringLiteral("@a.com;@c.com"));
    }

    void removesAllSelectedRowsInWhateverOrderTheyWereSelected_data()
    {
        QTest::addColumn<QList<int>>("rows");
        QTest::newRow("downwards") << QList<int>{0, 1, 3};
        QTest::newRow("upwards") << QList<int>{3, 1, 0};
        QTest::newRow("mixed") << QList<int>{1, 3, 0};
    }

    void removesAllSelectedRowsInWhateverOrderTheyWereSelected()
    {
        QFETCH(QList<int>, rows);
        Page page;
        page.add(QStringLiteral("@a.com;@b.com;@c.com;@d.com;@e.com"));
        for (const int row : rows)
            page.clickRow(row, Qt::ControlModifier);
        page.click("btn_remove_domains");
        QCOMPARE(page.domains(), QStringLiteral("@c.com;@e.com"));
    }

    void removingWithNothingSelectedRemovesNothing()
    {
        Page page;
        page.add(QStringLiteral("@a.com"));
        page.click("btn_remove_domains");
        QCOMPARE(page.domains(), QStringLiteral("@a.com"));
    }

    void rowsCannotBeEditedIntoSomethingInvalid()
    {
        Page page;
        page.add(QStringLiteral("@a.com"));
        page.clickRow(0);
        const QRect cell = page.table->visualRect(page.table->model()->index(0, 0));
        QTest::mouseDClick(page.table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
        QTest::keyClick(page.table, Qt::Key_F2);
        QTest::keyClicks(page.table, QStringLiteral("x"));
        QVERIFY(!page.table->viewport()->findChild<QLineEdit *>());
        QCOMPARE(page.domains(), QStringLiteral("@a.com"));
    }

    void emptyRowsAreSkippedWhenRead()
    {
        Page page;
        page.add(QStringLiteral("@a.com;@b.com;@c.com"));
        QVERIFY(page.table->model()->setData(page.table->model()->index(1, 0), QString()));
        QVERIFY(page.table->model()->insertRow(0));
        QCOMPARE(page.domains(), QStringLiteral("@a.com;@c.com"));
    }

    void returnInTheLineAddsOnce()
    {
        Page page;
        QTest::keyClicks(page.edit, QStringLiteral("@a.com"));
        QTest::keyClick(page.edit, Qt::Key_Return);
        QCOMPARE(page.domains(), QStringLiteral("@a.com"));
    }

    void theRadioButtonsExcludeEachOther()
    {
        Page page;
        QVERIFY(page.import(QStringLiteral("1"), QString()));
        QTest::mouseClick(page.widget->findChild<QRadioButton *>(QStringLiteral("cb_disallowed_blacklist")),
                          Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
        QVERIFY(!page.isChecked("cb_allowed_whitelist"));
        QVERIFY(page.isChecked("cb_disallowed_blacklist"));
    }
};

QTEST_MAIN(tst_LoginDomainPage)
#include "tst_LoginDomainPage.moc"
