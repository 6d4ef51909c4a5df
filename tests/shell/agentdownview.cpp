// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/arrival/agentdownview.h"

#include "shell/arrival/commandwell.h"
#include "shell/process/commandline.h"
#include "shell/window/platform.h"
#include "states.h"
#include "ui/controls/spinner.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
using namespace test;
using testing::Contains;
using testing::Not;

const QString command = u"launchctl kickstart -k gui/$(id -u)/io.quillfen.agent"_s;
const QString serviceCommand = u"systemctl --user restart quillfen-agent"_s;

struct ShownAgentDown {
    ShownAgentDown() : state(newState()), view(state)
    {
        view.resize(1180, 760);
        view.show();
    }

    QAbstractButton *button(const QString &name) { return named<QAbstractButton>(view, name); }

    std::shared_ptr<AppState> state;
    AgentDownView view;
};

TEST(AgentDownView, ShowsOnlyItsFixedTextsWithoutAnError)
{
    ShownAgentDown shown;
    const QStringList expected{
        u"Waiting for the Quillfen agent"_s,
        u"It starts with your login and restarts after an upgrade; the app reconnects every two seconds."_s,
        command,
        serviceCommand,
        u"Copy the command"_s,
        u"Copy the command for systemd"_s};
    QStringList found = texts(shown.view);
    found.removeIf([&](const QString &text) { return !expected.contains(text); });
    EXPECT_EQ(found.size(), expected.size());
    EXPECT_TRUE(shown.view.findChild<Spinner *>()->isVisible());
}

TEST(AgentDownView, FollowsTheErrorWhileItIsShown)
{
    ShownAgentDown shown;
    shown.state->agentError = u"the Quillfen agent is not running (/run/quill.sock)"_s;
    EXPECT_TRUE(
        waitFor([&] { return texts(shown.view).contains(u"the Quillfen agent is not running (/run/quill.sock)"_s); }));
    shown.state->agentError = u"the agent connection closed"_s;
    EXPECT_TRUE(waitFor([&] { return texts(shown.view).contains(u"the agent connection closed"_s); }));
    EXPECT_THAT(texts(shown.view), Not(Contains(u"the Quillfen agent is not running (/run/quill.sock)"_s)));
    shown.state->agentError = u""_s;
    EXPECT_TRUE(waitFor([&] { return !texts(shown.view).contains(u"the agent connection closed"_s); }));
}

TEST(AgentDownView, IsNotWidenedByALongError)
{
    ShownAgentDown shown;
    shown.state->agentError = QString(100'000, u'x');
    ASSERT_TRUE(waitFor([&] { return texts(shown.view).contains(QString(100'000, u'x')); }));
    EXPECT_LE(shown.view.minimumSizeHint().width(), 960);
    EXPECT_LE(shown.view.minimumSizeHint().height(), 600);
}

TEST(AgentDownView, CopiesEachCommandAndSaysSo)
{
    ShownAgentDown shown;
    QTest::mouseClick(shown.button(u"Copy the command"_s), Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), command);
    EXPECT_EQ(shown.state->toast(), u"Copied."_s);
    QTest::mouseClick(shown.button(u"Copy the command for systemd"_s), Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), serviceCommand);
}

TEST(AgentDownView, LetsItsCommandsBeSelected)
{
    ShownAgentDown shown;
    int selectable = 0;
    for (QLabel *label : shown.view.findChildren<QLabel *>()) {
        if (label->text() != command && label->text() != serviceCommand) {
            continue;
        }
        ++selectable;
        label->setSelection(0, static_cast<int>(label->text().size()));
        EXPECT_EQ(label->selectedText(), label->text());
    }
    EXPECT_EQ(selectable, 2);
}

TEST(AgentDownView, TellsThatItIsReconnecting)
{
    ShownAgentDown shown;
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(shown.view.findChild<Spinner *>());
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->role(), QAccessible::ProgressBar);
    EXPECT_EQ(face->text(QAccessible::Name), u"Reconnecting"_s);
}

struct ShownWell {
    explicit ShownWell(int width) : well(command, u"Copy"_s), line(well.findChild<CommandLine *>())
    {
        QGuiApplication::clipboard()->clear();
        well.resize(width, well.sizeHint().height());
        well.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&well));
    }

    CommandWell well;
    CommandLine *line;
};

TEST(CommandWell, CopiesTheWholeLineByAClickAndSaysSo)
{
    ShownWell shown(200);
    const QSignalSpy copied(&shown.well, &CommandWell::copied);
    QTest::mouseClick(shown.line, Qt::LeftButton, {}, QPoint(20, 8));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), command);
    EXPECT_EQ(copied.count(), 1);
}

TEST(CommandWell, CopiesNothingWhenTheMouseSelects)
{
    ShownWell shown(800);
    const QSignalSpy copied(&shown.well, &CommandWell::copied);
    QTest::mousePress(shown.line, Qt::LeftButton, {}, QPoint(2, 8));
    QMouseEvent move(QEvent::MouseMove, QPointF(80, 8), shown.line->mapToGlobal(QPointF(80, 8)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(shown.line, &move);
    QTest::mouseRelease(shown.line, Qt::LeftButton, {}, QPoint(80, 8));
    EXPECT_TRUE(shown.line->hasSelectedText());
    EXPECT_EQ(copied.count(), 0);
}

TEST(CommandWell, ElidesWhereThereIsNoRoomAndCopiesTheRestWithTheEllipsis)
{
    ShownWell shown(200);
    ASSERT_TRUE(shown.line->text().endsWith(u'…'));
    EXPECT_EQ(shown.line->accessibleName(), command);
    shown.line->setSelection(0, static_cast<int>(shown.line->text().size()));
    QTest::keyClick(shown.line, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), command);
    shown.line->setSelection(0, 9);
    QTest::keyClick(shown.line, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"launchctl"_s);
    shown.well.resize(800, shown.well.height());
    EXPECT_EQ(shown.line->text(), command);
}

} // namespace
} // namespace quillfen
