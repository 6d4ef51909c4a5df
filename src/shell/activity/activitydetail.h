// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/activity/activitywords.h"

#include <QWidget>

#include <vector>

namespace quillfen {

class AgentLabel;
class OutputView;
class StateText;
class WordsView;

/// One of the activity, whole: how and when it went, everything that was said, and the request as it was sent.
class ActivityDetail final : public QWidget {
    Q_OBJECT

public:
    explicit ActivityDetail(QWidget *parent = nullptr);

    void setFacts(const ActivityFacts &facts);

Q_SIGNALS:
    void copyRequested();

private:
    /// A caption and what stands below it.
    struct Cell {
        QWidget *whole;
        class Label *caption;
        AgentLabel *value;
    };

    [[nodiscard]] Cell createCell();

    StateText *m_outcome;
    AgentLabel *m_method;
    std::vector<Cell> m_cells;
    WordsView *m_words;
    OutputView *m_longWords; ///< in its place, for words that would take too long to lay out whole
    OutputView *m_line;
    QWidget *m_well;
    QString m_shownLine;
    QString m_shownWords;
};

} // namespace quillfen
