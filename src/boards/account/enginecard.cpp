// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "enginecard.h"

#include "appliancelist.h"
#include "engineoperations.h"
#include "narrow.h"
#include "runninglist.h"

#include "dialogs/dialogs.h"
#include "state/start.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/paint/hairline.h"
#include "ui/parts/card.h"
#include "ui/parts/kv.h"
#include "ui/parts/pill.h"
#include "ui/parts/sectiontitle.h"
#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>

#include <algorithm>
#include <array>
#include <utility>

namespace quillfen {

namespace {

constexpr int noteWidth = 760;
/// How the two columns share the width.
constexpr int valuesShare = 38;
constexpr int appliancesShare = 52;

} // namespace

EngineCard::EngineCard(std::shared_ptr<AccountModel> model, QWidget *parent)
    : QWidget(parent), m_model(std::move(model)), m_card(new Card),
      m_observer(
          {&m_model->state().vm, &m_model->state().localAppliances, &m_model->state().activity.running,
           &m_model->appliances},
          [this] { render(); }, m_model->state().timing().frame)
{
    buildBand();
    m_card->addRow(details());
    m_card->addRow(new RunningList(
        m_model->state().shared_from_this(),
        [](const RunningCall &call) { return !call.title.isEmpty() && EngineOperation::isOne(call.method); }, this));
    buildFoot();
    setLayout(column({m_card}));
    render();
}

EngineCard::~EngineCard() = default;

void EngineCard::buildBand()
{
    m_status = new Pill(QString(), Theme::okBg, Theme::okText);
    auto *const band = m_card->band();
    band->addLayout(row({new SectionTitle(tr("Engine")), Space{4}, m_status, Stretch{},
                         new AgentLabel(tr("Quillfen %1").arg(AppState::appVersion()), Type::Body, Theme::heading)}),
                    1);
}

QWidget *EngineCard::details()
{
    m_memory = new KV(tr("Memory"), QString());
    m_disk = new KV(tr("Cache disk"), QString());
    m_docker = new KV(tr("Docker"), QString());
    m_engine = new KV(tr("Engine"), QString());
    m_appliances = new ApplianceList;
    m_appliances->setContentsMargins(0, 10, 0, 10);
    m_between = new Hairline(Qt::Vertical);
    auto *const values = new QWidget;
    values->setLayout(column({m_memory, m_disk, m_docker, m_engine, Stretch{}}, 0, QMargins{16, 10, 16, 10}));
    auto *const body = new QWidget;
    m_columns = row({Item{values, valuesShare}, m_between, Item{m_appliances, appliancesShare}}, 0);
    body->setLayout(m_columns);
    return body;
}

void EngineCard::buildFoot()
{
    m_note = new Label(tr("Stop safely finishes uploading before the engine shuts down."), Type::Body, Theme::heading);
    m_note->setWrap(noteWidth);
    m_setUp = new Button(tr("Set up engine"), PrimaryButtonStyle{});
    m_start = new Button(tr("Start engine"), PrimaryButtonStyle{});
    m_stop = new Button(tr("Stop safely"), SecondaryButtonStyle{});
    m_card->foot()->addLayout(row({Item{m_note, 1000}, Stretch{}, m_setUp, m_start, m_stop}, 12), 1);
    AccountModel *const model = m_model.get();
    connect(m_setUp, &QAbstractButton::clicked, this, [model] { start(model->setUpEngine()); });
    connect(m_start, &QAbstractButton::clicked, this, [model] { start(model->startEngine()); });
    // The question is asked after the press: assistive technology that presses a button waits until that has returned.
    connect(m_stop, &QAbstractButton::clicked, this, &EngineCard::askToStop, Qt::QueuedConnection);
}

void EngineCard::askToStop()
{
    const std::shared_ptr<AccountModel> model = m_model;
    const bool agreed = confirm(this, tr("Stop safely?"),
                                tr("Every volume on this Mac is unmounted after its last change has reached the vault; "
                                   "then the engine stops. Nothing is lost."),
                                tr("Stop safely"), Destructive::No);
    if (agreed) {
        start(model->stopEngine());
    }
}

/// The appliances come and go with the engine, and by actions of other boards: the list is read again when what the
/// state knows of them has changed. A stop takes down one after the other, and no event tells but its progress.
void EngineCard::follow()
{
    const AppState &state = m_model->state();
    const bool running = state.engineRunning();
    const std::optional<bool> wasRunning = std::exchange(m_wasRunning, running);
    const std::optional<QMap<QString, QString>> wasHere = std::exchange(m_wasHere, state.localAppliances());
    const RunningCall *const stop = state.activity.find(EngineOperation::stopSafely);
    const QString said = stop == nullptr ? QString() : stop->lastLine;
    const bool saysMore = std::exchange(m_wasSaid, said) != said && !said.isEmpty();
    if (saysMore || (wasRunning && *wasRunning != running) || (wasHere && *wasHere != state.localAppliances())) {
        start(m_model->followEngine(running));
    }
}

void EngineCard::render()
{
    follow();
    const EngineTexts texts = engineTexts(m_model->state().vm(), m_model->state().activity);
    m_status->setText(texts.status);
    m_status->setColours(texts.running ? Theme::okBg : Theme::panel2, texts.running  ? Theme::okText
                                                                      : texts.exists ? Theme::warn
                                                                                     : Theme::heading);
    m_status->setOutlined(!texts.running);
    m_memory->setValue(texts.memory);
    m_disk->setValue(texts.disk);
    m_docker->setValue(texts.docker);
    m_engine->setValue(texts.engine);
    m_appliances->setAppliances(m_model->appliances());
    fitColumns();
    renderButtons(texts);
}

void EngineCard::renderButtons(const EngineTexts &texts)
{
    using Offer = EngineTexts::Offer;
    const Activity &activity = m_model->state().activity;
    m_setUp->setRunning(activity.find(EngineOperation::setUp) != nullptr);
    m_start->setRunning(activity.find(EngineOperation::startUp) != nullptr);
    m_stop->setRunning(activity.find(EngineOperation::stopSafely) != nullptr);
    const std::array offers{std::pair(m_setUp, Offer::SetUp), std::pair(m_start, Offer::Start),
                            std::pair(m_stop, Offer::Stop)};
    Button *const offered = std::ranges::find(offers, texts.offer, &std::pair<Button *, Offer>::second)->first;
    offered->setVisible(true);
    for (const auto &[button, offer] : offers) {
        // Hiding what has the focus would hand it on to whatever follows, which is another card's.
        if (button != offered && window()->focusWidget() == button) {
            offered->setFocus(Qt::TabFocusReason);
        }
        button->setVisible(button == offered);
    }
    m_note->setVisible(texts.offer == Offer::Stop);
}

void EngineCard::resizeEvent(QResizeEvent *)
{
    fitColumns();
}

void EngineCard::fitColumns()
{
    const bool narrow = width() < scaled(narrowBoard);
    m_columns->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_between->setVisible(!narrow && !m_model->appliances().isEmpty());
}

} // namespace quillfen
