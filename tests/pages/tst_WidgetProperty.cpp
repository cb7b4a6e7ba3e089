// SPDX-License-Identifier: Apache-2.0
#include "pages/PXCheckBox.h"
#include "pages/WidgetProperty.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>
#include <QtTest>

namespace {

const QString name = QStringLiteral("control");

/// A page with one control of a class, two levels down.
template <class Control> struct PageWith : QWidget
{
    PageWith()
        : control(new Control(new QWidget(new QWidget(this))))
    {
        control->setObjectName(name);
    }

    QVariant value() { return GetWidgetProperty(this, name); }

    Control *control;
};

void setAndRead(QWidget &page, const QVariantList &values)
{
    for (const QVariant &value : values) {
        QVERIFY(SetWidgetProperty(&page, name, value));
        QCOMPARE(GetWidgetProperty(&page, name), value);
    }
}

} // namespace

class tst_WidgetProperty : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Qt reports each property of PXCheckBox's style that it does not know.
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    }

    void comboBoxGivesItsIndex()
    {
        PageWith<QComboBox> page;
        QCOMPARE(page.value(), QVariant(-1));
        page.control->addItems({QStringLiteral("a"), QStringLiteral("b")});
        page.control->setCurrentIndex(1);
        QCOMPARE(page.value(), QVariant(1));
        QCOMPARE(page.value().userType(), int(QMetaType::Int));
    }

    void editableComboBoxGivesItsIndexToo()
    {
        PageWith<QComboBox> page;
        page.control->setEditable(true);
        page.control->setEditText(QStringLiteral("text"));
        QCOMPARE(page.value().userType(), int(QMetaType::Int));
    }

    void checkBoxGivesWhetherItIsChecked()
    {
        PageWith<QCheckBox> page;
        QCOMPARE(page.value(), QVariant(false));
        page.control->setChecked(true);
        QCOMPARE(page.value(), QVariant(true));
        QCOMPARE(page.value().userType(), int(QMetaType::Bool));
    }

    void partiallyCheckedReadsAsNotChecked()
    {
        PageWith<QCheckBox> page;
        page.control->setTristate(true);
        page.control->setCheckState(Qt::PartiallyChecked);
        QCOMPARE(page.value(), QVariant(false));
    }

    void lineEditWithAWordBetweenBlanksGivesTheWordAlone()
    {
        PageWith<QLineEdit> page;
        page.control->setText(QStringLiteral("  \t word "));
        QCOMPARE(page.value(), QVariant(QStringLiteral("word")));
    }

    void textEditGivesItsTrimmedPlainText()
    {
        PageWith<QTextEdit> page;
        page.control->setPlainText(QStringLiteral("\n version:1|\n.ade:3|\n"));
        QCOMPARE(page.value(), QVariant(QStringLiteral("version:1|\n.ade:3|")));
    }

    void radioButtonGivesWhetherItIsChecked()
    {
        PageWith<QRadioButton> page;
        QCOMPARE(page.value(), QVariant(false));
        page.control->setChecked(true);
        QCOMPARE(page.value(), QVariant(true));
    }

    void otherControlsGiveNoValue()
    {
        QVERIFY(!PageWith<QListWidget>().value().isValid());
        QVERIFY(!PageWith<QLabel>().value().isValid());
        QVERIFY(!PageWith<QPushButton>().value().isValid());
        QVERIFY(!PageWith<PXCheckBox>().value().isValid());
    }

    void unknownNameGivesNoValue()
    {
        PageWith<QCheckBox> page;
        QVERIFY(!GetWidgetProperty(&page, QStringLiteral("Control")).isValid());
    }

    void emptyNameGivesNoValue()
    {
        QWidget page;
        new QCheckBox(&page);
        QVERIFY(!GetWidgetProperty(&page, QString()).isValid());
        QVERIFY(!GetWidgetProperty(&page, QStringLiteral("")).isValid());
    }

    void noPageGivesNoValue() { QVERIFY(!GetWidgetProperty(nullptr, name).isValid()); }

    void whatIsSetIsWhatIsRead()
    {
        PageWith<QComboBox> list;
        list.control->addItems({QStringLiteral("a"), QStringLiteral("b")});
        setAndRead(list, {1, 0, -1});
        PageWith<QCheckBox> box;
        setAndRead(box, {true, false, true});
        const QString empty = QLatin1String("");
        PageWith<QLineEdit> line;
        setAndRead(line, {QStringLiteral("a"), empty});
        PageWith<QTextEdit> edit;
        setAndRead(edit, {QStringLiteral("version:1|\n.ade:3|"), empty});
    }

    void ofTwoRadioButtonsOneIsChecked()
    {
        PageWith<QRadioButton> page;
        QRadioButton other(page.control->parentWidget());
        for (const bool on : {false, true, false}) {
            QVERIFY(SetWidgetProperty(&page, name, on));
            QCOMPARE(page.value(), QVariant(on));
            QCOMPARE(other.isChecked(), !on);
        }
    }

    void aTextIsSetAsItStandsAndWithoutSignals()
    {
        PageWith<QTextEdit> page;
        const QSignalSpy changes(page.control, &QTextEdit::textChanged);
        QVERIFY(SetWidgetProperty(&page, name, QStringLiteral(" <b>a</b>\u0001 ")));
        QCOMPARE(page.control->toPlainText(), QStringLiteral(" <b>a</b>\u0001 "));
        QVERIFY(changes.isEmpty());
    }

    void whatGivesNoValueTakesNone()
    {
        PageWith<QPushButton> button;
        PageWith<QCheckBox> box;
        QVERIFY(!SetWidgetProperty(&button, name, true));
        QVERIFY(!SetWidgetProperty(&box, QStringLiteral("Control"), true));
        QVERIFY(!SetWidgetProperty(&box, QString(), true));
        QVERIFY(!SetWidgetProperty(nullptr, name, true));
        QCOMPARE(box.value(), QVariant(false));
    }

    void thePageItselfIsNotAmongItsControls()
    {
        QCheckBox page;
        page.setObjectName(name);
        QVERIFY(!GetWidgetProperty(&page, name).isValid());
    }
};

QTEST_MAIN(tst_WidgetProperty)
#include "tst_WidgetProperty.moc"
