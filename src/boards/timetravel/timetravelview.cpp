// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/timetravelview.h"

#include "boards/timetravel/momentcard.h"
#include "boards/timetravel/pastcards.h"
#include "state/recordlists.h"
#include "state/start.h"
#include "ui/accessible.h"
#include "ui/controls/buttons.h"
#include "ui/controls/picker.h"
#include "ui/layout.h"
#include "ui/parts/boardframe.h"
#include "ui/parts/emptystate.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

constexpr int pickerWidth = 208;
constexpr int headGap = 16;
constexpr int cardGap = 16;

} // namespace

TimeTravelView::TimeTravelView(std::shared_ptr<AppState> state, QWidget *parent)
    : Board(parent), m_state(std::move(state)), m_model(std::make_shared<TimeTravelModel>(m_state)),
      m_frame(new BoardFrame(QString())),
      m_observer(
          {&m_state->volumes, &m_model->volumeId}, [this] { render(); }, m_state->timing().frame),
      m_copies(
          {&m_state->readyCopies}, [this] { start(m_model->watchCopies()); }, m_state->timing().frame)
{
    build();
    m_loadSoon.setSingleShot(true);
    connect(&m_loadSoon, &QTimer::timeout, this, [this] { start(m_model->load()); });
    connect(m_volumes, &QComboBox::activated, this, &TimeTravelView::pick);
    connect(m_backToNow, &QAbstractButton::clicked, this, [this] { m_model->at = now(); });
    m_navigation =
        m_state->notifications().listen(Notifications::navigate, [this](const json::object &wish) { navigate(wish); });
    render();
}

TimeTravelView::~TimeTravelView() = default;

void TimeTravelView::build()
{
    m_empty = new EmptyState(Icon::ClockBack, tr("No volumes yet."));
    m_cards = new QWidget;
    m_cards->setLayout(column({new MomentCard(m_model), new OpenViewsCard(m_model), new NewVolumesCard(m_model),
                               new RestorePointsCard(m_model)},
                              cardGap));
    m_frame->setHead(head());
    m_frame->body()->addWidget(m_empty);
    m_frame->body()->addWidget(m_cards);
    setLayout(column({Item{m_frame, 1}}));
}

QWidget *TimeTravelView::head()
{
    auto *const title = new Label(tr("Time travel"), Type::BodySemibold, Theme::heading);
    setRole(title, QAccessible::Heading);
    m_volumes = new Picker(tr("Volume"));
    m_volumes->setFixedWidth(scaled(pickerWidth));
    m_backToNow = new Button(tr("Back to now"), SecondaryButtonStyle{});
    auto *const head = new QWidget;
    head->setLayout(row({title, m_volumes, Stretch{}, m_backToNow}, headGap));
    return head;
}

void TimeTravelView::reload()
{
    loadSoon();
}

void TimeTravelView::navigate(const json::object &wish)
{
    const json::value *const volume = wish.if_contains("volume");
    if (str(wish, "section") == "timetravel"_L1 && volume != nullptr) {
        m_model->volumeId = num(volume);
        loadSoon();
    }
}

void TimeTravelView::showEvent(QShowEvent *event)
{
    Board::showEvent(event);
    if (!event->spontaneous()) {
        loadSoon();
    }
}

void TimeTravelView::pick(int index)
{
    const Records &volumes = m_state->volumes();
    if (index < 0 || index >= volumes.size()) {
        return;
    }
    const std::int64_t id = num(volumes.at(index), "id");
    if (m_model->volumeId() != id) {
        m_model->volumeId = id;
        loadSoon();
    }
}

void TimeTravelView::loadSoon()
{
    m_loadSoon.start(0);
}

void TimeTravelView::render()
{
    const Records &volumes = m_state->volumes();
    const bool isEmpty = volumes.isEmpty();
    m_volumes->setVisible(!isEmpty);
    m_backToNow->setVisible(!isEmpty);
    m_cards->setVisible(!isEmpty);
    m_empty->setVisible(isEmpty);
    renderPicker();

    std::vector<std::int64_t> ids = idsOf(volumes);
    std::ranges::sort(ids);
    if (std::exchange(m_ids, ids) != ids) {
        loadSoon();
    }
}

void TimeTravelView::renderPicker()
{
    const Records &volumes = m_state->volumes();
    const std::optional<PastVolume> shown = m_model->volume();
    QStringList names;
    int current = -1;
    for (const Record &volume : volumes) {
        if (current < 0 && shown && num(volume, "id") == shown->id) {
            current = static_cast<int>(names.size());
        }
        names.append(str(volume, "name"));
    }
    if (std::exchange(m_names, names) != names) {
        m_volumes->clear();
        m_volumes->addItems(names);
    }
    m_volumes->setCurrentIndex(current);
}

} // namespace quillfen
