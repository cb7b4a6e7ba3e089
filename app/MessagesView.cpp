// SPDX-License-Identifier: Apache-2.0
#include "app/MessagesView.h"

#include "app/Messages.h"
#include "app/ShowInFolder.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLocale>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace {

constexpr QSize initialSize(560, 360);

QString paragraphOf(const Message &message)
{
    const QString time = QLocale().toString(message.time.time(), QStringLiteral("HH:mm:ss"));
    QString text = message.text.toHtmlEscaped();
    text.replace(QLatin1Char('\n'), QLatin1String("<br/>"));
    return QStringLiteral("<p style=\"margin:0px 0px 10px 0px;\"><b>%1</b><br/>%2</p>").arg(time, text);
}

QString linkTo(const QString &file)
{
    const QString address = QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded).toHtmlEscaped();
    return QStringLiteral("<p style=\"margin:-6px 0px 10px 0px;\"><a href=\"%1\">%2</a></p>")
        .arg(address, showInFolderText());
}

} // namespace

MessagesView::MessagesView(QWidget *parent)
    : QDialog(parent)
    , m_text(new QTextBrowser(this))
{
    setWindowTitle(tr("Messages"));
    resize(initialSize);
    m_text->setOpenLinks(false);
    m_text->setAccessibleName(windowTitle());
    m_text->setPlaceholderText(tr("Nothing has been said yet."));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *copy = buttons->addButton(tr("Copy All"), QDialogButtonBox::ActionRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &MessagesView::reject);
    connect(copy, &QPushButton::clicked, this, &MessagesView::copyAll);
    connect(m_text, &QTextBrowser::anchorClicked, this,
            [this](const QUrl &address) { emit fileWanted(address.toLocalFile()); });

    const Messages &messages = Messages::ofThisRun();
    for (const Message &message : messages.all())
        append(message);
    connect(&messages, &Messages::added, this, &MessagesView::append);
}

void MessagesView::append(const Message &message)
{
    m_text->append(paragraphOf(message));
    if (!message.file.isEmpty())
        m_text->append(linkTo(message.file));
}

void MessagesView::copyAll()
{
    QApplication::clipboard()->setText(m_text->toPlainText());
}
