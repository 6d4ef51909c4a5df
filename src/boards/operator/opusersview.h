// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/operator/optab.h"
#include "boards/operator/opusersmodel.h"

namespace quillfen {

class InlineError;
class RecordList;

/// The users of the service, to approve and to remove, and below them the tenants.
class OpUsersView final : public OpTab {
    Q_OBJECT

public:
    explicit OpUsersView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~OpUsersView() override;

    void load() override;
    void focusSearch() override;
    void setRoom(int height) override;

private:
    void build();
    void render();
    void fit();
    void askToDelete(std::int64_t id, const QString &email);

    std::shared_ptr<OpUsersModel> m_model;
    InlineError *m_error;
    RecordList *m_users = nullptr;
    RecordList *m_tenants = nullptr;
    int m_room = 0;
    Observer m_observer;
    Observer m_actions; ///< of the rows, which are not all to be sorted anew for a button
};

} // namespace quillfen
