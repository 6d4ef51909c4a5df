// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "dialogs/secretwell.h"

#include "desktop/clipboard.h"
#include "ui/layout.h"
#include "ui/paint/paint.h"
#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QEvent>
#include <QMimeData>
#include <QPainter>
#include <QStringList>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <QTextOption>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int mostLines = 8;
constexpr QMargins around{13, 11, 13, 11}; // the line included

/// A secret of several lines keeps them; what could not be seen is shown by a sign.
QString readable(const QString &secret)
{
    QStringList lines = secret.split(u'\n');
    for (QString &line : lines) {
        line = madeVisible(line);
    }
    return lines.join(u'\n');
}

} // namespace

class SecretText final : public QTextEdit {
public:
    explicit SecretText(const QString &secret) : m_secret(secret)
    {
        setReadOnly(true);
        setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        setTabChangesFocus(true);
        setFrameShape(QFrame::NoFrame);
        viewport()->setAutoFillBackground(false);
        setProperty("ownFocus", true);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFont(quillfen::font(Type::Mono));
        setWordWrapMode(QTextOption::WrapAnywhere);
        setPlainText(readable(secret));
        document()->setDocumentMargin(0);
        QTextBlockFormat line;
        line.setLineHeight(lineHeight(Type::Mono), QTextBlockFormat::FixedHeight);
        QTextCursor all(document());
        all.select(QTextCursor::Document);
        all.mergeBlockFormat(line);
    }

    [[nodiscard]] int heightFor(int width) const
    {
        document()->setTextWidth(width);
        const int whole = static_cast<int>(document()->size().height() + 0.5);
        return std::clamp(whole, lineHeight(Type::Mono), mostLines * lineHeight(Type::Mono));
    }

protected:
    [[nodiscard]] QMimeData *createMimeDataFromSelection() const override
    {
        // Everything selected is the secret itself, not the signs that stand for what cannot be seen.
        const QTextCursor selected = textCursor();
        const bool whole =
            selected.selectionStart() == 0 && selected.selectionEnd() + 1 >= document()->characterCount();
        return secretForClipboard(whole ? m_secret : selected.selection().toPlainText()).release();
    }

private:
    QString m_secret;
};

SecretWell::SecretWell(const QString &accessibleName, const QString &secret, int width, QWidget *parent)
    : QWidget(parent), m_text(new SecretText(secret))
{
    m_text->setAccessibleName(accessibleName);
    m_text->installEventFilter(this);
    setLayout(row({m_text}, 0, around));
    const int inside = width - around.left() - around.right();
    m_text->setFixedSize(inside, m_text->heightFor(inside));
    setFixedSize(width, m_text->height() + around.top() + around.bottom());
}

void SecretWell::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const bool focused = m_text->hasFocus();
    paintSurface(painter, rect(), 6, Theme::panel2, focused ? Theme::ok : Theme::line, focused ? 2 : 1);
}

bool SecretWell::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace quillfen
