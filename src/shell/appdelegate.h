// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desktop/desktopnotifications.h"
#include "shell/process/wish.h"

#include <QObject>
#include <QSize>
#include <QStringList>

#include <functional>
#include <memory>

class QWidget;

namespace quillfen {

class AboutPanel;
class ActivityWindow;
class AppState;
class Notifier;
class PanelWindow;
class ShortcutsWindow;
class StatusArea;

/// What the desktop asks of the program as a whole: start, open a link, come back, tell about itself, end.
///
/// It holds the state weakly and only once the main window has appeared; until then there is no current state.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    /// `arguments` is the command line, the program's name first.
    explicit AppDelegate(QStringList arguments, QObject *parent = nullptr);

    /// The start-up action, when the main window's content appears for the first time or the program starts without
    /// showing it; later calls do nothing. Makes `state` the current one,
    /// takes the enrolment code and the wish for a new volume, and connects.
    void windowAppeared(const std::shared_ptr<AppState> &state);
    /// Ends the program with its last window instead of living on without one.
    void setQuitOnClose(bool quits) { m_quitOnClose = quits; }
    /// Looks for a status area, in which the program lives on without windows. Once; later calls do nothing.
    void openStatusArea();
    /// Tells on the desktop how long operations end while no window is seen. Once; later calls do nothing.
    void watchOutcomes(std::function<std::unique_ptr<DesktopNotifications>()> make = makeDesktopNotifications);

    /// Takes `quillfen:` links, one after the other, as the pending enrolment code; the last one stays. Others are
    /// ignored, and all of them are while there is no current state.
    ///
    /// "quillfen" is taken in lower case only. A link that the desktop hands over as a `QFileOpenEvent` is a `QUrl` by
    /// then, which has lower-cased its scheme and keeps no original: there "QUILLFEN:" counts as well.
    void open(const QStringList &links);
    /// Grants what a start of the program wished, this one or a later one that has handed it over. Codes and links that
    /// no service issues are dropped without a word: they may come from a web page.
    void grant(const Wish &wish);
    /// Brings the first main window back unless some window is visible. Always true: the wish is taken care of.
    bool reopen(bool hasVisibleWindows);
    /// Shows the about panel, or brings it back to the front.
    AboutPanel *about();
    /// Shows what every key does, or brings it back to the front.
    ShortcutsWindow *showShortcuts();
    /// Shows what was said and done, or brings it back to the front; null while there is no current state.
    ActivityWindow *showActivity();

Q_SIGNALS:
    /// The program should end: the user asked for it.
    void quitRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void lastWindowClosed();
    void heed(PanelWindow &panel);

    QStringList m_arguments;
    std::weak_ptr<AppState> m_current;
    StatusArea *m_statusArea = nullptr;
    Notifier *m_notifier = nullptr;
    bool m_quitOnClose = false;
    QSize m_activitySize; ///< that the user last gave its window
};

} // namespace quillfen
