// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/volumesection.h"

#include "boards/volumes/iscsicard.h"
#include "boards/volumes/keynote.h"
#include "desktop/clipboard.h"
#include "desktop/fileviewer.h"
#include "dialogs/dialogs.h"
#include "state/start.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/paint/iconview.h"
#include "ui/parts/card.h"
#include "ui/parts/pill.h"
#include "ui/parts/statcell.h"
#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QGridLayout>

#include <utility>

namespace quillfen {

namespace {

constexpr int compact = 28;
/// Below this width the actions stand under the name.
constexpr int narrowWidth = 780;
constexpr QMargins rowMargins{16, 10, 16, 10};

Button *action(const QString &text)
{
    return new Button(text, SecondaryButtonStyle{compact});
}

} // namespace

VolumeSection::VolumeSection(std::shared_ptr<AppState> state, QWidget *parent)
    : QWidget(parent), m_state(std::move(state)), m_model(std::make_shared<VolumeSectionModel>(m_state)),
      m_observer(
          {&m_state->selectedVolume, &m_state->volumes, &m_state->mounts, &m_state->statuses, &m_state->localAppliances,
           &m_state->vm, &m_model->points, &m_model->oldest, &m_model->mounting},
          [this] { render(); }, m_state->timing().frame)
{
    build();
    connectActions();
    render();
}

VolumeSection::~VolumeSection() = default;

void VolumeSection::build()
{
    m_card = new Card;
    buildBand();
    m_points = new StatCell(tr("Restore points"), QString());
    m_oldest = new StatCell(tr("Oldest point"), QString());
    m_cache = new StatCell(tr("Local cache"), QString());
    m_waiting = new StatCell(tr("Waiting to upload"), QString());
    m_card->addRow(statRow({m_points, m_oldest, m_cache, m_waiting}));
    m_card->addRow(mountRow());
    m_card->addRow(keyRow());
    m_card->addRow(servedRow());
    m_iscsi = new IscsiCard(m_state);
    m_card->addRow(m_iscsi);

    m_delete = new Button(tr("Delete volume…"), DangerButtonStyle{});
    m_delete->setControlHeight(compact);
    m_card->foot()->addLayout(column(
        {Item{m_delete, 0, Qt::AlignLeft}, Space{6},
         new Label(tr("Deleting keeps locked history until its retention ends."), Type::Caption, Theme::heading)},
        0, QMargins{0, 4, 0, 4}));
    setLayout(column({m_card}));
}

void VolumeSection::buildBand()
{
    m_name = new AgentLabel(QString(), Type::Heading, Theme::heading);
    m_protection = new Pill(QString(), Theme::okBg, Theme::okText);
    m_appliance = new Pill(QString(), Theme::panel, Theme::heading);
    m_appliance->setOutlined(true);
    m_start = new Button(tr("Start"), PrimaryButtonStyle{compact});
    m_mount = new Button(tr("Mount"), PrimaryButtonStyle{compact});
    m_show = new Button(Icon::FolderReveal, tr("Show in Finder"), SecondaryButtonStyle{compact});
    m_unmount = action(tr("Unmount"));
    m_resize = action(tr("Resize"));
    m_timeTravel = action(tr("Time travel"));

    auto *const heading = row({m_name, Space{4}, m_protection, m_appliance, Stretch{}});
    m_actions = new QWidget;
    m_actions->setLayout(row({m_start, m_mount, m_show, m_unmount, m_resize, m_timeTravel, Stretch{}}));
    auto *const band = new QWidget;
    m_bandGrid = new QGridLayout(band);
    m_bandGrid->setContentsMargins(0, 0, 0, 0);
    m_bandGrid->setSpacing(8);
    m_bandGrid->setColumnStretch(0, 1);
    m_bandGrid->addLayout(heading, 0, 0);
    m_bandGrid->addWidget(m_actions, 0, 1);
    m_card->band()->addWidget(band, 1);
}

QWidget *VolumeSection::mountRow()
{
    m_mountRow = new QWidget;
    m_mountLine = new AgentLabel(QString(), Type::Mono, Theme::heading);
    m_mountLine->setElideMode(Qt::ElideMiddle);
    m_copyPath = new Button(Icon::Copy, tr("Copy"), SecondaryButtonStyle{compact});
    m_mountRow->setLayout(
        row({new IconView(Icon::Drive, 18, Theme::text), Item{m_mountLine, 1}, m_copyPath}, 12, rowMargins));
    return m_mountRow;
}

QWidget *VolumeSection::servedRow()
{
    m_servedRow = new QWidget;
    const QString text = tr("On a Mac, Quillfen mounts SMB and NFS volumes; this volume is served to other machines on "
                            "your network.");
    auto *const line = new Label(text, Type::Body, Theme::text);
    line->setWrap(760);
    m_servedRow->setLayout(row({new IconView(Icon::ServerRack, 18, Theme::text), Item{line, 1000}, Stretch{}}, 12,
                               QMargins{16, 14, 16, 14}));
    return m_servedRow;
}

QWidget *VolumeSection::keyRow()
{
    m_keyRow = new QWidget;
    m_keyIcon = new IconView(Icon::Key, 18, Theme::text);
    m_keyTitle = new AgentLabel(QString(), Type::BodyMedium, Theme::heading);
    m_keyNote = new KeyNote;
    m_reveal = new Button(Icon::FolderReveal, tr("Reveal"), SecondaryButtonStyle{compact});
    m_copyKey = new Button(Icon::Copy, tr("Copy key"), SecondaryButtonStyle{compact});
    auto *const texts = column({m_keyTitle, Space{2}, m_keyNote});
    auto *const line = row({Item{m_keyIcon, 0, Qt::AlignTop}}, 12, QMargins{16, 12, 16, 12});
    line->addLayout(texts, 1000);
    line->addStretch(1);
    line->addWidget(m_reveal, 0, Qt::AlignTop);
    line->addWidget(m_copyKey, 0, Qt::AlignTop);
    m_keyRow->setLayout(line);
    return m_keyRow;
}

void VolumeSection::connectActions()
{
    // What a button is about is read when it is pressed: the card may have moved on to another volume since it was
    // drawn.
    const auto onPress = [this](Button *button, auto &&what) {
        connect(button, &QAbstractButton::clicked, this, [this, what] {
            if (m_id) {
                what(*m_id, m_shown.name);
            }
        });
    };
    VolumeSectionModel *const model = m_model.get();
    onPress(m_start, [model](std::int64_t id, const QString &name) { start(model->startAppliance(id, name)); });
    onPress(m_mount, [model](std::int64_t id, const QString &name) { start(model->mount(id, name)); });
    onPress(m_unmount, [model](std::int64_t id, const QString &name) { start(model->unmount(id, name)); });
    onPress(m_timeTravel, [model](std::int64_t id, const QString &) { model->timeTravel(id); });
    onPress(m_show, [this](std::int64_t, const QString &) { showFolder(m_shown.folder); });
    onPress(m_copyPath, [this](std::int64_t, const QString &) { copyText(m_shown.mountPath); });
    onPress(m_reveal, [this](std::int64_t, const QString &) { revealFile(m_shown.keyPath); });
    onPress(m_copyKey, [this, model](std::int64_t, const QString &) { model->copyKey(m_shown.keyPath); });
    onPress(m_resize, [this](std::int64_t, const QString &) { askForSize(); });
    onPress(m_delete, [this](std::int64_t, const QString &) { askToDelete(); });
}

void VolumeSection::askForSize()
{
    const Record *const volume = volumeWithId(*m_state, *m_id);
    if (volume == nullptr) {
        return;
    }
    const std::int64_t id = *m_id;
    const QString name = m_shown.name;
    const std::int64_t current = wholeGB(*volume);
    const std::shared_ptr<VolumeSectionModel> model = m_model;
    const std::optional<QString> typed =
        askText(this, tr("Resize %1").arg(name), tr("Now %1 GB. Whole GB only; the filesystem follows.").arg(current),
                QString::number(current), tr("Resize"));
    // The dialog let the rest of the program go on: from here on only what was taken before it is touched.
    const std::optional<std::int64_t> size = typed ? typedSize(*typed, current) : std::nullopt;
    if (size) {
        start(model->resize(id, name, current, *size));
    }
}

void VolumeSection::askToDelete()
{
    const std::int64_t id = *m_id;
    const QString name = m_shown.name;
    const std::shared_ptr<VolumeSectionModel> model = m_model;
    const bool agreed = confirm(this, tr("Delete %1?").arg(name),
                                tr("The volume is unmounted and its appliance removed from this Mac. Its data and "
                                   "history stay recoverable for 30 days, then are destroyed."),
                                tr("Delete"), Destructive::Yes);
    if (agreed) {
        start(model->remove(id, name));
    }
}

void VolumeSection::render()
{
    const std::optional<std::int64_t> selected = m_state->selectedVolume();
    const Record *const volume = selected ? volumeWithId(*m_state, *selected) : nullptr;
    setVisible(volume != nullptr);
    if (volume == nullptr) {
        m_id.reset();
        m_iscsi->setVolume(std::nullopt);
        return;
    }
    m_shown = volumeCard(*m_state, *volume);
    if (m_id != selected) {
        m_id = selected;
        start(m_model->show(*selected));
    }
    renderBand(*selected);
    renderRows();
}

void VolumeSection::renderBand(std::int64_t id)
{
    const bool isProtected = m_shown.protection == VolumeCard::Protection::Protected;
    m_name->setText(m_shown.name);
    m_protection->setText(m_shown.protectionText);
    m_protection->setColours(isProtected ? Theme::okBg : Theme::panel2, isProtected ? Theme::okText : Theme::warn);
    m_protection->setOutlined(!isProtected);
    m_appliance->setText(m_shown.applianceText);

    const bool mounting = m_model->mounting().contains(id);
    // What comes is shown before what goes is hidden: the focus of a button that goes moves on to its successor.
    m_mount->setVisible(m_shown.offersMount || mounting);
    m_mount->setText(mounting ? tr("Mounting") : tr("Mount"));
    m_mount->setRunning(mounting);
    m_start->setVisible(m_shown.offersStart && !mounting);
    m_show->setVisible(m_shown.isMounted && !m_shown.isIscsi);
    m_unmount->setVisible(m_shown.isMounted && !m_shown.isIscsi);
}

void VolumeSection::renderRows()
{
    m_points->setValue(QString::number(m_model->points()));
    m_oldest->setValue(m_model->oldest());
    m_cache->setValue(m_shown.cache);
    m_waiting->setValue(m_shown.waiting);

    m_mountRow->setVisible(!m_shown.isIscsi);
    m_mountLine->setText(m_shown.mountLine);
    m_mountLine->setColour(m_shown.isMounted ? Theme::heading : Theme::text);
    m_servedRow->setVisible(m_shown.isIscsi);
    m_iscsi->setVisible(m_shown.isIscsi);
    m_iscsi->setVolume(m_shown.isIscsi ? m_id : std::nullopt);

    m_keyRow->setVisible(m_shown.hasOwnKey);
    m_keyIcon->setIcon(m_shown.keyHere ? Icon::Key : Icon::KeySlash, m_shown.keyHere ? Theme::text : Theme::warn);
    m_keyTitle->setText(m_shown.keyTitle);
    m_keyNote->setText(m_shown.keyFile, m_shown.keyNote);
    m_reveal->setVisible(m_shown.keyHere);
    m_copyKey->setVisible(m_shown.keyHere);
}

void VolumeSection::resizeEvent(QResizeEvent *)
{
    const bool narrow = width() < scaled(narrowWidth);
    if (std::exchange(m_narrow, narrow) != narrow) {
        m_bandGrid->removeWidget(m_actions);
        m_bandGrid->addWidget(m_actions, narrow ? 1 : 0, narrow ? 0 : 1);
        m_bandGrid->setContentsMargins(0, narrow ? 5 : 0, 0, narrow ? 2 : 0);
        m_bandGrid->setVerticalSpacing(narrow ? 14 : 0);
    }
}

} // namespace quillfen
