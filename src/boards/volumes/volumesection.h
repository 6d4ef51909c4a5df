// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/volumes/volumecard.h"
#include "boards/volumes/volumesectionmodel.h"

#include <QWidget>

#include <memory>
#include <optional>

class QGridLayout;

namespace quillfen {

class AgentLabel;
class Button;
class Card;
class IconView;
class IscsiCard;
class KeyNote;
class Pill;
class StatCell;

/// The card of the selected volume: how well it is protected, what can be done with it, its numbers, its folder and its
/// key. Hidden while no volume is selected.
class VolumeSection final : public QWidget {
    Q_OBJECT

public:
    explicit VolumeSection(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~VolumeSection() override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void build();
    void buildBand();
    [[nodiscard]] QWidget *mountRow();
    [[nodiscard]] QWidget *servedRow();
    [[nodiscard]] QWidget *keyRow();
    void connectActions();
    void askForSize();
    void askToDelete();
    void render();
    void renderBand(std::int64_t id);
    void renderRows();

    std::shared_ptr<AppState> m_state;
    std::shared_ptr<VolumeSectionModel> m_model;
    std::optional<std::int64_t> m_id;
    VolumeCard m_shown;

    Card *m_card = nullptr;
    QGridLayout *m_bandGrid = nullptr;
    QWidget *m_actions = nullptr;
    bool m_narrow = false;
    AgentLabel *m_name = nullptr;
    Pill *m_protection = nullptr;
    Pill *m_appliance = nullptr;
    Button *m_start = nullptr;
    Button *m_mount = nullptr;
    Button *m_show = nullptr;
    Button *m_unmount = nullptr;
    Button *m_resize = nullptr;
    Button *m_timeTravel = nullptr;
    StatCell *m_points = nullptr;
    StatCell *m_oldest = nullptr;
    StatCell *m_cache = nullptr;
    StatCell *m_waiting = nullptr;
    QWidget *m_mountRow = nullptr;
    AgentLabel *m_mountLine = nullptr;
    Button *m_copyPath = nullptr;
    QWidget *m_servedRow = nullptr;
    IscsiCard *m_iscsi = nullptr;
    QWidget *m_keyRow = nullptr;
    IconView *m_keyIcon = nullptr;
    AgentLabel *m_keyTitle = nullptr;
    KeyNote *m_keyNote = nullptr;
    Button *m_reveal = nullptr;
    Button *m_copyKey = nullptr;
    Button *m_delete = nullptr;
    Observer m_observer;
};

} // namespace quillfen
