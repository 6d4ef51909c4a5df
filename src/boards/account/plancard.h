// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QWidget>

#include <memory>

class QBoxLayout;

namespace quillfen {

class AgentLabel;
class Bar;
class Card;
class IconView;

/// The plan with how much of it is allocated, and beside it whose account this is.
class PlanCard final : public QWidget {
    Q_OBJECT

public:
    explicit PlanCard(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~PlanCard() override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QWidget *planCard();
    [[nodiscard]] QWidget *accountCard();
    void render();

    class AmountLine;

    std::shared_ptr<AppState> m_state;
    QBoxLayout *m_columns = nullptr;
    QWidget *m_account = nullptr;
    AgentLabel *m_plan = nullptr;
    AmountLine *m_amount = nullptr;
    Bar *m_bar = nullptr;
    AgentLabel *m_email = nullptr;
    Observer m_observer;
};

} // namespace quillfen
