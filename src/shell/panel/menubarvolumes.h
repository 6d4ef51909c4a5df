// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/lists/longlist.h"

#include <memory>

namespace quillfen {

class AppState;

/// The volumes as rows of the menu-bar panel, in the order of the state.
class MenuBarVolumes final : public RowSource {
public:
    explicit MenuBarVolumes(std::shared_ptr<AppState> state);
    ~MenuBarVolumes() override;

    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] QString rowKey(int row) const override;
    [[nodiscard]] QWidget *makeRow() override;
    void fillRow(QWidget *widget, int row) override;

private:
    std::shared_ptr<AppState> m_state;
};

} // namespace quillfen
