// SPDX-License-Identifier: Apache-2.0
#include "tests/support/DialogDriver.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>

namespace {

constexpr int pollInterval = 20; // milliseconds
constexpr int patience = 20'000; // milliseconds; generous, for a slow machine under a sanitizer

/// Waits for one dialog, has it answered and sees it off.
class Watch : public QTimer
{
public:
    Watch(QObject *context, std::function<void(QDialog *)> answer)
        : QTimer(context)
        , m_answer(std::move(answer))
    {
        callOnTimeout(this, &Watch::look);
        m_waited.start();
        start(pollInterval);
    }

private:
    void look()
    {
        if (m_answered)
            lookForTheEnd();
        else
            lookForTheDialog();
    }

    void lookForTheDialog()
    {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (dialog && dialog->isVisible())
            answer(dialog);
        else if (m_waited.hasExpired(patience))
            give("no modal dialog appeared");
    }

    void answer(QDialog *dialog)
    {
        m_dialog = dialog;
        m_answered = true;
        m_waited.start();
        m_answer(dialog);
    }

    void lookForTheEnd()
    {
        if (!m_dialog || !m_dialog->isVisible()) {
            deleteLater();
        } else if (m_waited.hasExpired(patience)) {
            m_dialog->reject();
            give("the modal dialog stayed open");
        }
    }

    void give(const char *failure)
    {
        QTest::qFail(failure, __FILE__, __LINE__);
        deleteLater();
    }

    const std::function<void(QDialog *)> m_answer;
    QPointer<QDialog> m_dialog;
    QElapsedTimer m_waited;
    bool m_answered = false;
};

void typePath(QDialog *dialog, const QString &path)
{
    auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    if (!edit) {
        QTest::qFail("the modal dialog is not a file dialog", __FILE__, __LINE__);
        dialog->reject();
        return;
    }
    edit->setText(path);
    dialog->accept();
}

} // namespace

void DialogDriver::onNextModal(QObject *context, const std::function<void(QDialog *)> &answer)
{
    // The system's own dialogs are not widgets and cannot be driven.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    new Watch(context, answer);
}

void DialogDriver::chooseFile(QObject *context, const QString &path)
{
    onNextModal(context, [path](QDialog *dialog) { typePath(dialog, path); });
}

void DialogDriver::cancel(QObject *context)
{
    onNextModal(context, [](QDialog *dialog) { dialog->reject(); });
}
