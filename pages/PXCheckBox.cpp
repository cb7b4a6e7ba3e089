// SPDX-License-Identifier: Apache-2.0
#include "pages/PXCheckBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>

namespace {

constexpr QSize initialSize(123, 28);
constexpr QSize tickSize(20, 20); // of the two pictures

QLabel *makeLabel(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QStringLiteral("label"));
    label->setStyleSheet(
        QStringLiteral("display: flex;\npadding: 4px 5px;\nalign-items: center;\ngap: 10px;\n"
                       "flex: 1 0 0;"));
    return label;
}

QToolButton *makeToolButton(QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setObjectName(QStringLiteral("toolButton"));
    button->setCheckable(true);
    button->setFixedSize(tickSize);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setStyleSheet(
        QStringLiteral("QToolButton{\nborder:0px;\nbackground-image: url(:/img/check_gray.png);\n}\n"
                       "QToolButton:checked{\n\tbackground-image: url(:/img/check_green.png);\n}"));
    return button;
}

void layOut(QWidget *box, QWidget *label, QWidget *button)
{
    auto *layout = new QHBoxLayout(box);
    layout->setObjectName(QStringLiteral("horizontalLayout"));
    layout->setSpacing(0);
    layout->setContentsMargins(5, 2, 10, 2);
    layout->addWidget(label, 1);
    layout->addWidget(button);
}

} // namespace

PXCheckBox::PXCheckBox(QWidget *parent)
    : QWidget(parent)
    , m_label(makeLabel(this))
    , m_toolButton(makeToolButton(this))
{
    if (objectName().isEmpty())
        setObjectName(QStringLiteral("PXCheckBox"));
    layOut(this, m_label, m_toolButton);
    resize(initialSize);
    setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(m_toolButton);
    m_toolButton->installEventFilter(this);
    connect(m_toolButton, &QToolButton::toggled, this, &PXCheckBox::toggled);
}

PXCheckBox::PXCheckBox(const QString &text, QWidget *parent)
    : PXCheckBox(parent)
{
    setText(text);
}

void PXCheckBox::setText(const QString &text)
{
    m_label->setText(text);
    setAccessibleName(text);
    m_toolButton->setAccessibleName(text);
}

QString PXCheckBox::text() const
{
    return m_label->text();
}

void PXCheckBox::setCheckState(Qt::CheckState state)
{
    m_toolButton->setChecked(state == Qt::Checked);
}

Qt::CheckState PXCheckBox::checkState() const
{
    return m_toolButton->isChecked() ? Qt::Checked : Qt::Unchecked;
}

bool PXCheckBox::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return QWidget::eventFilter(watched, event);
}

void PXCheckBox::mousePressEvent(QMouseEvent *event)
{
    // Taken, so that the release comes here as well.
    event->setAccepted(event->button() == Qt::LeftButton);
}

void PXCheckBox::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        m_toolButton->click();
}

void PXCheckBox::paintEvent(QPaintEvent *)
{
    if (!m_toolButton->hasFocus())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
}
