// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/desktop/notifier.h"

#include "state/appstate.h"
#include "state/counted.h"
#include "ui/text/agenttext.h"
#include "ui/text/label.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace quillfen {

namespace {

using Kind = ActivityEntry::Kind;

/// Under which what has no place of its own is told.
constexpr int furtherNumber = 0;

constexpr qsizetype longestSummary = 100;
constexpr qsizetype longestBody = 400;

QString productName()
{
    return QStringLiteral("Quillfen");
}

NotificationText outcomeOf(const ActivityEntry &entry)
{
    NotificationText text;
    text.failed = entry.kind == Kind::Failed;
    text.summary = entry.title.isEmpty() ? productName() : shortened(entry.title, longestSummary);
    if (!entry.words.isEmpty()) {
        text.body = shortened(entry.words, longestBody);
    } else {
        const QString outcome = text.failed ? Notifier::tr("Failed") : Notifier::tr("Done");
        text.body = shortened(QString::fromStdString(entry.method), longestSummary) + QStringLiteral(" · ") + outcome;
    }
    return text;
}

} // namespace

Notifier::Notifier(std::shared_ptr<AppState> state, std::function<bool()> isSeen, Make make, QObject *parent)
    : QObject(parent), m_state(std::move(state)), m_isSeen(std::move(isSeen)), m_make(std::move(make)),
      m_observer(
          {&m_state->activity.past}, [this] { lookForOutcomes(); }, m_state->timing().frame)
{
    const auto &past = m_state->activity.past();
    m_lastEntry = past.empty() ? 0 : past.back().number;
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &Notifier::windowCame);
}

Notifier::~Notifier() = default;

void Notifier::lookForOutcomes()
{
    const auto &past = m_state->activity.past();
    const bool seen = m_isSeen();
    for (auto entry = std::ranges::upper_bound(past, m_lastEntry, {}, &ActivityEntry::number); entry != past.end();
         ++entry) {
        m_lastEntry = entry->number;
        if (!seen && entry->kind != Kind::Notice && entry->took >= m_state->timing().notifyAfter) {
            tell(*entry);
        }
    }
}

void Notifier::tell(const ActivityEntry &entry)
{
    if (!reachDesktop()) {
        return;
    }
    const NotificationText text = outcomeOf(entry);
    if (m_single.size() < mostSingle) {
        m_single.insert(++m_lastNumber);
        m_desktop->show(m_lastNumber, text);
        return;
    }
    ++m_further.ended;
    m_further.failed += text.failed ? 1 : 0;
    NotificationText all{
        .summary = productName(),
        .body = counted(m_further.ended, tr("%1 more operation has ended"), tr("%1 more operations have ended")),
        .failed = m_further.failed > 0};
    if (all.failed) {
        all.body += QStringLiteral(" · ") + tr("%1 failed").arg(m_further.failed);
    }
    m_desktop->show(furtherNumber, all);
}

bool Notifier::reachDesktop()
{
    if (!m_desktop) {
        m_desktop = m_make();
        if (!m_desktop) {
            return false;
        }
        connect(m_desktop.get(), &DesktopNotifications::clicked, this, &Notifier::openRequested);
        connect(m_desktop.get(), &DesktopNotifications::gone, this, &Notifier::forget);
    }
    return true;
}

void Notifier::forget(int number)
{
    m_single.erase(number);
    if (number == furtherNumber) {
        m_further = {};
    }
}

/// What one of the program's windows tells now need not stand beside it. A window that is shown but not given the
/// keyboard may be one that nobody sees.
void Notifier::windowCame()
{
    if (m_desktop && m_isSeen()) {
        m_desktop->closeAll();
        m_single.clear();
        m_further = {};
    }
}

} // namespace quillfen
