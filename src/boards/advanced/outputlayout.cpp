// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "outputlayout.h"

#include "ui/text/type.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace quillfen {

namespace {

/// One line, as drawn by the painter.
class Line final {
public:
    explicit Line(const QString &text) : m_layout(text, font(Type::Mono))
    {
        QTextOption option;
        option.setWrapMode(QTextOption::NoWrap);
        option.setTextDirection(Qt::LeftToRight);
        m_layout.setTextOption(option);
        m_layout.beginLayout();
        m_line = m_layout.createLine();
        m_layout.endLayout();
    }

    [[nodiscard]] qreal xOf(qsizetype position) const { return m_line.cursorToX(static_cast<int>(position)); }
    [[nodiscard]] qsizetype positionAt(qreal x) const { return m_line.xToCursor(x); }

private:
    QTextLayout m_layout;
    QTextLine m_line;
};

} // namespace

qreal columnWidth()
{
    static const qreal width = QFontMetricsF(font(Type::Mono)).horizontalAdvance(u'0');
    return width;
}

RowLayout::RowLayout(const OutputRows &rows, const OutputRows::Row &row)
    : m_bytes(std::string_view(rows.text()->bytes()).substr(row.begin, row.end - row.begin)), m_begin(row.begin),
      m_indent(static_cast<qreal>(row.indent) * columnWidth()),
      m_text(QString::fromUtf8(m_bytes.data(), static_cast<qsizetype>(m_bytes.size())))
{}

bool RowLayout::isPlain() const noexcept
{
    return static_cast<std::size_t>(m_text.size()) == m_bytes.size();
}

qreal RowLayout::xOf(std::size_t offset) const
{
    const std::size_t within = std::min(offset - m_begin, m_bytes.size());
    if (isPlain()) {
        return m_indent + static_cast<qreal>(within) * columnWidth();
    }
    const qsizetype position = QString::fromUtf8(m_bytes.data(), static_cast<qsizetype>(within)).size();
    return m_indent + Line(m_text).xOf(position);
}

std::size_t RowLayout::offsetAt(qreal x) const
{
    const qreal right = std::max(0.0, x - m_indent);
    if (isPlain()) {
        return m_begin + std::min(m_bytes.size(), static_cast<std::size_t>(std::lround(right / columnWidth())));
    }
    const qsizetype position = Line(m_text).positionAt(right);
    return m_begin + static_cast<std::size_t>(m_text.left(position).toUtf8().size());
}

void RowLayout::paint(QPainter &painter, const QPointF &topLeft, int height) const
{
    const QFontMetricsF metrics(painter.font());
    const qreal baseline = topLeft.y() + (height - metrics.height()) / 2 + metrics.ascent();
    painter.setLayoutDirection(Qt::LeftToRight);
    painter.drawText(QPointF(topLeft.x() + m_indent, baseline), m_text);
}

} // namespace quillfen
