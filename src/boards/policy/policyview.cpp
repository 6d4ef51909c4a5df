// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/policy/policyview.h"

#include "boards/policy/presetrow.h"
#include "boards/policy/tierrow.h"
#include "state/start.h"
#include "ui/accessible.h"
#include "ui/controls/buttons.h"
#include "ui/controls/picker.h"
#include "ui/layout.h"
#include "ui/parts/boardframe.h"
#include "ui/parts/card.h"
#include "ui/parts/sectiontitle.h"
#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>

#include <utility>

namespace quillfen {

namespace {

constexpr int volumePickerWidth = 224;
constexpr int presetWidth = 308;
/// Below this width, scaled with the text, the two columns stand below one another.
constexpr int narrowWidth = 760;
constexpr int columnGap = 16;
constexpr int textWidth = 728;
constexpr int titleHeight = 48;
constexpr QMargins footMargins{16, 12, 16, 12};

} // namespace

PolicyView::PolicyView(std::shared_ptr<AppState> state, QWidget *parent)
    : Board(parent), m_model(std::make_shared<PolicyModel>(std::move(state))),
      m_frame(new BoardFrame(tr("History policy"))),
      m_observer(
          {&m_model->state().volumes, &m_model->volumeId, &m_model->values, &m_model->saved, &m_model->saving,
           &m_model->pinning},
          [this] { render(); }, m_model->state().timing().frame)
{
    m_frame->setSubtitle(tr("How long each second is kept."));
    m_volumes = new Picker(tr("Volume"));
    m_volumes->setFixedWidth(scaled(volumePickerWidth));
    m_frame->actions()->addWidget(m_volumes);
    m_presetColumn = presetColumn();
    m_columns = row({Item{m_presetColumn, 0, Qt::AlignTop}, Item{tierCard(), 1, Qt::AlignTop}}, columnGap);
    m_frame->body()->addLayout(m_columns);
    m_frame->body()->addWidget(pinCard());
    setLayout(column({Item{m_frame, 1}}));
    connectActions();
    fitColumns();
    render();
}

QWidget *PolicyView::presetColumn()
{
    auto *const choice = new QWidget;
    auto *const card = new Card;
    for (std::size_t index = 0; index < planCount; ++index) {
        const Plan &plan = planAt(index);
        m_presets.at(index) =
            new PresetRow(plan.name, plan.description, index == recommendedPlan ? tr("recommended") : QString());
        card->addRow(m_presets.at(index));
    }
    auto *const note = new Label(tr("The numbers are a ceiling. When space runs short, the oldest tiers shrink first; "
                                    "recent seconds are never thinned early."),
                                 Type::Caption, Theme::text);
    note->setWrap(textWidth);
    choice->setLayout(column({card, column({note}, 0, QMargins{16, 0, 16, 0})}, columnGap));
    return choice;
}

QWidget *PolicyView::tierCard()
{
    m_tierCard = new Card;
    m_planName = new AgentLabel(QString(), Type::Section, Theme::heading);
    setRole(m_planName, QAccessible::Heading);
    auto *const title = new QWidget;
    title->setMinimumHeight(scaled(titleHeight));
    title->setLayout(column({m_planName, new Label(tr("Keep a restore point…"), Type::Caption, Theme::heading)}, 0,
                            QMargins{0, 4, 0, 4}));
    m_tierCard->band()->addWidget(title, 1);
    for (std::size_t tier = 0; tier < tierCount; ++tier) {
        m_tiers.at(tier) = new TierRow(tier);
        m_tierCard->addRow(m_tiers.at(tier));
    }
    m_reset = new Button(tr("Reset to standard"), SecondaryButtonStyle{});
    m_save = new Button(tr("Save policy"), PrimaryButtonStyle{});
    m_tierCard->foot()->setContentsMargins(footMargins);
    m_tierCard->foot()->addStretch(1);
    m_tierCard->foot()->addWidget(m_reset);
    m_tierCard->foot()->addWidget(m_save);
    return m_tierCard;
}

QWidget *PolicyView::pinCard()
{
    auto *const card = new Card;
    card->band()->addWidget(new SectionTitle(tr("Pinned snapshots")));
    auto *const text =
        new Label(tr("A pinned point stays until you delete it, whatever the policy says."), Type::Body, Theme::text);
    text->setWrap(textWidth);
    m_pin = new Button(tr("Pin this moment"), SecondaryButtonStyle{});
    auto *const line = new QWidget;
    line->setMinimumHeight(scaled(52));
    line->setLayout(row({Item{text, 1000}, Stretch{}, m_pin}, 12, QMargins{16, 7, 16, 7}));
    card->addRow(line);
    return card;
}

void PolicyView::connectActions()
{
    PolicyModel *const model = m_model.get();
    connect(m_volumes, &QComboBox::activated, this, [model](int index) {
        const Records &volumes = model->state().volumes();
        if (index >= 0 && index < volumes.size()) {
            model->pickVolume(num(volumes.at(index), "id"));
        }
    });
    for (std::size_t index = 0; index < planCount; ++index) {
        connect(m_presets.at(index), &QAbstractButton::clicked, this, [model, index] { model->usePlan(index); });
    }
    for (std::size_t tier = 0; tier < tierCount; ++tier) {
        connect(m_tiers.at(tier), &TierRow::chosen, this,
                [model, tier](qint64 number) { model->setValue(tier, number); });
    }
    connect(m_reset, &QAbstractButton::clicked, this, [model] { model->usePlan(recommendedPlan); });
    connect(m_save, &QAbstractButton::clicked, this, [model] { start(model->save()); });
    connect(m_pin, &QAbstractButton::clicked, this, [model] { start(model->pin()); });
}

void PolicyView::reload()
{
    start(m_model->load());
}

void PolicyView::render()
{
    m_model->follow();
    renderVolumes();
    const Policy &values = m_model->values();
    const std::optional<std::size_t> plan = planOf(values);
    for (std::size_t index = 0; index < planCount; ++index) {
        m_presets.at(index)->setChosen(plan == index);
        // Tab goes to the choice, the arrow keys from there to the others.
        m_presets.at(index)->setFocusPolicy(index == plan.value_or(0) ? Qt::TabFocus : Qt::NoFocus);
    }
    const QString name = planName(values);
    m_planName->setText(name);
    setAccessible(m_tierCard, QAccessible::Grouping, name);
    m_tierCard->setAccessibleDescription(policyWords(values));
    for (std::size_t tier = 0; tier < tierCount; ++tier) {
        m_tiers.at(tier)->setNumber(values.at(tier));
    }
    const std::optional<std::int64_t> id = m_model->shownId();
    m_save->setEnabled(m_model->canSave());
    m_save->setRunning(id && m_model->saving().contains(*id));
    m_pin->setEnabled(id.has_value());
    m_pin->setRunning(id && m_model->pinning().contains(*id));
}

void PolicyView::renderVolumes()
{
    // There may be thousands: they are listed when they have changed, not with every choice of a tier.
    if (std::exchange(m_listed, m_model->state().volumes.version()) != m_model->state().volumes.version()) {
        listVolumes();
    }
    m_volumes->setCurrentIndex(static_cast<int>(m_model->volumeIndex().value_or(-1)));
    m_volumes->setVisible(!m_names.isEmpty());
}

void PolicyView::listVolumes()
{
    QStringList names;
    for (const Record &volume : m_model->state().volumes()) {
        names << str(volume, "name");
    }
    if (names != m_names) {
        m_names = names;
        m_volumes->clear();
        m_volumes->addItems(names);
    }
}

void PolicyView::resizeEvent(QResizeEvent *event)
{
    Board::resizeEvent(event);
    fitColumns();
}

void PolicyView::fitColumns()
{
    const bool narrow = width() - 2 * m_frame->margin() < scaled(narrowWidth);
    m_columns->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_presetColumn->setMinimumWidth(narrow ? 0 : scaled(presetWidth));
    m_presetColumn->setMaximumWidth(narrow ? QWIDGETSIZE_MAX : scaled(presetWidth));
}

} // namespace quillfen
