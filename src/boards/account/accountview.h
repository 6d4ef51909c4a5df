// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "accountmodel.h"
#include "ui/parts/board.h"

#include <memory>

namespace quillfen {

class BoardFrame;
class Button;

/// The Account & engine board: the plan, the engine on this computer, the account's tokens, and what can be done with
/// the account as a whole.
class AccountView final : public Board {
    Q_OBJECT

public:
    explicit AccountView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~AccountView() override;

    void reload() override;

private:
    [[nodiscard]] AccountModel::Reveal revealer();
    [[nodiscard]] QWidget *accountActions();
    void askToSignOut();
    void askToClose();
    void render();

    std::shared_ptr<AppState> m_state;
    std::shared_ptr<AccountModel> m_model;
    BoardFrame *m_frame;
    Button *m_recover = nullptr;
    Button *m_close = nullptr;
    Observer m_observer;
};

} // namespace quillfen
