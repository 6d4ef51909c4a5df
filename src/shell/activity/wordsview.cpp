// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/activity/wordsview.h"

#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStringList>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int mostLines = 4;
constexpr int margin = 4; ///< around the text, where the line of the focus has its place
constexpr int spare = 4;  ///< so that a font's fractions of a pixel hide no line

QString visibleLines(const QString &words)
{
    QStringList lines = words.split(u'\n');
    std::ranges::transform(lines, lines.begin(), madeVisible);
    return lines.join(u'\n');
}

} // namespace

WordsView::WordsView(const QString &accessibleName, QWidget *parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFrameShape(QFrame::NoFrame);
    setFont(quillfen::font(Type::Body));
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setProperty("overlay", true); // see HouseStyle
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setProperty("ownFocus", true);
    document()->setDocumentMargin(margin);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Theme::bg);
    colours.setColor(QPalette::Text, Theme::heading);
    setPalette(colours);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    setAccessibleName(accessibleName);
}

void WordsView::setWords(const QString &words)
{
    if (words == m_words) {
        return;
    }
    m_words = words;
    setPlainText(visibleLines(words));
    m_lines = shownLines();
    updateGeometry();
}

int WordsView::shownLines() const
{
    return std::clamp(static_cast<int>(document()->documentLayout()->documentSize().height()), 1, mostLines);
}

QSize WordsView::sizeHint() const
{
    return {0, m_lines * fontMetrics().lineSpacing() + 2 * margin + spare};
}

QSize WordsView::minimumSizeHint() const
{
    return {0, fontMetrics().lineSpacing() + 2 * margin + spare};
}

bool WordsView::event(QEvent *event)
{
    // The window's own key for copying comes second to a selection.
    if (event->type() == QEvent::ShortcutOverride && textCursor().hasSelection() &&
        static_cast<QKeyEvent *>(event)->matches(QKeySequence::Copy)) {
        event->accept();
        return true;
    }
    return QPlainTextEdit::event(event);
}

void WordsView::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    if (const int lines = shownLines(); lines != m_lines) {
        m_lines = lines;
        updateGeometry();
    }
}

void WordsView::paintEvent(QPaintEvent *event)
{
    QPlainTextEdit::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(viewport());
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Theme::ok, 2));
        painter.drawRoundedRect(QRectF(viewport()->rect()).adjusted(1, 1, -1, -1), 5, 5);
    }
}

void WordsView::keyPressEvent(QKeyEvent *event)
{
    // Esc closes the window from here too.
    if (event->key() == Qt::Key_Escape) {
        event->ignore();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

} // namespace quillfen
