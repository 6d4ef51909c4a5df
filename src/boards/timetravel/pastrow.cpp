// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/pastrow.h"

#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/lists/listrow.h"
#include "ui/parts/bar.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

namespace quillfen {

namespace {

constexpr int compact = 28;
constexpr int rowHeight = 48;
constexpr int barWidth = 160;
constexpr int narrowestBar = 40;
constexpr int barHeight = 4;
constexpr QMargins sides{16, 0, 16, 0};

AgentLabel *nameLabel()
{
    return new AgentLabel(QString(), Type::BodyMedium, Theme::heading);
}

AgentLabel *originLabel()
{
    return new AgentLabel(QString(), Type::Caption, Theme::text);
}

Button *compactButton(const QString &text)
{
    return new Button(text, SecondaryButtonStyle{compact});
}

QBoxLayout *rowOf(AgentLabel *name, AgentLabel *origin)
{
    auto *const line = row({}, 12, sides);
    line->addLayout(column({name, origin}, 0, QMargins{0, 6, 0, 6}), 1);
    return line;
}

} // namespace

OpenViewRow::OpenViewRow(QWidget *parent)
    : QWidget(parent), m_name(nameLabel()), m_origin(originLabel()),
      m_show(new Button(Icon::FolderReveal, tr("Show in Finder"), SecondaryButtonStyle{compact})),
      m_mount(compactButton(tr("Mount"))), m_openAgain(compactButton(tr("Open again"))),
      m_release(compactButton(tr("Release")))
{
    setMinimumHeight(scaled(rowHeight));
    auto *const line = rowOf(m_name, m_origin);
    for (Button *const button : {m_show, m_mount, m_openAgain, m_release}) {
        line->addWidget(button);
    }
    setLayout(line);
    connect(m_show, &QAbstractButton::clicked, this, &OpenViewRow::shown);
    connect(m_mount, &QAbstractButton::clicked, this, &OpenViewRow::mounted);
    connect(m_openAgain, &QAbstractButton::clicked, this, &OpenViewRow::openedAgain);
    connect(m_release, &QAbstractButton::clicked, this, &OpenViewRow::released);
}

void OpenViewRow::setView(const PastVolume &volume, const ViewRow &view)
{
    m_volume = volume;
    m_view = view;
    m_name->setText(view.name);
    m_origin->setText(view.origin);
    // What comes is shown before what goes is hidden: the focus of a button that goes moves on to its successor.
    const std::initializer_list<std::pair<Button *, ViewRow::Offer>> offers = {
        {m_show, ViewRow::Offer::Show}, {m_mount, ViewRow::Offer::Mount}, {m_openAgain, ViewRow::Offer::OpenAgain}};
    const auto show = [&](bool wanted) {
        for (const auto &[button, offer] : offers) {
            if ((offer == view.offer) == wanted) {
                button->setVisible(wanted);
            }
        }
    };
    QWidget *const focused = focusWidget();
    const bool hadFocus = focused != nullptr && focused->hasFocus() && focused != m_release;
    show(true);
    for (const auto &[button, offer] : offers) {
        nameRowButton(button, view.name);
        if (hadFocus && offer == view.offer) {
            button->setFocus();
        }
    }
    show(false);
    nameRowButton(m_release, view.name);
}

void OpenViewRow::paintEvent(QPaintEvent *)
{
    paintRowDivider(this);
}

NewVolumeRow::NewVolumeRow(QWidget *parent)
    : QWidget(parent), m_name(nameLabel()), m_origin(originLabel()),
      m_bar(new Bar(0, Theme::line, Theme::accent, barHeight)),
      m_promote(new Button(tr("Make it a volume"), PrimaryButtonStyle{compact})),
      m_discard(new Button(tr("Discard"), DangerButtonStyle{}))
{
    m_discard->setControlHeight(compact);
    m_bar->setMinimumWidth(narrowestBar);
    m_bar->setMaximumWidth(barWidth);
    setMinimumHeight(scaled(rowHeight));
    auto *const line = rowOf(m_name, m_origin);
    line->addWidget(m_bar, 1);
    line->addWidget(m_promote);
    line->addWidget(m_discard);
    setLayout(line);
    connect(m_promote, &QAbstractButton::clicked, this, &NewVolumeRow::promoted);
    connect(m_discard, &QAbstractButton::clicked, this, &NewVolumeRow::discarded);
}

void NewVolumeRow::setRecovery(const RecoveryRow &recovery)
{
    m_recovery = recovery;
    m_name->setText(recovery.name);
    m_origin->setText(recovery.origin);
    m_promote->setVisible(recovery.isReady);
    m_bar->setVisible(recovery.percent && !recovery.isReady);
    m_bar->setFraction(static_cast<double>(recovery.percent.value_or(0)) / 100);
    m_bar->setValueText(recovery.origin);
    m_bar->setAccessibleName(madeVisible(recovery.name));
    nameRowButton(m_promote, recovery.name);
    nameRowButton(m_discard, recovery.name);
}

void NewVolumeRow::paintEvent(QPaintEvent *)
{
    paintRowDivider(this);
}

} // namespace quillfen
