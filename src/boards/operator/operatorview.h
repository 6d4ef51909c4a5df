// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/operator/oprows.h"
#include "state/appstate.h"
#include "ui/parts/board.h"

#include <array>
#include <memory>

namespace quillfen {

class BoardFrame;
class OpTab;
class Segmented;

/// The console of those who run the service: hubs, users, tokens and exports, one tab each. A tab asks the agent each
/// time it is shown; what was typed on it stays as long as the board.
class OperatorView final : public Board {
    Q_OBJECT

public:
    explicit OperatorView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);

    [[nodiscard]] OperatorTab tab() const noexcept { return m_tab; }
    /// Shows the tab of this name; the hubs for any other name.
    void setTab(const QString &name);

    void reload() override;
    void focusSearch() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showTab(OperatorTab tab);
    [[nodiscard]] OpTab *make(OperatorTab tab) const;
    [[nodiscard]] OpTab *current() const;
    void fit();

    std::shared_ptr<AppState> m_state;
    BoardFrame *m_frame;
    Segmented *m_choice;
    OperatorTab m_tab = OperatorTab::Hubs;
    std::array<OpTab *, 4> m_tabs{}; ///< made when they are first shown
};

} // namespace quillfen
