// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QtTest/QTest>

#include <functional>
#include <memory>
#include <ostream>
#include <string_view>

/// Lets a failed comparison show its texts as texts.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace quillfen::test {

inline Record record(std::string_view text)
{
    return json::parse(text).as_object();
}

/// A state that has never seen an agent.
inline std::shared_ptr<AppState> newState()
{
    return AppState::create();
}

/// A state on which somebody is signed in, with a plan, as if an agent had said so.
inline std::shared_ptr<AppState> signedInState(std::string_view auth = R"({"signed_in": true})")
{
    std::shared_ptr<AppState> state = AppState::create();
    state->connected = true;
    state->auth = record(auth);
    state->account = record(R"({"email": "mara@northmere.example", "plan": "pro", "capacity_gb": 2048})");
    state->vm = record(R"({"status": "Running", "exists": true})");
    return state;
}

/// Turns the event loop until `condition` holds; false after ten seconds, or so many milliseconds.
inline bool waitFor(const std::function<bool()> &condition, int milliseconds = 10'000)
{
    return QTest::qWaitFor(condition, milliseconds);
}

/// Ends what a board has begun on a state without an agent: its calls fail in the next turn of the event loop.
inline void settle(AppState &state)
{
    state.shutDown();
    QCoreApplication::processEvents();
}

/// Sets an environment variable for as long as it lives.
class Environment final {
public:
    Environment(const char *name, const QByteArray &value) : m_name(name) { qputenv(name, value); }
    ~Environment() { qunsetenv(m_name); }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    const char *m_name;
};

/// The first widget of class `Widget` under `parent` with this accessible name that is meant to be seen.
template <typename Widget>
Widget *named(QWidget &parent, const QString &name)
{
    for (Widget *widget : parent.findChildren<Widget *>()) {
        if (widget->accessibleName() == name && !widget->isHidden()) {
            return widget;
        }
    }
    return nullptr;
}

/// The texts under `parent` as assistive technology reads them, of what is shown.
QStringList texts(QWidget &parent);

} // namespace quillfen::test
