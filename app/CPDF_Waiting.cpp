// SPDX-License-Identifier: Apache-2.0
#include "app/CPDF_Waiting.h"

#include "app/ReducedMotion.h"

#include <QEvent>
#include <QLabel>
#include <QMovie>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int sideLength = 64;
const QColor veilColor(255, 255, 255, 150);

/// Fits the frames into the label, so that the double-sized image stays sharp on a dense screen, where a
/// plain label would show it at twice its size.
class MovieLabel : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(rect(), movie()->currentPixmap());
    }
};

QString imageFor(qreal devicePixelRatio)
{
    return qFuzzyCompare(devicePixelRatio, 1.0) ? QStringLiteral(":/img/waiting.gif")
                                                : QStringLiteral(":/img/waiting@2x.gif");
}

} // namespace

CPDF_Waiting::CPDF_Waiting(QWidget *parent)
    : QWidget(parent)
    , m_movie(new QMovie(imageFor(devicePixelRatioF())))
{
    auto *label = new MovieLabel(this);
    label->setMovie(m_movie);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    setFixedSize(sideLength, sideLength);
    hide();
}

CPDF_Waiting::~CPDF_Waiting()
{
    delete m_movie;
}

void CPDF_Waiting::start()
{
    if (prefersReducedMotion())
        m_movie->jumpToFrame(0);
    else
        m_movie->start();
    show();
    raise();
    setpos();
}

void CPDF_Waiting::setpos()
{
    const QWidget *area = parentWidget();
    move((area->width() - 1) / 2 - width() / 2, (area->height() - 1) / 2 - height() / 2);
}

void CPDF_Waiting::stop()
{
    m_movie->stop();
    hide();
}

PageVeil::PageVeil(const QLayout &covered, QWidget *parent)
    : QWidget(parent)
    , m_covered(covered)
{
    hide();
}

void PageVeil::follow()
{
    setGeometry(m_covered.geometry());
}

void PageVeil::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::EnabledChange)
        return;
    follow();
    setVisible(!isEnabled());
    raise();
}

void PageVeil::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), veilColor);
}
