// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/tour.h"

#include "boards/operator/operatorview.h"
#include "shell/activity/activitylist.h"
#include "shell/activity/activitywindow.h"
#include "shell/appdelegate.h"
#include "shell/mainview/mainview.h"
#include "shell/mainview/sidebar.h"
#include "shell/mainwindow.h"
#include "shell/panel/menubarview.h"
#include "shell/rootview.h"
#include "shell/window/aboutpanel.h"
#include "state/appstate.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTextStream>
#include <QTimer>

#include <functional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillfen {

namespace {

constexpr auto agentPatience = 10s; ///< for the agent's first full answer
constexpr auto boardPatience = 2s;  ///< for a screen to come to rest
constexpr auto restTime = 300ms;    ///< a screen that has painted nothing for so long is at rest
constexpr auto pollInterval = 20ms;

/// Turns the event loop until `condition` holds; false when `patience` is over first.
bool waitUntil(const std::function<bool()> &condition, std::chrono::milliseconds patience)
{
    QElapsedTimer elapsed;
    elapsed.start();
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (condition() || std::chrono::milliseconds(elapsed.elapsed()) > patience) {
            loop.quit();
        }
    });
    poll.start(pollInterval);
    if (!condition()) {
        loop.exec();
    }
    return condition();
}

/// Tells how long ago a window painted anything.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget &window)
    {
        m_sincePaint.start();
        window.installEventFilter(this);
    }

    [[nodiscard]] bool atRest() const { return std::chrono::milliseconds(m_sincePaint.elapsed()) > restTime; }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::UpdateRequest || event->type() == QEvent::Paint) {
            m_sincePaint.start();
        }
        return false;
    }

private:
    QElapsedTimer m_sincePaint;
};

/// Says `line` on the terminal, with a line end.
void say(const QString &line)
{
    QTextStream(stderr) << line << '\n';
}

bool takePicture(QWidget &window, const QDir &folder, const QString &name)
{
    const PaintWatch watch(window);
    // A screen with a spinner never rests; its picture is taken all the same.
    waitUntil([&] { return watch.atRest(); }, boardPatience);
    const QString path = folder.filePath(name + ".png"_L1);
    if (window.grab().save(path)) {
        return true;
    }
    say(QCoreApplication::translate("Tour", "The picture %1 cannot be written.").arg(path));
    return false;
}

/// "Get a copy of my data" becomes "get-a-copy-of-my-data".
QString fileName(Section section)
{
    return rawTitle(section).toLower().replace(" & "_L1, "-"_L1).replace(u' ', u'-');
}

bool everythingArrived(const AppState &state)
{
    return state.connected() && state.signedIn() && !state.account().empty() && !state.vm().empty() &&
           state.statuses().size() >= static_cast<std::size_t>(state.volumes().size());
}

/// The screens that a healthy agent never shows, on a state of their own.
bool pictureOtherScreens(const QDir &folder, const QSize &size)
{
    const std::shared_ptr<AppState> state = AppState::create();
    MainWindow window(state);
    window.resize(size);
    window.show();
    state->agentError = QCoreApplication::translate("Tour", "the agent connection closed");
    const auto picture = [&](Screen screen, const QString &name) {
        waitUntil([&] { return window.root().screen() == screen; }, boardPatience);
        return takePicture(window, folder, name);
    };
    const bool downTaken = picture(Screen::AgentDown, u"agent-down"_s);
    state->connected = true;
    return downTaken && picture(Screen::FirstRun, u"first-run"_s);
}

/// The further tabs of the operator console; nothing on any other board.
bool pictureTabs(MainWindow &window, const QDir &folder, Section section)
{
    auto *console = window.findChild<OperatorView *>();
    if (section != Section::Operator || console == nullptr) {
        return true;
    }
    for (const QString &tab : {u"users"_s, u"tokens"_s, u"exports"_s}) {
        console->setTab(tab);
        if (!takePicture(window, folder, u"operator-"_s + tab)) {
            return false;
        }
    }
    return true;
}

bool pictureSections(MainWindow &window, const AppState &state, const QDir &folder)
{
    for (const Section section : offeredSections(state)) {
        MainView *view = window.root().mainView();
        if (view == nullptr) {
            say(QCoreApplication::translate("Tour", "The agent went away during the tour."));
            return false;
        }
        view->setSection(section);
        if (!takePicture(window, folder, fileName(section)) || !pictureTabs(window, folder, section)) {
            return false;
        }
    }
    return true;
}

bool pictureAboutPanel(AppDelegate &delegate, const QDir &folder)
{
    AboutPanel *panel = delegate.about();
    const bool taken = takePicture(*panel, folder, u"about"_s);
    panel->close();
    return taken;
}

/// With something of every kind in it: what a tour does itself leaves no traces there.
bool pictureActivity(AppDelegate &delegate, AppState &state, const QDir &folder)
{
    const auto call = [](const char *method, const QString &title) {
        RunningCall made;
        made.method = method;
        made.title = title;
        made.line = R"({"jsonrpc":"2.0","id":41,"method":")" + made.method + R"(","params":{"volume_id":3121}})";
        return made;
    };
    Activity &activity = state.activity;
    activity.noticed(u"Renaming…"_s);
    activity.end(activity.begin(call("volumes.rename", {})), {u"renamed"_s, false, {}});
    activity.end(activity.begin(call("volumes.resize", {})), {u"the plan has no room for 4 TB"_s, true, -32'010});
    RunningCall engine = call("vm.prepare", QCoreApplication::translate("Tour", "Setting up the engine"));
    engine.progressEvent = "vm.progress";
    const std::uint64_t running = activity.begin(engine);
    activity.progress(engine.progressEvent, u"40 %"_s);
    ActivityWindow *const window = delegate.showActivity();
    const bool overviewTaken = takePicture(*window, folder, u"activity"_s);
    auto *const list = window->findChild<ActivityList *>();
    list->setCurrentIndex(list->model()->index(1, 0));
    const bool detailTaken = takePicture(*window, folder, u"activity-detail"_s);
    window->close();
    activity.end(running, {});
    return overviewTaken && detailTaken;
}

bool pictureMenuBarPanel(const MainWindow &window, const std::shared_ptr<AppState> &state, const QDir &folder)
{
    MenuBarView panel(state);
    panel.showAt(window.geometry().center());
    return takePicture(panel, folder, u"menu-bar-panel"_s);
}

} // namespace

int runTour(MainWindow &window, AppDelegate &delegate, const std::shared_ptr<AppState> &state, const QString &folder)
{
    const QDir pictures(folder);
    if (!pictures.mkpath(u"."_s)) {
        say(QCoreApplication::translate("Tour", "The folder %1 cannot be made.").arg(folder));
        return 1;
    }
    const auto ready = [&] { return everythingArrived(*state) && window.root().mainView() != nullptr; };
    if (!waitUntil(ready, agentPatience)) {
        say(QCoreApplication::translate("Tour", "The agent did not show a signed-in account in time: %1")
                .arg(state->agentError().value_or(
                    QCoreApplication::translate("Tour", "it answers, but not with all of it"))));
        return 1;
    }
    const bool complete = pictureSections(window, *state, pictures) && pictureAboutPanel(delegate, pictures) &&
                          pictureActivity(delegate, *state, pictures) && pictureMenuBarPanel(window, state, pictures) &&
                          pictureOtherScreens(pictures, window.size());
    return complete ? 0 : 1;
}

} // namespace quillfen
