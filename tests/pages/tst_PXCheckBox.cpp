// SPDX-License-Identifier: Apache-2.0
#include "pages/PXCheckBox.h"
#include "resources/Resources.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QtTest>
#include <QVBoxLayout>

namespace {

QToolButton *tickOf(const PXCheckBox &box)
{
    return box.findChild<QToolButton *>(QStringLiteral("toolButton"));
}

QLabel *labelOf(const PXCheckBox &box)
{
    return box.findChild<QLabel *>(QStringLiteral("label"));
}

bool showsColour(const QImage &image, const std::function<bool(const QColor &)> &wanted)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (wanted(image.pixelColor(x, y)))
                return true;
        }
    }
    return false;
}

bool isGreen(const QColor &colour)
{
    return colour.green() > colour.red() + 60 && colour.green() > colour.blue() + 20;
}

} // namespace

class tst_PXCheckBox : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        initPctResources();
        // Qt reports each property of the label's style that it does not know.
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    }

    void isMadeOfALabelAndACheckableToolButtonInARow()
    {
        const PXCheckBox box;
        const auto *layout = qobject_cast<QHBoxLayout *>(box.layout());
        QVERIFY(layout);
        QCOMPARE(layout->objectName(), QStringLiteral("horizontalLayout"));
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->contentsMargins(), QMargins(5, 2, 10, 2));
        QCOMPARE(layout->itemAt(0)->widget(), labelOf(box));
        QCOMPARE(layout->itemAt(1)->widget(), tickOf(box));
        QVERIFY(tickOf(box)->isCheckable());
        QCOMPARE(box.size(), QSize(123, 28));
        QCOMPARE(box.objectName(), QStringLiteral("PXCheckBox"));
    }

    void hasThePrescribedStyle()
    {
        const PXCheckBox box;
        QCOMPARE(labelOf(box)->styleSheet(),
                 QStringLiteral(
                     "display: flex;\npadding: 4px 5px;\nalign-items: center;\ngap: 10px;\nflex: 1 0 0;"));
        QCOMPARE(tickOf(box)->styleSheet(),
                 QStringLiteral("QToolButton{\nborder:0px;\nbackground-image: url(:/img/check_gray.png);\n}\n"
                                "QToolButton:checked{\n\tbackground-image: url(:/img/check_green.png);\n}"));
    }

    void textGoesToTheLabelAndIsTheAccessibleName()
    {
        PXCheckBox box(QStringLiteral("first"));
        QCOMPARE(box.text(), QStringLiteral("first"));
        box.setText(QStringLiteral("second"));
        QCOMPARE(labelOf(box)->text(), QStringLiteral("second"));
        QCOMPARE(box.accessibleName(), QStringLiteral("second"));
        QCOMPARE(tickOf(box)->accessibleName(), QStringLiteral("second"));
    }

    void onlyCheckedChecks()
    {
        PXCheckBox box;
        QCOMPARE(box.checkState(), Qt::Unchecked);
        box.setCheckState(Qt::Checked);
        QVERIFY(tickOf(box)->isChecked());
        QCOMPARE(box.checkState(), Qt::Checked);
        box.setCheckState(Qt::PartiallyChecked);
        QCOMPARE(box.checkState(), Qt::Unchecked);
    }

    void theTickIsGreenWhenCheckedAndGreyWhenNot()
    {
        PXCheckBox box(QStringLiteral("text"));
        box.show();
        QVERIFY(!showsColour(box.grab().toImage(), isGreen));
        box.setCheckState(Qt::Checked);
        QVERIFY(showsColour(box.grab().toImage(), isGreen));
    }

    void aClickOnTheLabelToggles()
    {
        PXCheckBox box(QStringLiteral("text"));
        box.show();
        QTest::mouseClick(labelOf(box), Qt::LeftButton);
        QCOMPARE(box.checkState(), Qt::Checked);
        QTest::mouseClick(labelOf(box), Qt::LeftButton);
        QCOMPARE(box.checkState(), Qt::Unchecked);
    }

    void aClickOnTheTickToggles()
    {
        PXCheckBox box(QStringLiteral("text"));
        box.show();
        QTest::mouseClick(tickOf(box), Qt::LeftButton);
        QCOMPARE(box.checkState(), Qt::Checked);
    }

    void otherButtonsAndReleasesOutsideDoNotToggle()
    {
        PXCheckBox box(QStringLiteral("text"));
        box.show();
        QTest::mouseClick(&box, Qt::RightButton);
        QTest::mousePress(&box, Qt::LeftButton);
        QTest::mouseRelease(&box, Qt::LeftButton, {}, QPoint(-5, -5));
        QCOMPARE(box.checkState(), Qt::Unchecked);
    }

    void tabReachesItAndSpaceToggles()
    {
        QWidget window;
        auto *layout = new QVBoxLayout(&window);
        PXCheckBox first(QStringLiteral("first"));
        PXCheckBox second(QStringLiteral("second"));
        layout->addWidget(&first);
        layout->addWidget(&second);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        first.setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(first.checkState(), Qt::Unchecked);
        QCOMPARE(second.checkState(), Qt::Checked);
    }

    void focusIsVisible()
    {
        PXCheckBox box(QStringLiteral("text"));
        box.show();
        QVERIFY(QTest::qWaitForWindowActive(&box));
        box.clearFocus();
        tickOf(box)->clearFocus();
        const QImage without = box.grab().toImage();
        box.setFocus(Qt::TabFocusReason);
        QVERIFY(box.grab().toImage() != without);
    }
};

QTEST_MAIN(tst_PXCheckBox)
#include "tst_PXCheckBox.moc"
