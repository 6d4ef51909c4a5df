// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/policy/policymodel.h"
#include "ui/parts/board.h"

#include <QStringList>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

class QBoxLayout;

namespace quillfen {

class AgentLabel;
class BoardFrame;
class Button;
class Card;
class Picker;
class PresetRow;
class TierRow;

/// The History policy board: how long each second of a volume is kept.
class PolicyView final : public Board {
    Q_OBJECT

public:
    explicit PolicyView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);

    void reload() override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QWidget *presetColumn();
    [[nodiscard]] QWidget *tierCard();
    [[nodiscard]] QWidget *pinCard();
    void connectActions();
    void render();
    void renderVolumes();
    void listVolumes();
    void fitColumns();

    std::shared_ptr<PolicyModel> m_model;
    BoardFrame *m_frame;
    Picker *m_volumes = nullptr;
    std::optional<std::uint64_t> m_listed; ///< the version of the list of volumes that the picker holds
    QStringList m_names;
    QBoxLayout *m_columns = nullptr;
    QWidget *m_presetColumn = nullptr;
    std::array<PresetRow *, planCount> m_presets{};
    Card *m_tierCard = nullptr;
    AgentLabel *m_planName = nullptr;
    std::array<TierRow *, tierCount> m_tiers{};
    Button *m_reset = nullptr;
    Button *m_save = nullptr;
    Button *m_pin = nullptr;
    Observer m_observer;
};

} // namespace quillfen
