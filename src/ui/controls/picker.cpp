// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/picker.h"

#include "ui/paint/icons.h"
#include "ui/paint/paint.h"
#include "ui/style/hoverfade.h"
#include "ui/text/agenttext.h"
#include "ui/text/paragraph.h"
#include "ui/text/tooltip.h"
#include "ui/theme.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int leftPadding = 12;
constexpr int rightPadding = 8;
constexpr int chevron = 16;
constexpr int gap = 8;
constexpr int widest = 320;
constexpr int narrowest = 72;

constexpr int popupPadding = 16;

Paragraph entry(const QString &text, Type type = Type::BodyMedium)
{
    return {.text = lineOfAgentText(text), .type = type};
}

/// The entries of the popup as anybody may read them; HouseStyle paints them.
class EntryDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QString displayText(const QVariant &value, const QLocale &) const override
    {
        return lineOfAgentText(value.toString());
    }

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override
    {
        const QString text = index.data(Qt::DisplayRole).toString();
        const bool elided = isElided(entry(text), option.rect.width() - 2 * popupPadding);
        showPlainToolTip(event->globalPos(), elided ? text : QString(), view);
        return true;
    }
};

} // namespace

Picker::Picker(const QString &accessibleName, QWidget *parent) : QComboBox(parent), m_hover(new HoverFade(this))
{
    setAccessibleName(accessibleName);
    // Some platforms name a combo box after its current text; there the description tells what is chosen.
    setAccessibleDescription(accessibleName);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setFont(quillfen::font(Type::BodyMedium));
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    setControlHeight(m_height);
    setItemDelegate(new EntryDelegate(this));
    setMaxVisibleItems(12);
    view()->setProperty("ownFocus", true); // the highlighted row tells where the keys go
    view()->setTextElideMode(Qt::ElideRight);
    view()->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void Picker::setControlHeight(int height)
{
    m_height = height;
    setFixedHeight(scaled(height));
}

QSize Picker::sizeHint() const
{
    int wide = 0;
    for (int i = 0; i < std::min(count(), 200); ++i) {
        wide = std::max(wide, naturalWidth(entry(itemText(i)), widest));
    }
    return {std::clamp(wide + leftPadding + gap + chevron + rightPadding, narrowest, widest), scaled(m_height)};
}

QSize Picker::minimumSizeHint() const
{
    return {narrowest, scaled(m_height)};
}

QRect Picker::textRect() const
{
    return rect().adjusted(leftPadding, 0, -(rightPadding + chevron + gap), 0);
}

void Picker::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const bool on = isEnabled();
    QColor fill;
    if (on && view()->isVisible()) {
        fill = Theme::line;
    } else if (on) {
        fill = blended(Theme::bg, Theme::panel, m_hover->share());
    }
    paintSurface(painter, rect(), 6, fill, Theme::line);
    const auto mirrored = [this](const QRect &part) { return QStyle::visualRect(layoutDirection(), rect(), part); };
    paintParagraph(painter, entry(currentText().isEmpty() ? placeholderText() : currentText()), mirrored(textRect()),
                   on ? Theme::heading : Theme::muted);
    const QRect arrow(width() - rightPadding - chevron, (height() - chevron) / 2, chevron, chevron);
    paintIcon(painter, Icon::ChevronDown, mirrored(arrow), on ? Theme::text : Theme::muted);
}

void Picker::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

bool Picker::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const bool elided = isElided(entry(currentText()), textRect().width());
        showPlainToolTip(static_cast<QHelpEvent *>(event)->globalPos(), elided ? currentText() : QString(), this);
        return true;
    }
    return QComboBox::event(event);
}

} // namespace quillfen
