// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/appdelegate.h"
#include "shell/mainwindow.h"
#include "shell/process/launch.h"
#include "shell/process/oneprocess.h"
#include "shell/process/product.h"
#include "shell/rootview.h"
#include "shell/tour.h"
#include "shell/window/controlsside.h"
#include "shell/window/platform.h"
#include "state/appstate.h"
#include "ui/style/focusring.h"
#include "ui/style/housestyle.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

using namespace quillfen;

namespace {

constexpr int usageError = 2;

QString tr(const char *text)
{
    return QCoreApplication::translate("Main", text);
}

void print(std::FILE *stream, const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
}

QStringList argumentsOf(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return arguments;
}

/// The exit code where the program ends without a window: it was only asked something, or cannot start.
std::optional<int> endWithoutWindow(const LaunchOptions &options)
{
    if (options.problem) {
        print(stderr, *options.problem + u'\n' + tr("Try: quillfen --help") + u'\n');
        return usageError;
    }
    if (options.help || options.version) {
        print(stdout, options.help ? helpText() : QStringLiteral("quillfen %1\n").arg(AppState::appVersion()));
        return EXIT_SUCCESS;
    }
    if (const std::optional<QString> problem = platform::displayProblem()) {
        print(stderr, *problem + u'\n');
        return EXIT_FAILURE;
    }
    return std::nullopt;
}

/// Qt ends the program by an abort where a display is named but does not answer; a sentence and an exit code do better.
void explainFatal(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    print(stderr, message + u'\n');
    if (type == QtFatalMsg) {
        print(stderr, tr("Quillfen cannot start. Is the display that DISPLAY or WAYLAND_DISPLAY names there?") + u'\n');
        std::_Exit(EXIT_FAILURE);
    }
}

/// The exit code where a client that runs already has been asked instead.
std::optional<int> endAfterHandingOver(Door *door, const Wish &wish)
{
    switch (door == nullptr ? Claim::First : door->claim(wish)) {
    case Claim::First:
        break;
    case Claim::HandedOver:
        return EXIT_SUCCESS;
    case Claim::Unanswered:
        print(stderr, tr("Quillfen is running already but does not answer.") + u'\n');
        return EXIT_FAILURE;
    }
    return std::nullopt;
}

int runWindow(QApplication &application, const QStringList &arguments, const LaunchOptions &options, Door *door)
{
    applyHouseLook(application);
    installFocusRing(application);

    const std::shared_ptr<AppState> state = AppState::create();
    AppDelegate delegate(arguments);
    delegate.setQuitOnClose(options.quitOnClose);
    MainWindow window(state);
    platform::watchControlsSide(window, [](bool atLeft) { controlsAtLeft() = atLeft; });
    bool begun = false;      // in the background it begins before its window appears
    std::vector<Wish> early; // of later starts, and of the bus that has started this one
    const auto begin = [&] {
        if (std::exchange(begun, true)) {
            return;
        }
        delegate.windowAppeared(state);
        Wish wish = wishOf(options, arguments);
        wish.show = false; // it is on its way
        wish.code.clear(); // taken as it is, by the start-up action
        delegate.grant(wish);
        std::ranges::for_each(early, [&](const Wish &one) { delegate.grant(one); });
        if (!options.tourFolder) {
            delegate.openStatusArea();
            delegate.watchOutcomes();
        }
    };
    QObject::connect(&window.root(), &RootView::appeared, &delegate, begin);
    if (door != nullptr) {
        QObject::connect(door, &Door::wished, &delegate, [&](const Wish &wish) {
            if (begun) {
                delegate.grant(wish);
            } else {
                early.push_back(wish);
            }
        });
    }
    QObject::connect(&window, &MainWindow::aboutRequested, &delegate, &AppDelegate::about);
    QObject::connect(&window, &MainWindow::shortcutsRequested, &delegate, &AppDelegate::showShortcuts);
    QObject::connect(&window, &MainWindow::activityRequested, &delegate, &AppDelegate::showActivity);
    QObject::connect(&window, &MainWindow::quitRequested, &application, &QApplication::quit);
    QObject::connect(&delegate, &AppDelegate::quitRequested, &application, &QApplication::quit);
    if (options.background) {
        QMetaObject::invokeMethod(&delegate, begin, Qt::QueuedConnection);
    } else {
        window.show();
    }

    const int code = options.tourFolder ? runTour(window, delegate, state, *options.tourFolder) : QApplication::exec();
    state->shutDown();
    return code;
}

} // namespace

int main(int argc, char **argv)
{
    const QStringList arguments = argumentsOf(argc, argv);
    const LaunchOptions options = launchOptionsFrom(arguments);
    if (const std::optional<int> code = endWithoutWindow(options)) {
        return *code;
    }

    const std::unique_ptr<Door> door = options.tourFolder ? nullptr : platform::makeDoor();
    if (const std::optional<int> code = endAfterHandingOver(door.get(), wishOf(options, arguments))) {
        return *code;
    }

    QtMessageHandler usual = qInstallMessageHandler(explainFatal);
    QApplication application(argc, argv);
    qInstallMessageHandler(usual);
    QApplication::setApplicationName(QStringLiteral("Quillfen"));
    QApplication::setDesktopFileName(product::id());
    return runWindow(application, arguments, options, door.get());
}
