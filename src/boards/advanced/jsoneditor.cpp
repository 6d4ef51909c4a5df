// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "jsoneditor.h"

#include "ui/layout.h"
#include "ui/paint/paint.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextBlock>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int editorHeight = 80;
constexpr qreal radius = 6;
/// Beyond this size checking with every key would be felt; running takes such a text all the same.
constexpr qsizetype longestChecked = 1'000'000;

void usePlainColours(QPlainTextEdit &edit)
{
    QPalette colours = edit.palette();
    colours.setColor(QPalette::Base, Qt::transparent);
    colours.setColor(QPalette::Text, Theme::heading);
    edit.setPalette(colours);
    edit.viewport()->setAutoFillBackground(false);
}

} // namespace

JsonEditor::JsonEditor(const QString &accessibleName, QWidget *parent) : QWidget(parent), m_edit(new QPlainTextEdit)
{
    m_edit->setAccessibleName(accessibleName);
    m_edit->setFrameShape(QFrame::NoFrame);
    m_edit->setFont(quillfen::font(Type::Mono));
    m_edit->setTabChangesFocus(true);
    m_edit->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_edit->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_edit->setProperty("ownFocus", true);
    m_edit->document()->setDocumentMargin(2);
    usePlainColours(*m_edit);
    m_edit->installEventFilter(this);
    setLayoutDirection(Qt::LeftToRight); // as JSON is written in every language
    setFocusProxy(m_edit);
    setAttribute(Qt::WA_Hover);
    setFixedHeight(scaled(editorHeight));
    setLayout(column({Item{m_edit, 1}}, 0, {9, 5, 3, 5}));
    connect(m_edit, &QPlainTextEdit::textChanged, this, [this] {
        check();
        Q_EMIT edited();
    });
}

// The document's own plain text would have common spaces in the place of hard ones, which in a JSON text are others.
QString JsonEditor::text() const
{
    QString text = m_edit->document()->toRawText();
    std::ranges::replace_if(
        text, [](QChar unit) { return unit == QChar::ParagraphSeparator || unit == QChar::LineSeparator; }, u'\n');
    return text;
}

void JsonEditor::setText(const QString &text)
{
    if (text == this->text()) {
        return;
    }
    {
        const QSignalBlocker quiet(m_edit);
        m_edit->setPlainText(text);
    }
    check();
}

void JsonEditor::check()
{
    const QString typed = text();
    std::optional<JsonProblem> found = typed.size() > longestChecked ? std::nullopt : problemIn(typed);
    if (found == m_problem) {
        return;
    }
    m_problem = std::move(found);
    mark();
    update();
    Q_EMIT problemChanged();
}

// Up to the end of the line, so that it is seen; what is missing at the end is marked at what comes before it.
void JsonEditor::mark()
{
    QList<QTextEdit::ExtraSelection> marks;
    if (m_problem) {
        const auto size = static_cast<int>(text().size());
        const int position = std::min(static_cast<int>(m_problem->position), std::max(0, size - 1));
        QTextEdit::ExtraSelection mark;
        mark.cursor = QTextCursor(m_edit->document());
        mark.cursor.setPosition(position);
        mark.cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        if (!mark.cursor.hasSelection()) {
            mark.cursor.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
        }
        mark.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        mark.format.setUnderlineColor(Theme::danger);
        mark.format.setForeground(Theme::danger);
        marks.append(mark);
    }
    m_edit->setExtraSelections(marks);
}

bool JsonEditor::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
    } else if (event->type() == QEvent::KeyPress) {
        const auto *const key = static_cast<QKeyEvent *>(event);
        const bool enters = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if (enters && key->modifiers().testFlag(Qt::ControlModifier)) {
            Q_EMIT submitted();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void JsonEditor::paintEvent(QPaintEvent *)
{
    QColor border = underMouse() ? Theme::text : Theme::muted;
    if (m_problem) {
        border = Theme::danger;
    } else if (m_edit->hasFocus()) {
        border = Theme::ok;
    }
    QPainter painter(this);
    paintSurface(painter, rect(), radius, Theme::bg, border, m_edit->hasFocus() ? 2 : 1);
}

} // namespace quillfen
