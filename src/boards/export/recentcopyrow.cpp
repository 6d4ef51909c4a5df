// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/export/recentcopyrow.h"

#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/lists/listrow.h"
#include "ui/paint/paint.h"
#include "ui/parts/pill.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>

namespace quillfen {

namespace {

constexpr int compact = 28;
constexpr int mostLines = 3;

AgentLabel *smallText(const QColor &colour)
{
    auto *const label = new AgentLabel(QString(), Type::Caption, colour);
    label->setMaximumLines(mostLines);
    return label;
}

void say(AgentLabel *label, const QString &text)
{
    label->setText(text);
    label->setVisible(!text.isEmpty());
}

} // namespace

RecentCopyRow::RecentCopyRow(QWidget *parent)
    : QWidget(parent), m_name(new AgentLabel(QString(), Type::BodyMedium, Theme::heading)),
      m_state(new Pill(QString(), Theme::panel, Theme::heading)), m_delivery(smallText(Theme::text)),
      m_error(smallText(Theme::danger)), m_notes{smallText(Theme::text), smallText(Theme::text),
                                                 smallText(Theme::text)},
      m_open(new Button(tr("Open download"), SecondaryButtonStyle{compact})),
      m_remove(new Button(tr("Remove"), SecondaryButtonStyle{compact}))
{
    auto *const texts = column({}, 2);
    texts->addLayout(row({m_name, m_state, Stretch{}}));
    for (AgentLabel *const label : {m_delivery, m_error, m_notes[0], m_notes[1], m_notes[2]}) {
        texts->addWidget(label);
    }
    auto *const line = row({}, 12, QMargins{16, 12, 16, 12});
    line->addLayout(texts, 1);
    line->addWidget(m_open, 0, Qt::AlignTop);
    line->addWidget(m_remove, 0, Qt::AlignTop);
    setLayout(line);
    connect(m_open, &QAbstractButton::clicked, this, &RecentCopyRow::opened);
    connect(m_remove, &QAbstractButton::clicked, this, &RecentCopyRow::removed);
}

void RecentCopyRow::setCopy(const ExportRow &copy)
{
    if (copy == m_shown) {
        return;
    }
    m_shown = copy;
    m_name->setText(copy.name);
    m_state->setText(copy.state);
    m_state->setVisible(!copy.state.isEmpty());
    switch (copy.tone) {
    case ExportRow::Tone::Good:
        m_state->setColours(Theme::okBg, Theme::okText);
        break;
    case ExportRow::Tone::Bad:
        m_state->setColours(Theme::dangerBg, Theme::dangerText);
        break;
    case ExportRow::Tone::Neutral:
        m_state->setColours(Theme::panel, Theme::heading);
        break;
    }
    say(m_delivery, copy.delivery);
    say(m_error, copy.error);
    for (std::size_t place = 0; place < m_notes.size(); ++place) {
        say(m_notes.at(place), copy.notes.value(static_cast<qsizetype>(place)));
    }
    m_open->setVisible(!copy.link.isEmpty());
    nameRowButton(m_open, copy.name);
    nameRowButton(m_remove, copy.name);
}

void RecentCopyRow::setRemoving(bool removing)
{
    m_remove->setRunning(removing);
}

void RecentCopyRow::paintEvent(QPaintEvent *)
{
    if (y() > 0) {
        QPainter painter(this);
        paintHairline(painter, QRectF(0, 0, width(), 1), Theme::line);
    }
}

} // namespace quillfen
