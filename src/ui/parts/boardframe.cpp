// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/boardframe.h"

#include "ui/accessible.h"
#include "ui/layout.h"
#include "ui/paint/paint.h"
#include "ui/parts/scrollarea.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>
#include <QScrollBar>

namespace quillfen {
namespace {

constexpr int top = 36;    // the drag area of the window
constexpr int bottom = 16; // below title and actions
constexpr int lineGap = 4; // between title and second line
constexpr int cardGap = 16;
constexpr int actionGap = 12;
constexpr int wideMargin = 28;
constexpr int narrowMargin = 20;
constexpr int narrowWindow = 1080;

} // namespace

BoardFrame::BoardFrame(const QString &title, QWidget *parent)
    : QWidget(parent), m_head(new QWidget), m_title(new AgentLabel(title, Type::Title, Theme::heading)),
      m_subtitle(new AgentLabel({}, Type::Body, Theme::text)), m_actions(row({}, actionGap)), m_scroll(new ScrollArea),
      m_body(column({}, cardGap))
{
    setRole(m_title, QAccessible::Heading);
    m_subtitle->hide();
    // The gap goes with the second line: beneath a title that stands alone it would cut off the feet of its letters.
    auto *texts = column({m_title, m_subtitle}, lineGap, {0, top, 0, 0});
    auto *head = row({}, actionGap);
    head->addLayout(texts, 1);
    head->addLayout(m_actions);
    head->setAlignment(texts, Qt::AlignTop);
    head->setAlignment(m_actions, Qt::AlignBottom);
    m_head->setLayout(head);

    auto *contents = new QWidget;
    auto *padded = column({}, 0);
    padded->addLayout(m_body);
    padded->addStretch(1);
    contents->setLayout(padded);
    m_scroll->setWidget(contents);
    m_scroll->standOffWindowEdge();
    contents->setAutoFillBackground(false); // the scroll area turned it on
    setLayout(column({m_head, Item{m_scroll, 1}}));

    connect(m_scroll->verticalScrollBar(), &QScrollBar::valueChanged, this, qOverload<>(&QWidget::update));
    placeMargins();
}

void BoardFrame::setTitle(const QString &title)
{
    m_title->setText(title);
}

void BoardFrame::setSubtitle(const QString &text)
{
    m_subtitle->setText(text);
    m_subtitle->setVisible(!text.isEmpty());
    placeMargins();
}

void BoardFrame::setHead(QWidget *head)
{
    m_ownHead = head;
    m_title->hide();
    m_subtitle->hide();
    auto *const layout = static_cast<QBoxLayout *>(m_head->layout());
    layout->setSpacing(0);
    layout->setStretch(0, 0);
    layout->insertWidget(0, head, 1, Qt::AlignBottom);
    placeMargins();
}

void BoardFrame::setBodyWidget(QWidget *widget)
{
    delete m_scroll;
    m_scroll = nullptr;
    m_body = nullptr;
    delete m_bodyWidget;
    m_bodyWidget = widget;
    static_cast<QBoxLayout *>(layout())->addWidget(widget, 1);
}

int BoardFrame::margin() const
{
    return window()->width() < narrowWindow ? narrowMargin : wideMargin;
}

void BoardFrame::placeMargins()
{
    const int side = margin();
    const bool twoLines = !m_subtitle->isHidden();
    const int texts = lineHeight(Type::Title) + (twoLines ? lineGap + lineHeight(Type::Body) : 0);
    m_head->setFixedHeight(top + (m_ownHead != nullptr ? m_ownHead->sizeHint().height() : texts) + bottom);
    m_head->layout()->setContentsMargins(side, 0, side, bottom);
    if (m_scroll != nullptr) {
        m_scroll->widget()->layout()->setContentsMargins(side, 0, side, side);
    }
}

void BoardFrame::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeMargins();
}

void BoardFrame::paintEvent(QPaintEvent *)
{
    if (m_scroll == nullptr || m_scroll->verticalScrollBar()->value() == 0) {
        return;
    }
    QPainter painter(this);
    paintHairline(painter, QRectF(0, m_head->height() - 1, width(), 1), Theme::line);
}

} // namespace quillfen
