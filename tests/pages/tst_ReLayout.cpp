// SPDX-License-Identifier: Apache-2.0
#include "config/CCommon.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QtTest>
#include <QVBoxLayout>

namespace {

const QString marker = QStringLiteral("apptype:onlyeditor;\nfont-size: 13px;");

QCheckBox *box(const QString &name, const QString &styleSheet = QString())
{
    auto *box = new QCheckBox(name);
    box->setObjectName(name);
    box->setStyleSheet(styleSheet);
    return box;
}

QHBoxLayout *row(std::initializer_list<QCheckBox *> boxes)
{
    auto *row = new QHBoxLayout;
    for (QCheckBox *box : boxes)
        row->addWidget(box);
    row->addSpacerItem(new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum));
    return row;
}

/// Three rows; the one in the middle is for the Editor only, and the last one in part.
struct Form : QWidget
{
    Form()
    {
        auto *rows = new QVBoxLayout(this);
        rows->addLayout(row({box(QStringLiteral("first"))}));
        rows->addLayout(
            row({box(QStringLiteral("editor1"), marker), box(QStringLiteral("editor2"), marker)}));
        rows->addLayout(row({box(QStringLiteral("last")), box(QStringLiteral("editor3"), marker)}));
    }

    bool shows(const QString &name) const { return findChild<QCheckBox *>(name)->isVisibleTo(this); }
};

/// The same form as it would be without any control for the Editor.
struct ReaderForm : QWidget
{
    ReaderForm()
    {
        auto *rows = new QVBoxLayout(this);
        rows->addLayout(row({box(QStringLiteral("first"))}));
        rows->addLayout(row({box(QStringLiteral("last"))}));
    }
};

QRect placeOf(const QWidget &form, const QString &name)
{
    const auto *control = form.findChild<QCheckBox *>(name);
    return {control->mapTo(&form, QPoint()), control->size()};
}

} // namespace

class tst_ReLayout : public QObject
{
    Q_OBJECT

private slots:
    void readerSeesNoMarkedControl()
    {
        Form form;
        CCommon::ReLayout(&form, false);
        for (const char *name : {"editor1", "editor2", "editor3"})
            QVERIFY2(!form.shows(QLatin1String(name)), name);
        QVERIFY(form.shows(QStringLiteral("first")));
        QVERIFY(form.shows(QStringLiteral("last")));
    }

    void rowOfMarkedControlsOnlyLeavesNoSpace()
    {
        Form form;
        ReaderForm expected;
        CCommon::ReLayout(&form, false);
        for (QWidget *shown : {static_cast<QWidget *>(&form), static_cast<QWidget *>(&expected)}) {
            shown->resize(300, 200);
            shown->show();
        }
        QCOMPARE(form.minimumSizeHint().height(), expected.minimumSizeHint().height());
        QCOMPARE(form.layout()->count(), 2);
        for (const char *name : {"first", "last"})
            QCOMPARE(placeOf(form, QLatin1String(name)), placeOf(expected, QLatin1String(name)));
    }

    void editorSeesEverythingAndNothingMoves()
    {
        Form form;
        const QSize before = form.sizeHint();
        CCommon::ReLayout(&form, true);
        for (const char *name : {"first", "editor1", "editor2", "last", "editor3"})
            QVERIFY2(form.shows(QLatin1String(name)), name);
        QCOMPARE(form.sizeHint(), before);
        QCOMPARE(form.layout()->count(), 3);
    }

    void markerCountsAnywhereInTheStyleSheetWithItsCase_data()
    {
        QTest::addColumn<QString>("styleSheet");
        QTest::addColumn<bool>("shown");
        QTest::newRow("in front") << QStringLiteral("apptype:onlyeditor;\ncolor: red;") << false;
        QTest::newRow("behind") << QStringLiteral("color: red;\napptype:onlyeditor;") << false;
        QTest::newRow("other case") << QStringLiteral("appType:onlyEditor;") << true;
        QTest::newRow("without its semicolon") << QStringLiteral("apptype:onlyeditor") << true;
        QTest::newRow("none") << QStringLiteral("color: red;") << true;
    }

    void markerCountsAnywhereInTheStyleSheetWithItsCase()
    {
        QFETCH(QString, styleSheet);
        QWidget form;
        QCheckBox *control = box(QStringLiteral("control"), styleSheet);
        (new QVBoxLayout(&form))->addWidget(control);
        CCommon::ReLayout(&form, false);
        QTEST(control->isVisibleTo(&form), "shown");
    }

    void markedControlsInsideGroupsAndHiddenGroupsAreFound()
    {
        QWidget form;
        auto *rows = new QVBoxLayout(&form);
        auto *outer = new QGroupBox;
        auto *inner = new QGroupBox;
        outer->setStyleSheet(marker);
        rows->addWidget(outer);
        (new QVBoxLayout(outer))->addWidget(inner);
        QCheckBox *deep = box(QStringLiteral("deep"), marker);
        (new QVBoxLayout(inner))->addWidget(deep);
        CCommon::ReLayout(&form, false);
        QVERIFY(deep->isHidden());
        QVERIFY(outer->isHidden());
        QCOMPARE(rows->count(), 0);
        QCOMPARE(inner->layout()->count(), 0);
    }

    void emptiedRowsInsideRowsGoToo()
    {
        QWidget form;
        auto *rows = new QVBoxLayout(&form);
        auto *outer = new QGridLayout;
        rows->addLayout(outer);
        outer->addLayout(row({box(QStringLiteral("editor1"), marker)}), 0, 0);
        outer->addLayout(row({box(QStringLiteral("editor2"), marker)}), 1, 0);
        CCommon::ReLayout(&form, false);
        QCOMPARE(rows->count(), 0);
    }

    void emptiedRowInsideAGroupLeavesNoSpace()
    {
        QWidget form;
        auto *group = new QGroupBox;
        (new QVBoxLayout(&form))->addWidget(group);
        auto *rows = new QVBoxLayout(group);
        rows->addLayout(row({box(QStringLiteral("first"))}));
        rows->addLayout(row({box(QStringLiteral("editor1"), marker)}));
        CCommon::ReLayout(&form, false);
        QCOMPARE(rows->count(), 1);
        QVERIFY(group->isVisibleTo(&form));
    }

    void rowsThatWereEmptyBeforeStay()
    {
        QWidget form;
        auto *rows = new QVBoxLayout(&form);
        rows->addWidget(box(QStringLiteral("editor1"), marker));
        rows->addLayout(new QHBoxLayout);
        CCommon::ReLayout(&form, false);
        QCOMPARE(rows->count(), 1);
    }

    void hiddenControlsStayChildrenOfThePage()
    {
        Form form;
        CCommon::ReLayout(&form, false);
        QVERIFY(form.findChild<QCheckBox *>(QStringLiteral("editor1")));
    }

    void nothingHappensWithoutAPageOrALayout()
    {
        CCommon::ReLayout(nullptr, false);
        QWidget page;
        QCheckBox *control = box(QStringLiteral("control"), marker);
        control->setParent(&page);
        control->show();
        CCommon::ReLayout(&page, false);
        QVERIFY(control->isVisibleTo(&page));
    }
};

QTEST_MAIN(tst_ReLayout)
#include "tst_ReLayout.moc"
