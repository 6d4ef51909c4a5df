// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/operator/opexportsmodel.h"
#include "boards/operator/optab.h"

namespace quillfen {

class InlineError;
class RecordList;

/// The copies and media orders, to mark as shipped and to remove.
class OpExportsView final : public OpTab {
    Q_OBJECT

public:
    explicit OpExportsView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~OpExportsView() override;

    void load() override;
    void focusSearch() override;
    void setRoom(int height) override;

private:
    void build();
    void render();
    void askToShip(std::int64_t id);
    void askToDelete(std::int64_t id);

    std::shared_ptr<OpExportsModel> m_model;
    InlineError *m_error;
    RecordList *m_list = nullptr;
    Observer m_observer;
    Observer m_actions; ///< of the rows, which are not all to be sorted anew for a button
};

} // namespace quillfen
