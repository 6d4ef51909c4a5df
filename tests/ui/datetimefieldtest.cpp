// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/dates/datetimefield.h"

#include "ui/dates/calendarpopup.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <gmock/gmock.h>

#include <ctime>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;

class DateTimeFieldTest : public testing::Test {
protected:
    void SetUp() override
    {
        auto *const layout = new QVBoxLayout(&window);
        layout->addWidget(field);
        layout->addWidget(other);
        field->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
        field->showMoment(QDateTime(QDate(2026, 11, 20), QTime(11, 6, 42, 500)));
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        field->setFocus(Qt::TabFocusReason);
    }

    [[nodiscard]] static QWidget *calendar() { return QApplication::activePopupWidget(); }

    /// What was told last.
    [[nodiscard]] QDateTime told() const { return edits.isEmpty() ? QDateTime() : edits.last().first().toDateTime(); }

    QWidget window;
    DateTimeField *field = new DateTimeField(u"Date and time"_s, 36);
    QPushButton *other = new QPushButton(u"Other"_s);
    QSignalSpy edits{field, &DateTimeField::edited};
};

TEST_F(DateTimeFieldTest, ShowsDateAndMinuteWithoutTellingOfIt)
{
    EXPECT_EQ(field->text(), u"Nov 20, 2026 · 11:06"_s);
    EXPECT_TRUE(edits.isEmpty());
    field->setNote(u"GMT+2"_s);
    EXPECT_EQ(field->text(), u"Nov 20, 2026 · 11:06 GMT+2"_s);
    field->setNote({});
    EXPECT_EQ(field->text(), u"Nov 20, 2026 · 11:06"_s);
    EXPECT_TRUE(edits.isEmpty());
}

TEST_F(DateTimeFieldTest, ArrowsStepThePartTheyStandIn)
{
    field->setCurrentSection(QDateTimeEdit::MinuteSection);
    QTest::keyClick(field, Qt::Key_Up);
    EXPECT_EQ(told(), QDateTime(QDate(2026, 11, 20), QTime(11, 7, 42, 500))) << "the second stays what it was";
    field->setCurrentSection(QDateTimeEdit::MonthSection);
    QTest::keyClick(field, Qt::Key_Down);
    EXPECT_EQ(told().date(), QDate(2026, 10, 20));
}

/// The clocks of Berlin, as long as it lives.
class Berlin final {
public:
    Berlin() : m_before(qgetenv("TZ")), m_wasSet(qEnvironmentVariableIsSet("TZ")) { set("Europe/Berlin"); }
    ~Berlin()
    {
        if (m_wasSet) {
            set(m_before);
        } else {
            qunsetenv("TZ");
            tzset();
        }
    }
    Berlin(const Berlin &) = delete;
    Berlin &operator=(const Berlin &) = delete;

private:
    static void set(const QByteArray &zone)
    {
        qputenv("TZ", zone);
        tzset();
    }

    QByteArray m_before;
    bool m_wasSet;
};

TEST_F(DateTimeFieldTest, InAnHourThatIsThereTwiceAStepStaysInItsOwn)
{
    const Berlin berlin;
    for (const QString &begin : {u"2026-10-25T00:30:42Z"_s, u"2026-10-25T01:30:42Z"_s}) {
        const QDateTime moment = QDateTime::fromString(begin, Qt::ISODate).toLocalTime();
        field->showMoment(moment);
        EXPECT_EQ(field->text(), u"Oct 25, 2026 · 02:30"_s);
        field->setCurrentSection(QDateTimeEdit::MinuteSection);
        QTest::keyClick(field, Qt::Key_Up);
        EXPECT_EQ(told().toUTC(), moment.toUTC().addSecs(60)) << begin.toStdString();
        field->showMoment(moment);
        field->setCurrentSection(QDateTimeEdit::HourSection);
        QTest::keyClick(field, Qt::Key_Up);
        EXPECT_EQ(told().toString(u"HH:mm:ss"_s), u"03:30:42"_s);
    }
}

TEST_F(DateTimeFieldTest, WhatIsTypedCountsWhenItIsFinished)
{
    field->setCurrentSection(QDateTimeEdit::HourSection);
    field->setSelectedSection(QDateTimeEdit::HourSection);
    QTest::keyClicks(field, u"08"_s);
    EXPECT_TRUE(edits.isEmpty());
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(told(), QDateTime(QDate(2026, 11, 20), QTime(8, 6, 42, 500)));
}

TEST_F(DateTimeFieldTest, WhatStandsBetweenThePartsIsTypedWithoutLeaving)
{
    field->setSelectedSection(QDateTimeEdit::MonthSection);
    QTest::keyClicks(field, u"Oct 5, 2025 · 8:07 : "_s);
    EXPECT_EQ(QApplication::focusWidget(), field);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(told(), QDateTime(QDate(2025, 10, 5), QTime(8, 7, 42, 500))) << field->text().toStdString();
    field->setSelectedSection(QDateTimeEdit::MonthSection);
    QTest::keyClick(field, Qt::Key_Left, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), field);
}

TEST_F(DateTimeFieldTest, TheSameMinuteAgainIsNoEdit)
{
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(edits.isEmpty());
}

TEST_F(DateTimeFieldTest, TheWheelLeavesItAlone)
{
    const QPoint centre = field->rect().center();
    QWheelEvent wheel(centre, field->mapToGlobal(centre), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(field, &wheel);
    EXPECT_FALSE(wheel.isAccepted());
    EXPECT_TRUE(edits.isEmpty());
}

TEST_F(DateTimeFieldTest, ANoteThatComesOrGoesLeavesTheCursorWhereItIs)
{
    auto *const line = field->findChild<QLineEdit *>();
    field->setSelectedSection(QDateTimeEdit::HourSection);
    for (const QString &note : {u"CEST"_s, u"CET"_s, QString()}) {
        field->setNote(note);
        EXPECT_EQ(field->currentSection(), QDateTimeEdit::HourSection) << note.toStdString();
        EXPECT_EQ(line->selectedText(), u"11"_s) << note.toStdString();
    }
    QTest::keyClick(field, Qt::Key_Up);
    EXPECT_EQ(field->text(), u"Nov 20, 2026 · 12:06"_s);
    field->setSelectedSection(QDateTimeEdit::MonthSection);
    field->setNote(u"CET"_s);
    EXPECT_EQ(line->selectedText(), u"Nov"_s) << "the first part, too";
}

TEST_F(DateTimeFieldTest, TabLeavesAtOnce)
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), other);
}

TEST_F(DateTimeFieldTest, TheCalendarOpensByKeyAndByItsPicture)
{
    QTest::keyClick(field, Qt::Key_F4);
    ASSERT_NE(calendar(), nullptr);
    calendar()->close();
    QTest::keyClick(field, Qt::Key_Down, Qt::AltModifier);
    ASSERT_NE(calendar(), nullptr);
    calendar()->close();
    QTest::mouseClick(field, Qt::LeftButton, {}, QPoint(field->width() - 20, field->height() / 2));
    ASSERT_NE(calendar(), nullptr);
    QTest::keyClick(calendar(), Qt::Key_Escape);
    EXPECT_EQ(calendar(), nullptr);
    EXPECT_TRUE(edits.isEmpty());
}

TEST_F(DateTimeFieldTest, ADayOfTheCalendarKeepsTheTime)
{
    QTest::keyClick(field, Qt::Key_F4);
    ASSERT_NE(calendar(), nullptr);
    QWidget *const days = QApplication::focusWidget();
    ASSERT_TRUE(calendar()->isAncestorOf(days));
    QTest::keyClick(days, Qt::Key_Left);
    QTest::keyClick(days, Qt::Key_Return);
    EXPECT_EQ(calendar(), nullptr);
    EXPECT_EQ(told(), QDateTime(QDate(2026, 11, 19), QTime(11, 6, 42, 500)));
}

} // namespace
} // namespace quillfen
