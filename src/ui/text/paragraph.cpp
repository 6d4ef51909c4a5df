// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/text/paragraph.h"

#include "ui/paint/direction.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>
#include <limits>

namespace quillfen {
namespace {

/// The first `limit` pieces of a text, for which its own line ends count.
QString withSeparators(QString text)
{
    text.replace(u'\n', QChar::LineSeparator);
    return text;
}

/// Lays out up to `maximumLines` lines and one more, which tells whether something is left over.
int layOut(QTextLayout &layout, int maximumLines, qreal width)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);
    layout.beginLayout();
    int lines = 0;
    while (lines <= maximumLines) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
        ++lines;
    }
    layout.endLayout();
    return lines;
}

/// More characters than `width` pixels hold: hardly one is narrower than two pixels. What is longer needs no measuring.
qsizetype mostIn(qreal width)
{
    return static_cast<qsizetype>(width / 2.0) + 16;
}

/// One line of a text that is sure not to fit, cut to about what does, for the exact cut to be quick.
QString roughlyCut(const QString &text, Qt::TextElideMode elide, qreal width)
{
    const qsizetype most = mostIn(width);
    if (text.size() <= most) {
        return text;
    }
    if (elide == Qt::ElideMiddle) {
        return text.left(most) + u'…' + text.right(most);
    }
    return elide == Qt::ElideLeft ? u'…' + text.right(most) : text.left(most) + u'…';
}

qreal advance(const QString &text, const QFont &textFont)
{
    return QFontMetricsF(textFont).horizontalAdvance(text);
}

bool isOneLine(const Paragraph &paragraph)
{
    return paragraph.maximumLines <= 1;
}

struct LineSetter {
    QPainter &painter;
    const Paragraph &paragraph;
    const QFontMetricsF metrics;
    QRectF area;

    /// Draws one line; at the beginning, the end or the middle of the area, on a whole baseline of the device.
    void draw(const QString &text, int line) const
    {
        const qreal height = lineHeight(paragraph.type);
        const qreal inset = (height - metrics.ascent() - metrics.descent()) / 2.0;
        const qreal baseline = area.top() + line * height + inset + metrics.ascent();
        qreal left = area.left();
        const qreal room = area.width() - metrics.horizontalAdvance(text);
        const Qt::Alignment alignment = QStyle::visualAlignment(directionOf(painter), paragraph.alignment);
        if (alignment & Qt::AlignRight) {
            left += room;
        } else if (alignment & Qt::AlignHCenter) {
            left += room / 2.0;
        }
        // Letters between two pixels would look different at every place of the line.
        drawLine(painter, QPointF(std::floor(left), std::round(baseline)), text);
    }
};

void paintLines(const LineSetter &setter, qreal width)
{
    const Paragraph &paragraph = setter.paragraph;
    const QString text = withSeparators(paragraph.text);
    QTextLayout layout(text, font(paragraph.type));
    const int lines = layOut(layout, paragraph.maximumLines, width);
    for (int at = 0; at < std::min(lines, paragraph.maximumLines); ++at) {
        const QTextLine line = layout.lineAt(at);
        QString piece = text.mid(line.textStart(), line.textLength());
        if (at == paragraph.maximumLines - 1 && lines > paragraph.maximumLines) {
            piece = roughlyCut(text.mid(line.textStart()), paragraph.elide, width).replace(QChar::LineSeparator, u' ');
            // Something is left over in any case, so the sign stands even where this line alone would fit.
            const QString cut = setter.metrics.elidedText(piece + u'…', paragraph.elide, width);
            setter.draw(cut, at);
            break;
        }
        while (!piece.isEmpty() && (piece.back() == QChar::LineSeparator || piece.back().isSpace())) {
            piece.chop(1);
        }
        setter.draw(piece, at);
    }
}

} // namespace

int naturalWidth(const Paragraph &paragraph, int limit)
{
    const QFont &textFont = font(paragraph.type);
    qreal widest = 0.0;
    for (const QString &line : paragraph.text.split(u'\n')) {
        widest = line.size() > mostIn(limit) ? limit : std::max(widest, advance(line, textFont));
        if (widest >= limit) {
            return limit;
        }
    }
    return static_cast<int>(std::ceil(widest));
}

int lineCount(const Paragraph &paragraph, int width)
{
    if (isOneLine(paragraph)) {
        return 1;
    }
    QTextLayout layout(withSeparators(paragraph.text), font(paragraph.type));
    return std::clamp(layOut(layout, paragraph.maximumLines, width), 1, paragraph.maximumLines);
}

bool isElided(const Paragraph &paragraph, int width)
{
    if (isOneLine(paragraph)) {
        return paragraph.text.size() > mostIn(width) ||
               std::ceil(advance(paragraph.text, font(paragraph.type))) > width;
    }
    QTextLayout layout(withSeparators(paragraph.text), font(paragraph.type));
    return layOut(layout, paragraph.maximumLines, width) > paragraph.maximumLines;
}

void paintParagraph(QPainter &painter, const Paragraph &paragraph, const QRectF &rect, const QColor &colour)
{
    const QFont &textFont = font(paragraph.type);
    painter.setFont(textFont);
    painter.setPen(colour);
    LineSetter setter{painter, paragraph, QFontMetricsF(textFont), rect};
    const int lines = lineCount(paragraph, static_cast<int>(rect.width()));
    const qreal height = lines * lineHeight(paragraph.type);
    if (paragraph.alignment & Qt::AlignVCenter) {
        setter.area.setTop(rect.top() + std::floor((rect.height() - height) / 2.0));
    } else if (paragraph.alignment & Qt::AlignBottom) {
        setter.area.setTop(rect.bottom() - height);
    }
    if (!isOneLine(paragraph)) {
        paintLines(setter, rect.width());
        return;
    }
    const bool fits = !isElided(paragraph, static_cast<int>(rect.width()));
    const QString rough = roughlyCut(paragraph.text, paragraph.elide, rect.width());
    setter.draw(fits ? paragraph.text : setter.metrics.elidedText(rough, paragraph.elide, rect.width()), 0);
}

} // namespace quillfen
