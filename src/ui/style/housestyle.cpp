// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/style/housestyle.h"

#include "ui/paint/paint.h"
#include "ui/style/housepalette.h"
#include "ui/style/popuprows.h"
#include "ui/system/compositing.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QApplication>
#include <QComboBox>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>
#include <QToolTip>

namespace quillfen {
namespace {

constexpr int barRoom = 10; // what a scroll bar takes, and its width under the pointer
constexpr int thinBar = 6;
constexpr int shortestBar = 28;
constexpr int popupRadius = 10;
constexpr int tipRadius = 6;

/// The frame that Qt puts around the list of a combo box; its class is not public.
bool isComboPopup(const QWidget *widget)
{
    return widget != nullptr && widget->inherits("QComboBoxPrivateContainer");
}

/// The shape of a window with round corners where it cannot be partly transparent.
QRegion roundShape(const QRect &rect, int radius)
{
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return QRegion(path.toFillPolygon().toPolygon());
}

bool isTip(const QWidget *widget)
{
    return widget != nullptr && widget->inherits("QTipLabel");
}

const QComboBox *comboOf(const QWidget *view)
{
    for (; view != nullptr; view = view->parentWidget()) {
        if (const auto *combo = qobject_cast<const QComboBox *>(view)) {
            return combo;
        }
    }
    return nullptr;
}

bool isInComboPopup(const QWidget *widget)
{
    return widget != nullptr && widget->window() != nullptr && isComboPopup(widget->window());
}

void paintPopup(QPainter &painter, const QRect &rect)
{
    paintSurface(painter, rect, popupRadius, Theme::bg, Theme::line);
}

/// How far the grip of a scroll bar is from the edge at which the bar stands. The bar itself reaches to that edge, so
/// that a pointer thrown against it still finds the bar where nothing lies over it.
int insetOf(const QWidget *bar)
{
    return bar != nullptr ? bar->property("inset").toInt() : 0;
}

void paintScrollBar(QPainter &painter, const QStyleOptionSlider &bar, const QRect &slider, int inset)
{
    if (bar.maximum <= bar.minimum) {
        return;
    }
    const bool wide = bar.state.testFlag(QStyle::State_MouseOver) || bar.state.testFlag(QStyle::State_Sunken);
    const int width = wide ? barRoom : thinBar;
    QRectF grip = slider;
    if (bar.orientation == Qt::Vertical) {
        const int fromEdge = inset + (wide ? 0 : 2);
        // The bar stands where lines end: at the left edge where they are read from right to left.
        const int left =
            bar.direction == Qt::RightToLeft ? slider.left() + fromEdge : slider.right() + 1 - fromEdge - width;
        grip = QRectF(left, slider.top() + 2, width, slider.height() - 4);
    } else {
        grip = QRectF(slider.left() + 2, slider.bottom() + 1 - width - (wide ? 0 : 2), slider.width() - 4, width);
    }
    paintSurface(painter, grip, width / 2.0, Theme::faded(Theme::muted, 0.55F));
}

} // namespace

HouseStyle::HouseStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void HouseStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    const bool isMenu = qobject_cast<QMenu *>(widget) != nullptr;
    if (!isMenu && !isComboPopup(widget) && !isTip(widget)) {
        return;
    }
    // Round corners let the window below show through; where nothing can, a mask cuts them.
    widget->setAttribute(Qt::WA_TranslucentBackground, isComposited());
    if (isMenu || isComboPopup(widget)) {
        widget->setWindowFlag(Qt::FramelessWindowHint);
    }
    if (isComboPopup(widget)) {
        widget->setContentsMargins(4, 4, 4, 4);
        widget->installEventFilter(this);
    }
    if (isTip(widget)) {
        widget->setContentsMargins(5, 2, 5, 3);
    }
}

bool HouseStyle::eventFilter(QObject *watched, QEvent *event)
{
    // Tooltips and menus ask the style for their mask. The list of a combo box drops its own whenever it is resized.
    auto *popup = qobject_cast<QWidget *>(watched);
    if (event->type() == QEvent::Show && isComboPopup(popup) && !popup->testAttribute(Qt::WA_TranslucentBackground)) {
        popup->setMask(roundShape(popup->rect(), popupRadius));
    }
    return QProxyStyle::eventFilter(watched, event);
}

int HouseStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return barRoom + insetOf(widget);
    case PM_ScrollBarSliderMin:
        return shortestBar;
    case PM_ScrollView_ScrollBarSpacing:
        return 0;
    case PM_ScrollView_ScrollBarOverlap:
        return widget != nullptr && widget->property("overlay").toBool() ? barRoom + insetOf(widget) : 0;
    case PM_ToolTipLabelFrameWidth:
        return 2;
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuHMargin:
        return 0;
    case PM_MenuVMargin:
        return 4;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int HouseStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                          QStyleHintReturn *returned) const
{
    switch (hint) {
    case SH_ScrollBar_Transient:
    case SH_ScrollBar_ContextMenu:
    case SH_ComboBox_Popup:
    case SH_EtchDisabledText:
    case SH_UnderlineShortcut:
    case SH_Widget_Animation_Duration:
        return 0;
    case SH_ToolTip_Mask:
    case SH_Menu_Mask: {
        auto *mask = qstyleoption_cast<QStyleHintReturnMask *>(returned);
        if (mask == nullptr || option == nullptr || widget == nullptr ||
            widget->testAttribute(Qt::WA_TranslucentBackground)) {
            return 0;
        }
        mask->region = roundShape(option->rect, hint == SH_ToolTip_Mask ? tipRadius : popupRadius);
        return 1;
    }
    case SH_ToolTipLabel_Opacity:
        return 255;
    case SH_ComboBox_PopupFrameStyle:
        return static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Plain);
    default:
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
}

QSize HouseStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                   const QWidget *widget) const
{
    if (type == CT_MenuItem) {
        const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
        if (item != nullptr && item->menuItemType == QStyleOptionMenuItem::Separator) {
            return {size.width(), 9};
        }
        // Qt measures the label in the menu's own font; the gap to the keys and the padding are ours.
        const int keys = item != nullptr && item->text.contains(u'\t') ? 24 : 0;
        return {size.width() + keys + 2 * popupRowPadding + (item != nullptr ? item->reservedShortcutWidth : 0),
                scaled(popupRowHeight)};
    }
    if (type == CT_ItemViewItem && isInComboPopup(widget)) {
        return {QProxyStyle::sizeFromContents(type, option, size, widget).width() + popupRowPadding,
                scaled(popupRowHeight)};
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

QRect HouseStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                                 const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || bar == nullptr) {
        return QProxyStyle::subControlRect(control, option, part, widget);
    }
    // No arrows: the groove is the whole bar, the grip slides in it, pages lie before and after.
    const bool vertical = bar->orientation == Qt::Vertical;
    const int length = vertical ? bar->rect.height() : bar->rect.width();
    const qint64 range = qint64(bar->maximum) - bar->minimum;
    const qint64 wanted = qint64(length) * bar->pageStep / std::max<qint64>(1, range + bar->pageStep);
    const int grip =
        range <= 0 ? length : static_cast<int>(std::clamp<qint64>(wanted, std::min(shortestBar, length), length));
    const int start =
        sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - grip, bar->upsideDown);
    const auto piece = [&](int from, int to) {
        return vertical ? QRect(bar->rect.left(), bar->rect.top() + from, bar->rect.width(), to - from)
                        : QRect(bar->rect.left() + from, bar->rect.top(), to - from, bar->rect.height());
    };
    switch (part) {
    case SC_ScrollBarGroove:
        return bar->rect;
    case SC_ScrollBarSlider:
        return piece(start, start + grip);
    case SC_ScrollBarSubPage:
        return piece(0, start);
    case SC_ScrollBarAddPage:
        return piece(start + grip, length);
    default:
        return {};
    }
}

void HouseStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    switch (element) {
    case PE_FrameFocusRect:
    case PE_PanelScrollAreaCorner:
        return;
    case PE_PanelTipLabel:
        paintSurface(*painter, option->rect, tipRadius, Theme::dPanel, Theme::dLine);
        return;
    case PE_PanelMenu:
        paintPopup(*painter, option->rect);
        return;
    case PE_FrameMenu:
        return;
    case PE_Frame:
        if (isComboPopup(widget)) {
            paintPopup(*painter, widget->rect());
            return;
        }
        break;
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void HouseStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                             const QWidget *widget) const
{
    switch (element) {
    case CE_MenuItem:
        if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option)) {
            paintMenuItem(*painter, *item);
            return;
        }
        break;
    case CE_MenuEmptyArea:
        return;
    case CE_ShapedFrame:
        if (isComboPopup(widget)) {
            paintPopup(*painter, widget->rect());
            return;
        }
        break;
    case CE_ItemViewItem:
        if (const auto *item = qstyleoption_cast<const QStyleOptionViewItem *>(option);
            item != nullptr && isInComboPopup(widget)) {
            const QComboBox *combo = comboOf(widget);
            paintPopupItem(*painter, *item, combo != nullptr && combo->currentIndex() == item->index.row());
            return;
        }
        break;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void HouseStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                    const QWidget *widget) const
{
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control == CC_ScrollBar && bar != nullptr) {
        paintScrollBar(*painter, *bar, subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget),
                       insetOf(widget));
    } else {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

void applyHouseLook(QApplication &application)
{
    application.setStyle(new HouseStyle);
    const QPalette palette = housePalette();
    application.setPalette(palette);
    application.setFont(font(Type::Body));
    QToolTip::setPalette(palette);
    QToolTip::setFont(font(Type::Caption));
    application.setFont(font(Type::Body), "QMenu");
}

} // namespace quillfen
