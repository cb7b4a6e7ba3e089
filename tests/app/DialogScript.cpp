// SPDX-License-Identifier: Apache-2.0
#include "tests/app/DialogScript.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTest>

namespace {

constexpr int pollInterval = 20; // milliseconds

QAbstractButton *buttonOf(const QDialog *dialog, const QString &label)
{
    const QList<QAbstractButton *> buttons = dialog->findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons) {
        if (button->text() == label)
            return button;
    }
    return nullptr;
}

} // namespace

DialogScript::DialogScript(const QList<Answer> &answers)
    : m_answers(answers)
{
    // The system's own dialogs are not widgets and cannot be driven.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    m_timer.callOnTimeout(&m_timer, [this] { look(); });
    m_timer.start(pollInterval);
}

DialogScript::~DialogScript()
{
    if (!m_answers.isEmpty())
        QTest::qFail("a modal dialog did not appear", __FILE__, __LINE__);
}

void DialogScript::look()
{
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible() || dialog == m_answered)
        return;
    m_answered = dialog;
    if (!m_answers.isEmpty())
        return m_answers.takeFirst()(dialog);
    QTest::qFail("a modal dialog appeared that nobody expected", __FILE__, __LINE__);
    dialog->reject();
}

DialogScript::Answer Answers::choose(const QString &path)
{
    return [path](QDialog *dialog) {
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(path);
        dialog->accept();
    };
}

DialogScript::Answer Answers::press(const QString &label)
{
    return [label](QDialog *dialog) {
        if (QAbstractButton *button = buttonOf(dialog, label))
            return button->click();
        QTest::qFail("the dialog has no such button", __FILE__, __LINE__);
        dialog->reject();
    };
}

DialogScript::Answer Answers::closeWindow()
{
    return [](QDialog *dialog) { dialog->close(); };
}

DialogScript::Answer Answers::escape()
{
    return [](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); };
}

DialogScript::Answer Answers::read(ShownMessage *shown)
{
    return [shown](QDialog *dialog) { WindowDriver::readAndAccept(dialog, shown); };
}
