// SPDX-License-Identifier: Apache-2.0
#include "app/ControlStyle.h"

#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>

namespace {

constexpr int controlHeight = 28;
constexpr int radius = 4;
constexpr int textPadding = 8;
constexpr int arrowRoom = 24;
constexpr int scrollBarWidth = 12;
constexpr int thumbWidth = 6;
constexpr int leastThumbLength = 32;
const QColor outline(0x8A, 0x8F, 0x9C);
const QColor faintOutline(0xC9, 0xCC, 0xD4);
const QColor hovered(0xF0, 0xED, 0xF8);
const QColor pressed(0xDC, 0xD3, 0xF5);
// Fusion draws outlines darker than the window's colour, yet too faint to find an empty box on white.
const QColor outlineSource(0xB0, 0xB0, 0xB0);

bool has(const QStyleOption &option, QStyle::StateFlag flag)
{
    return option.state.testFlag(flag);
}

void drawRounded(QPainter &painter, const QRect &rect, const QPen &pen, const QBrush &brush)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(brush);
    const qreal inset = pen.style() == Qt::NoPen ? 0 : pen.widthF() / 2;
    painter.drawRoundedRect(QRectF(rect).adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

/// A frame around something to type or choose in, which is also how its focus is seen.
QPen framePen(const QStyleOption &option)
{
    if (!has(option, QStyle::State_Enabled))
        return {faintOutline, 1};
    return has(option, QStyle::State_HasFocus) ? QPen(option.palette.color(QPalette::Highlight), 2)
                                               : QPen(outline, 1);
}

void drawFocusRing(const QStyleOption &option, QPainter &painter, const QRect &rect, const QColor &color)
{
    // Whoever uses the mouse sees where it is.
    if (has(option, QStyle::State_KeyboardFocusChange))
        drawRounded(painter, rect, QPen(color, 2), Qt::NoBrush);
}

bool isDefault(const QStyleOption &option)
{
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(&option);
    return button && button->features.testFlag(QStyleOptionButton::DefaultButton) &&
           has(option, QStyle::State_Enabled);
}

QColor faceOf(const QStyleOption &option)
{
    const bool isDown = has(option, QStyle::State_Sunken) || has(option, QStyle::State_On);
    const bool isHovered = has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled);
    if (isDefault(option)) {
        const QColor accent = option.palette.color(QPalette::Highlight);
        return isDown || isHovered ? accent.darker(115) : accent;
    }
    if (isDown)
        return pressed;
    return isHovered ? hovered : QColor(Qt::white);
}

void drawFace(const QStyleOption &option, QPainter &painter)
{
    const QColor edge = has(option, QStyle::State_Enabled) ? outline : faintOutline;
    drawRounded(painter, option.rect, QPen(isDefault(option) ? faceOf(option) : edge, 1), faceOf(option));
}

/// An angle that points down.
void drawArrow(const QStyleOption &option, QPainter &painter, const QPointF &middle)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(option.palette.color(QPalette::Text), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF points[] = {middle + QPointF(-4, -2), middle + QPointF(0, 2), middle + QPointF(4, -2)};
    painter.drawPolyline(points, 3);
    painter.restore();
}

int lengthOf(const QStyleOptionSlider &bar)
{
    return bar.orientation == Qt::Horizontal ? bar.rect.width() : bar.rect.height();
}

/// A stretch of a scroll bar, from one end of it.
QRect stretchOf(const QStyleOptionSlider &bar, int start, int length)
{
    const QRect &all = bar.rect;
    return bar.orientation == Qt::Horizontal ? QRect(all.left() + start, all.top(), length, all.height())
                                             : QRect(all.left(), all.top() + start, all.width(), length);
}

struct Thumb
{
    explicit Thumb(const QStyleOptionSlider &bar)
    {
        const int all = lengthOf(bar);
        const qint64 pages = qint64(bar.maximum) - bar.minimum + bar.pageStep;
        const int share = pages > 0 ? static_cast<int>(qint64(all) * bar.pageStep / pages) : all;
        length = std::min(all, std::max(share, leastThumbLength));
        start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition, all - length,
                                                bar.upsideDown);
    }

    int start = 0;
    int length = 0;
};

QRect scrollBarPart(const QStyleOptionSlider &bar, QStyle::SubControl part)
{
    const Thumb thumb(bar);
    const int end = thumb.start + thumb.length;
    switch (part) {
    case QStyle::SC_ScrollBarGroove:
        return bar.rect;
    case QStyle::SC_ScrollBarSlider:
        return stretchOf(bar, thumb.start, thumb.length);
    case QStyle::SC_ScrollBarSubPage:
        return stretchOf(bar, 0, thumb.start);
    case QStyle::SC_ScrollBarAddPage:
        return stretchOf(bar, end, lengthOf(bar) - end);
    default:
        return {};
    }
}

void drawScrollBar(const QStyleOptionSlider &bar, QPainter &painter)
{
    const bool isHeld = has(bar, QStyle::State_Sunken) || has(bar, QStyle::State_MouseOver);
    QRect thumb = QStyle::visualRect(bar.direction, bar.rect, scrollBarPart(bar, QStyle::SC_ScrollBarSlider));
    const int margin = (scrollBarWidth - thumbWidth) / 2;
    thumb.adjust(margin, margin, -margin, -margin);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isHeld ? outline.darker(130) : outline);
    painter.drawRoundedRect(thumb, thumbWidth / 2.0, thumbWidth / 2.0);
    painter.restore();
}

class ControlStyle : public QProxyStyle
{
public:
    ControlStyle()
        : QProxyStyle(QStyleFactory::create(QStringLiteral("fusion")))
    {
    }

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        // As on macOS.
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, data);
    }

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        if (metric == PM_ScrollBarExtent)
            return scrollBarWidth;
        // Room for the frame of what has the focus.
        return metric == PM_DefaultFrameWidth ? 2 : QProxyStyle::pixelMetric(metric, option, widget);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                           const QWidget *widget) const override
    {
        if (type == CT_ComboBox)
            return {contents.width() + 2 * textPadding + arrowRoom,
                    std::max(contents.height(), controlHeight)};
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (type == CT_PushButton)
            return {size.width() + 2 * textPadding, std::max(size.height(), controlHeight)};
        return type == CT_LineEdit ? size.expandedTo({0, controlHeight}) : size;
    }

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                         const QWidget *widget) const override
    {
        if (control == CC_ScrollBar) {
            const auto &bar = static_cast<const QStyleOptionSlider &>(*option);
            return visualRect(bar.direction, bar.rect, scrollBarPart(bar, part));
        }
        if (control == CC_ComboBox && part == SC_ComboBoxEditField)
            return visualRect(option->direction, option->rect,
                              option->rect.adjusted(textPadding, 2, -arrowRoom, -2));
        return QProxyStyle::subControlRect(control, option, part, widget);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override
    {
        if (control == CC_ScrollBar)
            return drawScrollBar(static_cast<const QStyleOptionSlider &>(*option), *painter);
        if (control == CC_ComboBox)
            return drawComboBox(*option, *painter);
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }

    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override
    {
        switch (element) {
        case CE_PushButton:
            return drawPushButton(*option, *painter, widget);
        case CE_PushButtonLabel:
            return drawPushButtonLabel(*option, *painter, widget);
        case CE_ComboBoxLabel:
            return drawChosen(*option, *painter, widget);
        default:
            return QProxyStyle::drawControl(element, option, painter, widget);
        }
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        switch (element) {
        case PE_FrameFocusRect:
            return drawFocusRing(*option, *painter, option->rect, option->palette.color(QPalette::Highlight));
        case PE_PanelButtonCommand:
            return drawFace(*option, *painter);
        case PE_FrameDefaultButton:
            return;
        case PE_PanelLineEdit:
            return drawLineEdit(*option, *painter);
        case PE_Frame:
        case PE_FrameLineEdit:
            return drawRounded(*painter, option->rect, framePen(*option), Qt::NoBrush);
        case PE_IndicatorCheckBox:
        case PE_IndicatorRadioButton:
            return drawIndicator(element, *option, *painter, widget);
        default:
            return QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
    }

private:
    void drawPushButton(const QStyleOption &option, QPainter &painter, const QWidget *widget) const
    {
        proxy()->drawControl(CE_PushButtonBevel, &option, &painter, widget);
        proxy()->drawControl(CE_PushButtonLabel, &option, &painter, widget);
        if (!has(option, State_HasFocus))
            return;
        if (isDefault(option))
            drawFocusRing(option, painter, option.rect.adjusted(2, 2, -2, -2), Qt::white);
        else
            drawFocusRing(option, painter, option.rect, option.palette.color(QPalette::Highlight));
    }

    void drawPushButtonLabel(const QStyleOption &option, QPainter &painter, const QWidget *widget) const
    {
        QStyleOptionButton label = static_cast<const QStyleOptionButton &>(option);
        if (isDefault(option))
            label.palette.setColor(QPalette::ButtonText, option.palette.color(QPalette::HighlightedText));
        QProxyStyle::drawControl(CE_PushButtonLabel, &label, &painter, widget);
    }

    static void drawComboBox(const QStyleOptionComplex &option, QPainter &painter)
    {
        const bool isEnabled = has(option, State_Enabled);
        const bool isHovered = isEnabled && has(option, State_MouseOver);
        drawRounded(painter, option.rect, framePen(option), isHovered ? hovered : QColor(Qt::white));
        const QRect room(option.rect.right() - arrowRoom, option.rect.top(), arrowRoom, option.rect.height());
        drawArrow(option, painter, QRectF(visualRect(option.direction, option.rect, room)).center());
    }

    /// What does not fit ends in an ellipsis.
    void drawChosen(const QStyleOption &option, QPainter &painter, const QWidget *widget) const
    {
        QStyleOptionComboBox chosen = static_cast<const QStyleOptionComboBox &>(option);
        const QRect field = proxy()->subControlRect(CC_ComboBox, &chosen, SC_ComboBoxEditField, widget);
        chosen.currentText =
            chosen.fontMetrics.elidedText(chosen.currentText, Qt::ElideRight, field.width() - 2);
        QProxyStyle::drawControl(CE_ComboBoxLabel, &chosen, &painter, widget);
    }

    static void drawLineEdit(const QStyleOption &option, QPainter &painter)
    {
        const auto &panel = static_cast<const QStyleOptionFrame &>(option);
        const QPen pen = panel.lineWidth > 0 ? framePen(option) : QPen(Qt::NoPen);
        drawRounded(painter, option.rect, pen, option.palette.color(QPalette::Base));
    }

    void drawIndicator(PrimitiveElement element, const QStyleOption &option, QPainter &painter,
                       const QWidget *widget) const
    {
        auto &changeable = const_cast<QStyleOption &>(option);
        const QPalette original = option.palette;
        changeable.palette.setColor(QPalette::Window, outlineSource);
        QProxyStyle::drawPrimitive(element, &option, &painter, widget);
        changeable.palette = original;
    }
};

} // namespace

QStyle *makeControlStyle()
{
    return new ControlStyle;
}
