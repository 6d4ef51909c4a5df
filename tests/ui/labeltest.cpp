// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/text/label.h"

#include "kit.h"
#include "ui/theme.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

AgentLabel agentLabel(const QString &text)
{
    kit::wearHouseLook();
    return AgentLabel(text, Type::Body, Theme::heading);
}

bool showsToolTip(AgentLabel &label)
{
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), label.mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&label, &help);
    return help.isAccepted() && !QToolTip::text().isEmpty();
}

} // namespace

TEST(Label, ShowsMarkupAndAmpersandsAsTheyAre)
{
    kit::wearHouseLook();
    Label label(u"Account & engine <b>x</b>"_s, Type::Body, Theme::text);
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    Label without(u"Account  engine <b>x</b>"_s, Type::Body, Theme::text);
    EXPECT_GT(label.sizeHint().width(), without.sizeHint().width());
}

TEST(Label, IsAsHighAsItsLines)
{
    kit::wearHouseLook();
    Label one(u"One line"_s, Type::Body, Theme::text);
    EXPECT_EQ(one.sizeHint().height(), lineHeight(Type::Body));
    Label wrapped(u"Several words that need more than a single line here"_s, Type::Body, Theme::text);
    wrapped.setWrap(100);
    EXPECT_LE(wrapped.sizeHint().width(), 100);
    EXPECT_EQ(wrapped.heightForWidth(100) % lineHeight(Type::Body), 0);
    EXPECT_GE(wrapped.heightForWidth(100), 3 * lineHeight(Type::Body));
}

TEST(Label, PaintsInItsColour)
{
    kit::wearHouseLook();
    Label label(u"████"_s, Type::Body, Theme::danger);
    label.resize(label.sizeHint());
    EXPECT_GT(kit::count(kit::picture(label), Theme::danger), 20);
    label.setColour(Theme::ok);
    const QImage after = kit::picture(label);
    EXPECT_GT(kit::count(after, Theme::ok), 20);
    EXPECT_EQ(kit::count(after, Theme::danger), 0);
}

TEST(AgentLabel, KeepsTheWholeTextAndNamesItself)
{
    AgentLabel label = agentLabel(u"<i>photos</i> & more"_s);
    EXPECT_EQ(label.text(), u"<i>photos</i> & more"_s);
    EXPECT_EQ(label.accessibleName(), u"<i>photos</i> & more"_s);
}

TEST(AgentLabel, HugeTextsNeverWidenTheWindow)
{
    for (const int size : {16 * 1024, 1024 * 1024}) {
        kit::wearHouseLook();
        QWidget window;
        auto *layout = new QHBoxLayout(&window);
        auto *label = new AgentLabel(QString(size, u'W'), Type::Body, Theme::heading);
        layout->addWidget(label);
        window.resize(300, 40);
        window.show();
        QCoreApplication::processEvents();
        EXPECT_EQ(window.width(), 300);
        EXPECT_LE(label->sizeHint().width(), 2000);
        EXPECT_LE(label->minimumSizeHint().width(), 40);
        EXPECT_EQ(label->height(), lineHeight(Type::Body));
        EXPECT_EQ(label->text().size(), size);
    }
}

TEST(AgentLabel, PaintingAHugeTextCostsWhatCanBeSeen)
{
    AgentLabel label = agentLabel(QString(1024 * 1024, u'm'));
    label.resize(200, 20);
    (void)kit::picture(label); // fonts and glyphs are loaded once
    QElapsedTimer timer;
    timer.start();
    constexpr int rounds = 10;
    for (int round = 0; round < rounds; ++round) {
        (void)kit::picture(label);
    }
    EXPECT_LT(timer.elapsed() / rounds, 40) << "milliseconds a paint";
}

TEST(AgentLabel, SharesHugeTextsInsteadOfCopyingThem)
{
    const QString text(1024 * 1024, u'x');
    AgentLabel label = agentLabel(text);
    EXPECT_EQ(label.text().constData(), text.constData());
    EXPECT_EQ(label.accessibleName().constData(), text.constData());
}

TEST(AgentLabel, OverridesOfDirectionAreVisibleInName)
{
    const AgentLabel label = agentLabel(QStringLiteral("invoice\u202Egnp.exe"));
    EXPECT_EQ(label.accessibleName(), u"invoice⟨U+202E⟩gnp.exe"_s);
    EXPECT_EQ(label.text().size(), 15);
}

TEST(AgentLabel, HasATooltipOnlyWhileElided)
{
    AgentLabel label = agentLabel(u"a-name-that-is-far-too-long"_s);
    label.resize(60, 20);
    label.show();
    EXPECT_TRUE(label.isElided());
    EXPECT_TRUE(showsToolTip(label));
    EXPECT_EQ(QToolTip::text(), u"a-name-that-is-far-too-long"_s);

    label.resize(label.sizeHint());
    EXPECT_FALSE(label.isElided());
    EXPECT_FALSE(showsToolTip(label));
}

TEST(AgentLabel, TooltipOfMarkupIsPlain)
{
    AgentLabel label = agentLabel(u"<h1>huge</h1><table><tr><td>and long</td></tr></table>"_s);
    label.resize(40, 20);
    label.show();
    ASSERT_TRUE(showsToolTip(label));
    EXPECT_TRUE(QToolTip::text().contains(u"&lt;h1&gt;"_s)) << QToolTip::text().toStdString();
}

TEST(AgentLabel, ElidesAtItsEndOrInTheMiddle)
{
    AgentLabel label = agentLabel(u"█████████████████████iiiiiiiiiiiiiiiiiiiiii"_s);
    label.resize(80, 20);
    const QImage right = kit::picture(label);
    label.setElideMode(Qt::ElideMiddle);
    const QImage middle = kit::picture(label);
    EXPECT_GT(kit::count(right, Theme::heading), kit::count(middle, Theme::heading));
}

TEST(AgentLabel, WrapsOverAFewLinesWhenTold)
{
    AgentLabel label = agentLabel(u"word "_s.repeated(200));
    label.setMaximumLines(3);
    EXPECT_TRUE(label.hasHeightForWidth());
    EXPECT_EQ(label.heightForWidth(120), 3 * lineHeight(Type::Body));
    label.setText(u"word"_s);
    EXPECT_EQ(label.heightForWidth(120), lineHeight(Type::Body));
}

TEST(AgentLabel, CopiesTheOriginalFromItsMenu)
{
    const QString text = QStringLiteral("two\nlines \u202E and more");
    AgentLabel label = agentLabel(text);
    label.resize(40, 20);
    label.show();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(3, 3), label.mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(&label, &event);
    const auto *menu = label.findChild<QMenu *>();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_EQ(menu->actions().constFirst()->text(), u"Copy"_s);
    menu->actions().constFirst()->trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), text);
}

TEST(AgentLabel, TheSameTextAgainIsQuiet)
{
    AgentLabel label = agentLabel(u"steady"_s);
    label.resize(80, 20);
    label.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&label));
    QCoreApplication::processEvents();
    struct Counter : QObject {
        int paints = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            paints += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } counter;
    label.installEventFilter(&counter);
    label.setText(u"steady"_s);
    label.setColour(Theme::heading);
    QCoreApplication::processEvents();
    EXPECT_EQ(counter.paints, 0);
    label.setText(u"changed"_s);
    QTest::qWait(30);
    EXPECT_GE(counter.paints, 1);
}
