// SPDX-License-Identifier: Apache-2.0
#include "pages/EnteredText.h"

#include <QtTest>
#include <QtWidgets>

namespace {

void typeInto(QWidget *field, const QString &text)
{
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
        QApplication::sendEvent(field, &press);
    }
}

void composeInto(QWidget *field, const QString &text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(field, &event);
}

void pasteInto(QLineEdit &field, const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    field.paste();
}

void pasteInto(QTextEdit &field, const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    field.paste();
}

const QString controls = QStringLiteral("a\u0001b\u001b\u007fc");
const QString noncharacters = QStringLiteral("d") + QChar(0xfffe) + QChar(0xffff) + QStringLiteral("e");
const QString halves = QStringLiteral("f") + QChar(0xd83d) + QStringLiteral("g") + QChar(0xde00);

void addTexts()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("taken");
    QTest::newRow("fine") << QStringLiteral("version:1|.ä:3|日\U0001F600")
                          << QStringLiteral("version:1|.ä:3|日\U0001F600");
    QTest::newRow("a byte order mark") << QStringLiteral("\ufeff.exe:3") << QStringLiteral("\ufeff.exe:3");
    QTest::newRow("controls") << controls << QStringLiteral("abc");
    QTest::newRow("noncharacters") << noncharacters << QStringLiteral("de");
    QTest::newRow("halves of pairs") << halves << QStringLiteral("fg");
    QTest::newRow("nothing else") << QStringLiteral("\u0002") << QString();
}

} // namespace

class tst_EnteredText : public QObject
{
    Q_OBJECT

private slots:
    void aLineTakesWhatIsFine_data() { addTexts(); }
    void aLineTakesWhatIsFine()
    {
        QFETCH(QString, text);
        for (const auto &enter : {composeLine, pasteLine}) {
            QLineEdit field;
            takeXmlTextOnly(&field);
            field.setText(QStringLiteral("<>"));
            field.setCursorPosition(1);
            enter(field, text);
            QFETCH(QString, taken);
            QCOMPARE(field.text(), QLatin1Char('<') + taken + QLatin1Char('>'));
            QCOMPARE(field.cursorPosition(), taken.size() + 1);
        }
    }

    void aTextTakesWhatIsFine_data() { addTexts(); }
    void aTextTakesWhatIsFine()
    {
        QFETCH(QString, text);
        for (const auto &enter : {composeText, pasteText, dropText}) {
            QTextEdit field;
            takeXmlTextOnly(&field);
            field.setPlainText(QStringLiteral("<>"));
            field.moveCursor(QTextCursor::Right);
            enter(field, text);
            QFETCH(QString, taken);
            QCOMPARE(field.toPlainText(), QLatin1Char('<') + taken + QLatin1Char('>'));
            QCOMPARE(field.textCursor().position(), taken.size() + 1);
        }
    }

    void whatIsTypedIsFine()
    {
        QLineEdit line;
        takeXmlTextOnly(&line);
        QTextEdit text;
        takeXmlTextOnly(&text);
        for (QWidget *field : {static_cast<QWidget *>(&line), static_cast<QWidget *>(&text)})
            typeInto(field, controls + noncharacters);
        QCOMPARE(line.text(), QStringLiteral("abcde"));
        QCOMPARE(text.toPlainText(), QStringLiteral("abcde"));
    }

    void severalLinesReplaceASelection()
    {
        QTextEdit field;
        takeXmlTextOnly(&field);
        field.setPlainText(QStringLiteral("old text"));
        field.selectAll();
        pasteInto(field, QStringLiteral("one\u0001\ntwo\u0002"));
        QCOMPARE(field.toPlainText(), QStringLiteral("one\ntwo"));
        field.undo();
        QCOMPARE(field.toPlainText(), QStringLiteral("old text"));
    }

    void whatIsSetWithBlockedSignalsStaysWhileOtherTextIsEntered()
    {
        QTextEdit field;
        takeXmlTextOnly(&field);
        {
            const QSignalBlocker blocker(&field);
            field.setPlainText(controls);
        }
        QCOMPARE(field.toPlainText(), controls);
        field.moveCursor(QTextCursor::End);
        pasteInto(field, QStringLiteral("x\u0003y"));
        QCOMPARE(field.toPlainText(), controls + QStringLiteral("xy"));
        field.moveCursor(QTextCursor::Start);
        typeInto(&field, QStringLiteral("z"));
        QCOMPARE(field.toPlainText(), QStringLiteral("z") + controls + QStringLiteral("xy"));
    }

private:
    static void composeLine(QLineEdit &field, const QString &text) { composeInto(&field, text); }
    static void pasteLine(QLineEdit &field, const QString &text) { pasteInto(field, text); }
    static void composeText(QTextEdit &field, const QString &text) { composeInto(&field, text); }
    static void pasteText(QTextEdit &field, const QString &text) { pasteInto(field, text); }
    static void dropText(QTextEdit &field, const QString &text)
    {
        QMimeData data;
        data.setText(text);
        struct Droppable : QTextEdit
        {
            using QTextEdit::insertFromMimeData;
        };
        (field.*(&Droppable::insertFromMimeData))(&data);
    }
};

QTEST_MAIN(tst_EnteredText)
#include "tst_EnteredText.moc"
