// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDateTimeEdit>
#include <QPointer>

namespace quillfen {

class CalendarPopup;

/// A date and a time to the minute, in the user's time zone: typed, stepped with Up and Down, or the day chosen from a
/// calendar (F4, Alt+Down, or the picture at its end). Left and Right go from part to part, Tab leaves. The wheel never
/// changes it.
///
/// What is typed counts when it is finished: with Enter, or when the focus leaves.
class DateTimeField final : public QDateTimeEdit {
    Q_OBJECT

public:
    explicit DateTimeField(const QString &accessibleName, int height = 32, QWidget *parent = nullptr);

    /// For a dark surface.
    void setDark(bool dark);
    /// Shows a moment; silent. What is being typed goes.
    void showMoment(const QDateTime &moment);
    /// What stands behind the time, such as the zone that tells apart a time that is there twice.
    void setNote(const QString &note);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user chose another date or minute. Seconds are those of the moment that was shown.
    void edited(const QDateTime &moment);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    [[nodiscard]] bool isMirrored() const; ///< as what stands around it; its own direction is that of its language
    [[nodiscard]] QRect iconRect() const;
    void applyColours();
    void showCalendar();
    void take(const QDateTime &shown);
    void goTo(int part, bool select);

    int m_height;
    bool m_dark = false;
    bool m_inKey = false;   ///< a key is being dealt with
    bool m_arrived = false; ///< typing has led to this part, of which nothing is typed yet
    QChar m_typed;          ///< by the last key
    QDateTime m_moment;     ///< as it was shown, with its seconds
    QString m_note;
    QPointer<CalendarPopup> m_calendar;
};

} // namespace quillfen
