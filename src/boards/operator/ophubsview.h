// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/operator/hubline.h"
#include "boards/operator/ophubsmodel.h"
#include "boards/operator/optab.h"
#include "ui/lists/rowlist.h"

class QBoxLayout;

namespace quillfen {

class AgentLabel;
class Button;
class InlineError;
class PromotionBanner;
class StateText;
class TextField;

/// The hubs with what can be done with each, their replication, and the form that adds one.
class OpHubsView final : public OpTab {
    Q_OBJECT

public:
    explicit OpHubsView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~OpHubsView() override;

    void load() override;

private:
    /// A card of rows with a line that stands there while there are none.
    struct List {
        QBoxLayout *layout = nullptr;
        QWidget *rows = nullptr;
        QWidget *note = nullptr;
        StateText *waiting = nullptr;
        AgentLabel *empty = nullptr;
        AgentLabel *summary = nullptr;
        QWidget *summaryRow = nullptr;
    };

    void build();
    [[nodiscard]] QWidget *card(List &list, const QString &title, const QString &empty) const;
    [[nodiscard]] QWidget *form();
    void render();
    void renderNote(const List &list, bool none) const;
    [[nodiscard]] HubLine *makeLine();
    void askToPromote(const HubRow &hub);
    void askToDemote(const HubRow &hub);
    void askToRetire(const HubRow &hub);
    void askToRegister();

    std::shared_ptr<OpHubsModel> m_model;
    InlineError *m_error;
    PromotionBanner *m_banner;
    List m_hubs;
    List m_replicas;
    RowList<std::int64_t, HubLine> m_hubLines;
    RowList<int, ReplicaLine> m_replicaLines;
    TextField *m_name;
    TextField *m_address;
    Button *m_preflight;
    Observer m_observer;
    Observer m_offers;
};

} // namespace quillfen
