// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/text/paragraph.h"
#include "ui/text/type.h"

#include <QColor>
#include <QLabel>
#include <QWidget>

namespace quillfen {

/// A text of our own wording. Plain text; wraps when told to. Its text is its accessible name.
class Label final : public QLabel {
    Q_OBJECT

public:
    Label(const QString &text, Type type, const QColor &colour, QWidget *parent = nullptr);

    void setColour(const QColor &colour);
    /// Wraps to at most `width` pixels.
    void setWrap(int width);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] Paragraph paragraph() const;
    [[nodiscard]] bool paintsItself() const;

    Type m_type;
};

/// A text that comes from the agent, or holds a piece that does. Plain text always, control and bidirectional-override
/// characters made visible, elided to one line with the whole in its tooltip (only while elided) and under "Copy" in
/// its context menu. Never widens its window, whatever the length. The whole text is its accessible name.
class AgentLabel final : public QWidget {
    Q_OBJECT

public:
    AgentLabel(const QString &text, Type type, const QColor &colour, QWidget *parent = nullptr);

    [[nodiscard]] const QString &text() const noexcept { return m_text; }
    void setText(const QString &text);
    void setColour(const QColor &colour);
    void setType(Type type);
    void setElideMode(Qt::TextElideMode mode); ///< right by default; paths and e-mail addresses in the middle
    void setAlignment(Qt::Alignment alignment);
    /// Wraps over at most `lines` lines instead of one; the last one elides.
    void setMaximumLines(int lines);
    /// Whether something of the text is missing on the screen.
    [[nodiscard]] bool isElided() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void showText();
    [[nodiscard]] Paragraph paragraph() const;

    QString m_text;    ///< as it was given
    QString m_visible; ///< as it is shown: nothing invisible left, cut to what a screen can hold
    Type m_type;
    QColor m_colour;
    Qt::TextElideMode m_elide = Qt::ElideRight;
    Qt::Alignment m_alignment = Qt::AlignLeft | Qt::AlignVCenter;
    int m_maximumLines = 1;
};

/// `text` with line ends, tabs, control characters and bidirectional overrides replaced by visible signs.
[[nodiscard]] QString madeVisible(const QString &text);

} // namespace quillfen
