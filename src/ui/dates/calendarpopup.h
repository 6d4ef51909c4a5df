// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDate>
#include <QFrame>

class QCalendarWidget;

namespace quillfen {

/// A month to choose a day from, below the field that asks for it. Arrows move the day, Page Up and Page Down the
/// month, Enter chooses, Esc leaves. Deletes itself when it closes.
class CalendarPopup final : public QFrame {
    Q_OBJECT

public:
    CalendarPopup(const QDate &day, bool dark, QWidget *field);

Q_SIGNALS:
    void chosen(const QDate &day);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void place(const QWidget *field);

    QCalendarWidget *m_month;
    bool m_dark;
};

} // namespace quillfen
