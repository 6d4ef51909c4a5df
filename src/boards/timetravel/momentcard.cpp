// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/momentcard.h"

#include "boards/timetravel/timeline.h"
#include "dialogs/dialogs.h"
#include "state/format.h"
#include "state/start.h"
#include "ui/controls/buttons.h"
#include "ui/dates/datetimefield.h"
#include "ui/layout.h"
#include "ui/paint/iconview.h"
#include "ui/parts/card.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

constexpr int large = 36;
constexpr int columnWidth = 216;
constexpr int columnTop = 24; // level with the strip, below its caption
constexpr int columnGap = 20;
constexpr int bandHeight = 36; // of its contents; 48 with the band's own margins
constexpr int margin = 16;

/// As high as the field and as wide as the column. Not a large button: its text needs the room that the wider padding
/// of those would take.
Button *wide(Button *button)
{
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    button->setFixedHeight(scaled(large));
    return button;
}

QDateTime localTime(Instant moment)
{
    return QDateTime::fromMSecsSinceEpoch(moment.time_since_epoch().count());
}

/// What tells apart a time that the clock shows twice; empty for all others.
QString zoneNote(Instant moment)
{
    const QString plain = longDate(isoSecond(moment));
    const QString zone = exactDate(moment).mid(plain.size()).trimmed();
    // "+2" of "GMT+2": the column has no room for more, and cut off it would tell nothing.
    const bool isOffset = zone.size() > 3 && zone.startsWith("GMT"_L1);
    return isOffset ? zone.mid(3) : zone;
}

} // namespace

MomentCard::MomentCard(std::shared_ptr<TimeTravelModel> model, QWidget *parent)
    : QWidget(parent), m_model(std::move(model)), m_age(new AgentLabel(QString(), Type::BodyMedium, Theme::dBright)),
      m_timeline(new Timeline), m_field(new DateTimeField(tr("Date and time"), large)),
      m_open(wide(new Button(tr("Open this second read-only"), PrimaryButtonStyle{}))),
      m_newVolume(wide(new Button(tr("New volume from this second"), SecondaryButtonStyle{.dark = true}))),
      m_observer(
          // The volumes are read again every few seconds: so the card keeps up with the clock.
          {&m_model->at, &m_model->points, &m_model->state()->volumes}, [this] { render(); },
          m_model->state()->timing().frame)
{
    m_field->setDark(true);
    setLayout(column({build()}));
    connect(m_timeline, &Timeline::momentChanged, this, [this](Instant moment) { m_model->at = moment; });
    connect(m_field, &DateTimeField::edited, this, &MomentCard::choose);
    connect(m_open, &QAbstractButton::clicked, this, [this] {
        if (const std::optional<PastVolume> volume = m_model->volume()) {
            start(m_model->openView(*volume, isoSecond(m_model->at()), std::nullopt));
        }
    });
    connect(m_newVolume, &QAbstractButton::clicked, this, &MomentCard::askForName);
    render();
}

QWidget *MomentCard::build()
{
    auto *const title = new Label(tr("Viewing the past · read-only"), Type::BodyMedium, Theme::dBright);
    title->setMinimumHeight(scaled(bandHeight));
    m_age->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto *const card = new Card(true);
    card->band()->addWidget(new IconView(Icon::ClockBack, 18, Theme::accent));
    card->band()->addWidget(title);
    card->band()->addWidget(m_age, 1);

    for (Button *const button : {m_open, m_newVolume}) {
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // as wide as the column
    }
    auto *const choice = new QWidget;
    choice->setFixedWidth(scaled(columnWidth));
    choice->setLayout(column({m_field, m_open, m_newVolume}, 8, QMargins{0, scaled(columnTop), 0, 0}));
    auto *const body = new QWidget;
    const int side = margin - Timeline::overhang;
    body->setLayout(row({Item{m_timeline, 1, Qt::AlignTop}, Item{choice, 0, Qt::AlignTop}},
                        columnGap - Timeline::overhang, QMargins{side, margin, margin, margin}));
    card->addRow(body);
    return card;
}

void MomentCard::choose(const QDateTime &moment)
{
    const Instant chosen{std::chrono::milliseconds(moment.toMSecsSinceEpoch())};
    m_fieldShows.reset();
    m_model->at = std::min(chosen, now());
}

void MomentCard::askForName()
{
    const std::optional<PastVolume> volume = m_model->volume();
    if (!volume) {
        return;
    }
    // Taken before the question: while it stands the strip, the volumes and this card may change or go.
    const std::shared_ptr<TimeTravelModel> model = m_model;
    const QString timestamp = isoSecond(m_model->at());
    const std::optional<QString> name =
        askText(this, tr("New volume from %1").arg(exactDate(timestamp)),
                tr("A writable copy of %1 as it was at that second is prepared (a full copy, which takes a while for a "
                   "large volume); when it is ready, one click makes it a volume. The original is untouched.")
                    .arg(volume->name),
                volume->name + QLatin1Char('-') + shortName(timestamp), tr("Prepare"));
    if (name) {
        start(model->newVolume(*volume, timestamp, *name));
    }
}

void MomentCard::render()
{
    const Instant moment = m_model->at();
    m_age->setText(ageText(moment));
    m_timeline->setPoints(m_model->points());
    m_timeline->setMoment(moment);
    m_timeline->catchUp();
    // What is being typed into the field stays until another second is chosen.
    if (m_fieldShows != moment) {
        m_fieldShows = moment;
        m_field->setNote(zoneNote(moment));
        m_field->showMoment(localTime(moment));
    }
}

} // namespace quillfen
