// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "methodslist.h"

#include "state/searchkey.h"
#include "ui/lists/rowsview.h"
#include "ui/paint/direction.h"
#include "ui/paint/paint.h"
#include "ui/text/agenttext.h"
#include "ui/text/tooltip.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QHelpEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace quillfen {

namespace {

constexpr int rowHeight = 52;
constexpr int textLeft = 16;
constexpr int barRoom = 16; ///< at the right of the rows
constexpr int smallMono = 11;
constexpr qreal radius = 6;

/// What stands in a row without a name.
QString titleOf(const AgentMethod &method)
{
    return method.name.isEmpty() ? QStringLiteral("—") : lineOfAgentText(method.name);
}

const QFont &requestFont()
{
    static const QFont small = [] {
        QFont font = quillfen::font(Type::Mono);
        font.setPixelSize(scaled(smallMono));
        return font;
    }();
    return small;
}

/// A row: the name, and below it verb and path.
class Delegate final : public QStyledItemDelegate {
public:
    explicit Delegate(MethodsList *list) : QStyledItemDelegate(list), m_list(*list) {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return {0, scaled(rowHeight)};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QRect row = rowRect(option);
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        paintBelow(*painter, row, option.direction, selected, option.state.testFlag(QStyle::State_MouseOver));
        if (m_list.hasFocus() && m_list.currentIndex() == index) {
            painter->setPen(QPen(Theme::ok, 2));
            painter->setBrush(Qt::NoBrush);
            painter->drawRoundedRect(QRectF(row).adjusted(3, 3, -3, -4), 5, 5);
        }
        const AgentMethod &method = m_list.methods().method(index.row());
        paintLine(*painter, titleRect(row, option.direction), titleOf(method),
                  font(selected ? Type::BodySemibold : Type::BodyMedium), Theme::heading);
        paintLine(*painter, requestRect(row, option.direction), lineOfAgentText(requestLine(method)), requestFont(),
                  selected ? Theme::heading : Theme::text);
    }

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override
    {
        if (event->type() != QEvent::ToolTip || !index.isValid()) {
            return false;
        }
        const AgentMethod &method = m_list.methods().method(index.row());
        const int width = titleRect(rowRect(option), option.direction).width();
        const bool fits = QFontMetrics(font(Type::BodySemibold)).horizontalAdvance(titleOf(method)) <= width &&
                          QFontMetrics(requestFont()).horizontalAdvance(lineOfAgentText(requestLine(method))) <= width;
        if (fits) {
            QToolTip::hideText();
        } else {
            showPlainToolTip(event->globalPos(), titleOf(method) + u'\n' + requestLine(method), view->viewport());
        }
        return true;
    }

private:
    [[nodiscard]] static QRect rowRect(const QStyleOptionViewItem &option)
    {
        return QStyle::visualRect(option.direction, option.rect, option.rect.adjusted(0, 0, -barRoom, 0));
    }

    [[nodiscard]] static QRect titleRect(const QRect &row, Qt::LayoutDirection direction)
    {
        const QRect title(row.left() + textLeft, row.top() + scaled(7), row.width() - textLeft - 12,
                          lineHeight(Type::Body));
        return QStyle::visualRect(direction, row, title);
    }

    [[nodiscard]] static QRect requestRect(const QRect &row, Qt::LayoutDirection direction)
    {
        return titleRect(row, direction).translated(0, lineHeight(Type::Body));
    }

    static void paintBelow(QPainter &painter, const QRect &row, Qt::LayoutDirection direction, bool selected,
                           bool hovered)
    {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        if (!selected) {
            paintHairline(painter, QRectF(row.left(), row.bottom(), row.width(), 1), Theme::line);
        }
        if (selected || hovered) {
            painter.setBrush(selected ? Theme::panel : Theme::panel2);
            painter.drawRoundedRect(row.adjusted(0, 0, 0, selected ? 0 : -1), radius, radius);
        }
        if (selected) {
            const int markHeight = 18;
            painter.setBrush(Theme::accent);
            const QRect mark(row.left() + 4, row.top() + (row.height() - markHeight) / 2, 3, markHeight);
            painter.drawRoundedRect(QStyle::visualRect(direction, row, mark), 1.5, 1.5);
        }
    }

    static void paintLine(QPainter &painter, const QRect &rect, const QString &text, const QFont &textFont,
                          const QColor &colour)
    {
        painter.setFont(textFont);
        painter.setPen(colour);
        drawLine(painter, rect, Qt::AlignLeft | Qt::AlignVCenter,
                 QFontMetrics(textFont).elidedText(text, Qt::ElideRight, rect.width()));
    }

    MethodsList &m_list;
};

} // namespace

int MethodsListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

QVariant MethodsListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return titleOf(method(index.row()));
    case Qt::AccessibleDescriptionRole:
        return lineOfAgentText(requestLine(method(index.row())));
    default:
        return {};
    }
}

const AgentMethod &MethodsListModel::method(int row) const
{
    return m_methods.at(m_shown.at(static_cast<std::size_t>(row)));
}

int MethodsListModel::rowOf(const QString &name) const
{
    const auto found = std::ranges::find(m_shown, name, [this](std::size_t at) { return m_methods[at].name; });
    return found == m_shown.end() ? -1 : static_cast<int>(found - m_shown.begin());
}

void MethodsListModel::setMethods(std::vector<AgentMethod> methods)
{
    m_methods = std::move(methods);
    m_keys.clear();
    m_keys.reserve(m_methods.size());
    std::ranges::transform(m_methods, std::back_inserter(m_keys),
                           [](const AgentMethod &method) { return searchKey(method.name); });
    apply();
}

void MethodsListModel::setFilter(const QString &filter)
{
    m_filter = searchKey(filter.trimmed());
    apply();
}

void MethodsListModel::apply()
{
    beginResetModel();
    m_shown.clear();
    for (std::size_t at = 0; at < m_methods.size(); ++at) {
        if (m_keys[at].contains(m_filter)) {
            m_shown.push_back(at);
        }
    }
    endResetModel();
}

MethodsList::MethodsList(QWidget *parent) : QListView(parent), m_methods(new MethodsListModel(this))
{
    setModel(m_methods);
    setItemDelegate(new Delegate(this));
    dressRowsView(this, tr("Operations"));
}

void MethodsList::mark(const QString &name)
{
    const QScopedValueRollback marking(m_marking, true);
    const int row = name.isNull() ? -1 : m_methods->rowOf(name);
    if (row < 0) {
        selectionModel()->clear();
    } else if (currentIndex().row() != row || !selectionModel()->isSelected(currentIndex())) {
        setCurrentIndex(m_methods->index(row));
    }
}

void MethodsList::pickFirst()
{
    if (m_methods->rowCount() > 0) {
        setCurrentIndex(m_methods->index(0));
    }
}

void MethodsList::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QListView::currentChanged(current, previous);
    if (!m_marking && current.isValid()) {
        Q_EMIT picked(m_methods->method(current.row()).name);
    }
}

// Letters belong to the filter.
void MethodsList::keyboardSearch(const QString &) {}

} // namespace quillfen
