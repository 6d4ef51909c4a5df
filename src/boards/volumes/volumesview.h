// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "volumestable.h"

#include "state/appstate.h"
#include "ui/parts/board.h"

#include <memory>

namespace quillfen {

class BoardFrame;
class EmptyState;
class OrphanAppliances;
class ReadyCopies;
class SearchField;
class VolumeSection;
class VolumesModel;
class VolumesTableModel;

/// The Volumes board: the account's volumes as a table under a search field, or what a volume is while there is none;
/// below it the card of the selected volume, and what a volume has left behind or may come of.
class VolumesView final : public Board {
    Q_OBJECT

public:
    explicit VolumesView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~VolumesView() override;

    void focusSearch() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// How the list stood when the search began.
    struct BeforeSearch {
        VolumesTable::Place place;
        std::optional<std::int64_t> selected;
    };

    void build();
    void render();
    void renderRows();
    void fitBody();
    void makeCard();
    void showCard();
    [[nodiscard]] bool hasMoreBelow() const;

    std::shared_ptr<AppState> m_state;
    std::shared_ptr<VolumesModel> m_model;
    VolumesTableModel *m_rows;
    VolumesTable *m_table;
    BoardFrame *m_frame;
    SearchField *m_search;
    EmptyState *m_empty;
    VolumeSection *m_card = nullptr; ///< made for the first selection
    OrphanAppliances *m_orphans;
    ReadyCopies *m_copies;
    QString m_query; ///< the search whose rows are shown
    BeforeSearch m_beforeSearch;
    Observer m_observer;
};

} // namespace quillfen
