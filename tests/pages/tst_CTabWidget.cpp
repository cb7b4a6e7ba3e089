// SPDX-License-Identifier: Apache-2.0
#include "pages/CTabWidget.h"
#include "pages/WidgetProperty.h"

#include <QLineEdit>
#include <QSplitter>
#include <QtTest>
#include <QVBoxLayout>

class tst_CTabWidget : public QObject
{
    Q_OBJECT

private slots:
    void splitterIsHorizontalAndHoldsThePagesOwnContents()
    {
        CTabWidget page;
        QLineEdit *edit = addEdit(page);
        QSplitter *splitter = page.Splitter();
        QCOMPARE(splitter->orientation(), Qt::Horizontal);
        QCOMPARE(splitter->count(), 1);
        QVERIFY(splitter->widget(0)->isAncestorOf(edit));
        QCOMPARE(page.layout()->indexOf(splitter), 0);
    }

    void splitterIsMadeOnce()
    {
        CTabWidget page;
        addEdit(page);
        QSplitter *first = page.Splitter();
        QCOMPARE(page.Splitter(), first);
        QCOMPARE(page.findChildren<QSplitter *>().size(), 1);
    }

    void contentsFillThePageAsBefore()
    {
        QWidget window;
        CTabWidget page(&window);
        QLineEdit *edit = addEdit(page);
        page.resize(400, 300);
        window.show();
        const QRect before(edit->mapTo(&page, QPoint()), edit->size());
        page.Splitter();
        QTRY_VERIFY(edit->isVisible());
        QTRY_COMPARE(QRect(edit->mapTo(&page, QPoint()), edit->size()), before);
    }

    void contentsAreStillFoundByName()
    {
        CTabWidget page;
        addEdit(page)->setText(QStringLiteral("kept"));
        page.Splitter();
        QCOMPARE(GetWidgetProperty(&page, QStringLiteral("edit")), QVariant(QStringLiteral("kept")));
    }

    void pageWithoutLayoutGetsASplitterToo()
    {
        CTabWidget page;
        QCOMPARE(page.Splitter()->count(), 1);
    }

    void theHelpPanelCannotSqueezeTheContentsAway()
    {
        CTabWidget page;
        addEdit(page);
        QVERIFY(!page.Splitter()->isCollapsible(0));
    }

    void backgroundOfTheFormIsPainted()
    {
        CTabWidget page;
        page.setObjectName(QStringLiteral("page"));
        page.setStyleSheet(QStringLiteral("QWidget#page{\n\tbackground-color: rgb(1, 2, 3);\n}"));
        page.resize(10, 10);
        QCOMPARE(page.grab().toImage().pixelColor(5, 5), QColor(1, 2, 3));
    }

private:
    static QLineEdit *addEdit(QWidget &page)
    {
        auto *edit = new QLineEdit;
        edit->setObjectName(QStringLiteral("edit"));
        (new QVBoxLayout(&page))->addWidget(edit);
        return edit;
    }
};

QTEST_MAIN(tst_CTabWidget)
#include "tst_CTabWidget.moc"
