// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/operator/optab.h"
#include "boards/operator/optokensmodel.h"

namespace quillfen {

class Button;
class InlineError;
class RecordList;
class Toggle;

/// Every API token of the service, to look up and to revoke.
class OpTokensView final : public OpTab {
    Q_OBJECT

public:
    explicit OpTokensView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~OpTokensView() override;

    void load() override;
    void focusSearch() override;
    void setRoom(int height) override;

private:
    /// What the list was last given.
    struct Drawn {
        std::uint64_t version = 0;
        bool known = false;
        bool all = false;
        bool operator==(const Drawn &) const = default;
    };

    void build();
    void render();
    void renderActions();
    void askToRevoke(std::int64_t id, const QString &label, const QString &email);

    std::shared_ptr<OpTokensModel> m_model;
    InlineError *m_error;
    RecordList *m_list;
    Toggle *m_showRevoked;
    Button *m_prune;
    Drawn m_drawn;
    Observer m_observer;
    Observer m_actions; ///< of the rows, which are not all to be sorted anew for a button
};

} // namespace quillfen
