// SPDX-License-Identifier: Apache-2.0
#include "app/StatusArea.h"

#include <QFileInfo>
#include <QLabel>
#include <QStyle>
#include <QTextDocument>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

const QString sheet = QStringLiteral(
    "StatusArea { background-color: #3F3954; border-top: 1px solid #5A5373; }"
    "QLabel { color: #E4E0F0; font-family: \"SF Pro Text\"; font-size: 12px; }"
    "QToolButton { color: #FFFFFF; font-family: \"SF Pro Text\"; font-size: 12px; text-align: left;"
    " border: 2px solid transparent; border-radius: 4px; padding: 4px 6px; background-color: #524A6E; }"
    "QToolButton:hover { background-color: #675B93; }"
    "QToolButton:focus { border-color: #FFFFFF; }"
    "QToolButton[unseen=\"true\"] { background-color: #C9B8FF; color: #131313; font-weight: bold; }"
    "QToolButton:disabled { color: #B5AFC7; }");

} // namespace

StatusArea::StatusArea(const QString &output, QWidget *parent)
    : QWidget(parent)
    , m_output(new QLabel(output, this))
    , m_file(new QLabel(this))
    , m_messages(new QToolButton(this))
{
    setObjectName(QStringLiteral("widget_status"));
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(sheet);
    m_output->setObjectName(QStringLiteral("label_output"));
    m_output->setWordWrap(true);
    m_file->setObjectName(QStringLiteral("label_file"));
    // The column is as wide as what stands above; the name takes what it gets.
    m_file->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_file->setTextFormat(Qt::PlainText);
    m_messages->setObjectName(QStringLiteral("tb_messages"));
    m_messages->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 10, 14, 14);
    layout->setSpacing(4);
    for (QWidget *part : {static_cast<QWidget *>(m_output), static_cast<QWidget *>(m_file),
                          static_cast<QWidget *>(m_messages)})
        layout->addWidget(part);
    connect(m_messages, &QToolButton::clicked, this, &StatusArea::messagesWanted);
    setFile(QString());
    setUnseen(0);
}

void StatusArea::setFile(const QString &path)
{
    m_name = QFileInfo(path).fileName();
    // A tool tip takes some names for formatted text.
    m_file->setToolTip(Qt::mightBeRichText(path) ? path.toHtmlEscaped() : path);
    m_file->setAccessibleName(path);
    m_file->setVisible(!path.isEmpty());
    showName();
}

void StatusArea::setUnseen(int count)
{
    m_messages->setText(count > 0 ? tr("Messages (%n new)", nullptr, count) : tr("Messages"));
    m_messages->setProperty("unseen", count > 0);
    // A style sheet looks at a property only when it is set anew.
    m_messages->style()->unpolish(m_messages);
    m_messages->style()->polish(m_messages);
}

void StatusArea::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    showName();
}

void StatusArea::showName()
{
    const QMargins around = layout()->contentsMargins();
    const int room = width() - around.left() - around.right();
    m_file->ensurePolished();
    m_file->setText(m_file->fontMetrics().elidedText(m_name, Qt::ElideMiddle, room));
}
