// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QBoxLayout;

namespace quillfen {

class AgentLabel;
class ScrollArea;

/// The frame of every board: a title block that stays, and a body below it that scrolls. The margin is 28, or 20 in
/// windows narrower than 1080. A hairline closes the block once the body is scrolled.
class BoardFrame final : public QWidget {
    Q_OBJECT

public:
    explicit BoardFrame(const QString &title, QWidget *parent = nullptr);

    void setTitle(const QString &title);
    /// The second line under the title; the block is lower without one.
    void setSubtitle(const QString &text);

    /// What stands at the right on the lower edge of the title block, left to right.
    [[nodiscard]] QBoxLayout *actions() const noexcept { return m_actions; }
    /// Stands in the title block instead of title, second line and actions.
    void setHead(QWidget *head);
    /// The cards, top to bottom, 16 apart. Ends in a stretch of its own: a board need not add one.
    [[nodiscard]] QBoxLayout *body() const noexcept { return m_body; }
    /// Takes the whole body, without scrolling around it, for boards that scroll themselves.
    void setBodyWidget(QWidget *widget);

    /// The body's scroll area; null once there is a body widget.
    [[nodiscard]] ScrollArea *scrollArea() const noexcept { return m_scroll; }
    /// The margin at the left and right in this window.
    [[nodiscard]] int margin() const;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void placeMargins();

    QWidget *m_head;
    QWidget *m_ownHead = nullptr;
    AgentLabel *m_title;
    AgentLabel *m_subtitle;
    QBoxLayout *m_actions;
    ScrollArea *m_scroll;
    QBoxLayout *m_body;
    QWidget *m_bodyWidget = nullptr;
};

} // namespace quillfen
