// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/activity/activitywindow.h"

#include "boards/advanced/aside.h"
#include "desktop/clipboard.h"
#include "shell/activity/activitydetail.h"
#include "shell/activity/activitylist.h"
#include "shell/window/keymap.h"
#include "shell/window/windowborder.h"
#include "state/appstate.h"
#include "state/counted.h"
#include "ui/controls/buttons.h"
#include "ui/controls/searchfield.h"
#include "ui/controls/toggle.h"
#include "ui/layout.h"
#include "ui/overlays/toast.h"
#include "ui/paint/hairline.h"
#include "ui/parts/emptystate.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPointer>
#include <QScreen>
#include <QShortcut>

#include <algorithm>
#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

namespace {

constexpr QSize defaultSize{720, 560};
constexpr QSize smallestSize{480, 360};
constexpr int padding = 28;
constexpr int listPadding = padding - 12; // the rows have their own
/// What is written down at once; more is made ready beside the window.
constexpr std::size_t smallCopy = 200;

/// What runs and what was, the newest first, as it was at one moment.
struct Everything {
    QList<RunningCall> running;
    std::deque<ActivityEntry> past;
};

QString textOf(const Everything &all)
{
    QStringList texts;
    const auto add = [&texts](const auto &one) { texts << activityText(one); };
    std::for_each(all.running.crbegin(), all.running.crend(), add);
    std::for_each(all.past.crbegin(), all.past.crend(), add);
    return texts.join(QStringLiteral("\n\n")) + u'\n';
}

/// What a call has become that ran a moment ago: its line is of no other, it bears the number of the request.
const ActivityEntry *entryOf(const RunningCall &call, const Activity &activity)
{
    const auto &past = activity.past();
    const auto found = std::find_if(past.crbegin(), past.crend(), [&call](const ActivityEntry &entry) {
        return entry.method == call.method && entry.line == call.line;
    });
    return found == past.crend() ? nullptr : &*found;
}

QSize scaledSize(const QSize &size)
{
    return {scaled(size.width()), scaled(size.height())};
}

} // namespace

ActivityWindow::ActivityWindow(std::shared_ptr<AppState> state, QWidget *parent)
    : PanelWindow(tr("Activity"), parent), m_state(std::move(state)), m_search(new SearchField(tr("Search activity"))),
      m_problemsOnly(new Toggle(tr("Problems only"))), m_list(new ActivityList(m_state->activity)),
      m_empty(new EmptyState(Icon::ClockBack, {})), m_line(new Hairline), m_detail(new ActivityDetail),
      m_count(new Label({}, Type::Caption, Theme::text)),
      m_copyAll(new Button(Icon::Copy, tr("Copy all"), SecondaryButtonStyle{})), m_toast(new Toast(this)),
      m_observer(
          {&m_state->activity.running, &m_state->activity.past}, [this] { render(); }, m_state->timing().frame)
{
    auto *const rows = new QWidget;
    rows->setLayout(column({Item{m_list, 1}, Item{m_empty, 1}}, 0, {listPadding, 0, listPadding, 0}));
    setLayout(column({createHead(), Item{rows, 1}, m_line, m_detail, new Hairline, createFoot()}, 0, {1, 1, 1, 1}));
    new WindowBorder(this);
    setTabOrder(m_problemsOnly, m_search); // as they stand
    const QSize room = screen()->availableSize();
    setMinimumSize(scaledSize(smallestSize).boundedTo(room));
    resize(scaledSize(defaultSize).boundedTo(room));

    connect(m_search, &QLineEdit::textChanged, this, &ActivityWindow::filter);
    connect(m_problemsOnly, &QAbstractButton::toggled, this, &ActivityWindow::filter);
    connect(m_list, &ActivityList::chosen, this, &ActivityWindow::choose);
    connect(m_detail, &ActivityDetail::copyRequested, this, &ActivityWindow::copyChosen);
    connect(m_copyAll, &QAbstractButton::clicked, this, &ActivityWindow::copyAll);
    connect(new QShortcut(QKeySequence::Copy, this), &QShortcut::activated, this, &ActivityWindow::copyChosen);
    for (const QKeySequence &keys : keysOf(KeyAction::Search)) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, [this] {
            m_search->setFocus(Qt::ShortcutFocusReason);
            m_search->selectAll();
        });
    }
    connect(&m_clock, &QTimer::timeout, this, &ActivityWindow::renderClock);
    m_clock.setInterval(1s);
    m_confirmation.setSingleShot(true);
    connect(&m_confirmation, &QTimer::timeout, this, [this] { m_toast->setText({}); });
    render();
    (m_list->isHidden() ? static_cast<QWidget *>(m_search) : m_list)->setFocus(Qt::TabFocusReason);
}

QWidget *ActivityWindow::createHead()
{
    m_search->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_search->setMinimumWidth(scaled(96));
    auto *const head = new QWidget;
    head->setLayout(row({new Label(windowTitle(), Type::Title, Theme::heading), Stretch{}, m_problemsOnly, m_search},
                        16, {padding, padding - 8, padding, 12}));
    return head;
}

QWidget *ActivityWindow::createFoot()
{
    auto *const close = new Button(tr("Close"), SecondaryButtonStyle{});
    connect(close, &QAbstractButton::clicked, this, &QDialog::accept);
    auto *const foot = new QWidget;
    foot->setLayout(row({m_count, Stretch{}, m_copyAll, close}, 8, {padding, 12, padding, 16}));
    return foot;
}

void ActivityWindow::render()
{
    m_list->sync();
    followChosen();
    showChosen();
    const auto all =
        static_cast<int>(m_state->activity.running().size()) + static_cast<int>(m_state->activity.past().size());
    const int shown = m_list->rows().rowCount();
    m_list->setVisible(shown > 0);
    m_empty->setVisible(shown == 0);
    m_empty->setLine(all == 0 ? tr("Nothing has been said or done yet.") : tr("Nothing here matches."));
    m_count->setText(shown == all ? counted(all, tr("%1 entry"), tr("%1 entries"))
                                  : tr("%1 of %2").arg(shown).arg(all));
    m_copyAll->setEnabled(all > 0);
    if (isVisible() && m_list->rows().runningCount() > 0) {
        if (!m_clock.isActive()) {
            m_clock.start();
        }
    } else {
        m_clock.stop();
    }
}

void ActivityWindow::filter()
{
    m_list->setFilter(m_search->text(), m_problemsOnly->isChecked());
    render();
}

void ActivityWindow::choose(const ActivityModel::Key &key)
{
    if (const RunningCall *call = m_list->rows().call(key)) {
        m_chosen = *call;
    } else if (const ActivityEntry *entry = m_list->rows().entry(key)) {
        m_chosen = *entry;
    }
    showChosen();
}

/// A call that is looked at turns into its outcome when it ends.
void ActivityWindow::followChosen()
{
    const auto *const call = std::get_if<RunningCall>(&m_chosen);
    if (call == nullptr) {
        return;
    }
    if (const RunningCall *running = m_list->rows().call({true, call->id})) {
        m_chosen = *running;
    } else if (const ActivityEntry *entry = entryOf(*call, m_state->activity)) {
        m_list->mark(ActivityModel::Key{false, entry->number});
        m_chosen = *entry;
    }
}

void ActivityWindow::showChosen()
{
    if (const auto *const call = std::get_if<RunningCall>(&m_chosen)) {
        m_detail->setFacts(activityFacts(*call));
    } else if (const auto *const entry = std::get_if<ActivityEntry>(&m_chosen)) {
        m_detail->setFacts(activityFacts(*entry));
    }
    const bool any = !std::holds_alternative<std::monostate>(m_chosen);
    m_detail->setVisible(any);
    m_line->setVisible(any);
}

void ActivityWindow::renderClock()
{
    m_list->updateRunning();
    if (std::holds_alternative<RunningCall>(m_chosen)) {
        showChosen();
    }
}

void ActivityWindow::copyChosen()
{
    if (const auto *const call = std::get_if<RunningCall>(&m_chosen)) {
        copyText(activityText(*call) + u'\n');
    } else if (const auto *const entry = std::get_if<ActivityEntry>(&m_chosen)) {
        copyText(activityText(*entry) + u'\n');
    } else {
        return;
    }
    confirm(tr("Copied."));
}

void ActivityWindow::copyAll()
{
    const Activity &activity = m_state->activity;
    const Everything all{activity.running(), activity.past()};
    const auto number = static_cast<qint64>(all.past.size()) + all.running.size();
    const QString words = counted(number, tr("Copied %1 entry."), tr("Copied %1 entries."));
    if (all.past.size() <= smallCopy) {
        copyText(textOf(all));
        confirm(words);
        return;
    }
    aside([all] { return textOf(all); },
          [window = QPointer(this), words](const QString &text) {
              copyText(text);
              if (window) {
                  window->confirm(words);
              }
          });
}

/// In this window alone: a notice of the program would itself be one more entry.
void ActivityWindow::confirm(const QString &words)
{
    m_toast->setText({}); // the same again is said again
    m_toast->setText(words);
    m_confirmation.start(m_state->timing().toastDuration);
}

void ActivityWindow::showEvent(QShowEvent *event)
{
    PanelWindow::showEvent(event);
    render();
}

void ActivityWindow::hideEvent(QHideEvent *event)
{
    m_clock.stop();
    PanelWindow::hideEvent(event);
}

} // namespace quillfen
