// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/export/exportmodel.h"
#include "boards/export/recentcopyrow.h"
#include "ui/lists/rowlist.h"
#include "ui/parts/board.h"

#include <cstdint>
#include <memory>

namespace quillfen {

class AgentLabel;
class BoardFrame;
class Card;
class ChoiceList;

/// The board on which a user takes a full copy of a volume out of the vault.
class ExportView final : public Board {
    Q_OBJECT

public:
    explicit ExportView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);

    void reload() override;

private:
    [[nodiscard]] QWidget *volumeCard();
    [[nodiscard]] QWidget *recentCopies();
    void render();
    void renderVolumes();
    void renderCopies();
    [[nodiscard]] RecentCopyRow *makeRow(std::int64_t id);

    std::shared_ptr<ExportModel> m_model;
    BoardFrame *m_frame;
    Card *m_volumeCard = nullptr;
    ChoiceList *m_volumes = nullptr;
    QWidget *m_noteRow = nullptr;
    AgentLabel *m_note = nullptr;
    QWidget *m_copies = nullptr;
    QBoxLayout *m_copyLayout;
    QWidget *m_noCopies = nullptr;
    RowList<std::int64_t, RecentCopyRow> m_rows;
    Observer m_observer;
};

} // namespace quillfen
