// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "advancedmodel.h"

#include "ui/parts/board.h"

#include <memory>

class QStackedLayout;

namespace quillfen {

class EmptyState;
class Label;
class MethodPane;
class MethodsList;
class SearchField;

/// The Advanced board: every operation that the agent offers, to be run with parameters of one's own.
class AdvancedView final : public Board {
    Q_OBJECT

public:
    explicit AdvancedView(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~AdvancedView() override;

    void reload() override;
    /// The list's filter; where the output has the focus, its search.
    void focusSearch() override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] QWidget *listSide();
    void connectParts();
    void render();
    void renderList();

    std::shared_ptr<AdvancedModel> m_model;
    QWidget *m_side = nullptr;
    Label *m_line;
    SearchField *m_filter;
    MethodsList *m_list;
    Label *m_none;
    MethodPane *m_pane;
    EmptyState *m_hint;
    QStackedLayout *m_right;
    std::uint64_t m_listed = 0; ///< the version of the list that is shown
    Observer m_observer;
};

} // namespace quillfen
