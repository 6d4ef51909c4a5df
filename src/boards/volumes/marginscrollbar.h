// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QScrollBar>

class QAbstractScrollArea;

namespace quillfen {

/// The vertical scroll bar of a list inside a board, standing in the board's right margin: the list keeps its whole
/// width, and its columns stay in line with the cards below. A sibling of its area, which it follows; moves the area's
/// own, hidden bar.
class MarginScrollBar final : public QScrollBar {
    Q_OBJECT

public:
    /// `area` has its parent already.
    explicit MarginScrollBar(QAbstractScrollArea *area);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow();

    QAbstractScrollArea *m_area;
};

} // namespace quillfen
