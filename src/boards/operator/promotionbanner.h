// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/values.h"

#include <QWidget>

namespace quillfen {

class AgentLabel;

/// Tells of a promotion that runs: its state, and what the agent says about it. Hidden while none does.
class PromotionBanner final : public QWidget {
    Q_OBJECT

public:
    explicit PromotionBanner(QWidget *parent = nullptr);
    void setPromotion(const Record &promotion);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    AgentLabel *m_title;
    AgentLabel *m_detail;
};

} // namespace quillfen
