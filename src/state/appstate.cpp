// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/appstate.h"

#include "state/start.h"

#include <QDir>

namespace quillfen {

using namespace Qt::StringLiterals;

std::shared_ptr<AppState> AppState::create(const Timing &timing)
{
    std::shared_ptr<AppState> state(new AppState(timing));
    state->listen();
    return state;
}

AppState::AppState(const Timing &timing) : m_timing(timing)
{
    QObject::connect(&m_ticker, &QTimer::timeout, &m_context, [this] { tick(); });
}

AppState::~AppState() = default;

void AppState::listen()
{
    // Both run on the reading thread. Only the main thread may hold the state strongly: a state whose last holder is
    // the reading thread would have to wait there for the end of that very thread.
    MainQueue &queue = m_rpc.mainQueue();
    m_rpc.onEvent = [weak = weak_from_this(), &queue](std::string name, std::optional<json::value> data) {
        queue.post([weak, name = std::move(name), data = std::move(data)]() mutable {
            if (const std::shared_ptr<AppState> state = weak.lock()) {
                state->event(name, std::move(data));
            }
        });
    };
    m_rpc.onDown = [weak = weak_from_this(), &queue](QString message) {
        queue.post([weak, message = std::move(message)] {
            if (const std::shared_ptr<AppState> state = weak.lock()) {
                state->lost(message);
            }
        });
    };
}

void AppState::connect()
{
    // A second connection would end the first one, whose end would then be taken for the loss of the second.
    if (connected() || m_shutDown) {
        return;
    }
    try {
        m_rpc.connect(RPC::socketPath());
    } catch (const RPCError &error) {
        connected = false;
        agentError = error.message;
        retryLater();
        return;
    }
    ++m_connection;
    connected = true;
    agentError = std::nullopt;
    start(follow());
    startTicker();
}

QCoro::Task<> AppState::follow()
{
    const auto self = shared_from_this();
    const std::uint64_t connection = m_connection;
    co_await refresh();
    if (m_connection == connection) {
        co_await answerOrNothing("events.subscribe", json::object());
    }
}

void AppState::lost(const QString &message)
{
    ++m_connection;
    connected = false;
    agentError = message;
    retryLater();
}

void AppState::retryLater()
{
    if (m_retrying || m_shutDown) {
        return;
    }
    m_retrying = true;
    QTimer::singleShot(m_timing.retryDelay, Qt::PreciseTimer, &m_context, [this] {
        m_retrying = false;
        if (!connected()) {
            connect();
        }
    });
}

void AppState::shutDown()
{
    m_shutDown = true;
    ++m_connection;
    m_ticker.stop();
    m_rpc.close();
    m_pauses.end(); // the loop may not turn again, and whoever waits holds this state
    m_worker.end();
    m_rpc.mainQueue().drain();
}

void AppState::startTicker()
{
    m_ticker.start(m_timing.refreshInterval);
}

void AppState::tick()
{
    if (connected() && signedIn() && !busy()) {
        start(refresh());
    }
}

void AppState::event(const std::string &name, std::optional<json::value> data)
{
    json::value value = data ? std::move(*data) : json::value();
    if (name == "auth.changed") {
        auth = takeObject(std::move(value));
    } else if (name == "vm.changed") {
        vm = takeObject(std::move(value));
    } else if (name == "mount.changed") {
        mounts = takeRecords(std::move(value));
    } else if (name == "volumes.changed") {
        volumes = takeRecords(std::move(value));
    } else if (name == "vm.progress" || name == "appliance.progress") {
        const QString message = str(object(&value), "message");
        activity.progress(name, message);
        show(message);
    }
}

void AppState::show(const QString &message)
{
    activity.noticed(message);
    showOutcome(message);
}

void AppState::showOutcome(const QString &message)
{
    toast = message;
    // A coarse timer may come as much as a twentieth early.
    QTimer::singleShot(m_timing.toastDuration, Qt::PreciseTimer, &m_context, [this, message] {
        if (toast() == message) {
            toast = std::nullopt;
        }
    });
}

bool AppState::signedIn() const
{
    return isTrue(auth(), "signed_in");
}

bool AppState::isAdmin() const
{
    return isTrue(auth(), "is_admin");
}

bool AppState::engineRunning() const
{
    return str(vm(), "status") == "Running"_L1;
}

QString AppState::appVersion()
{
    return versionOrDev(QStringLiteral(QUILLFEN_VERSION));
}

QString AppState::versionOrDev(const QString &version)
{
    return version.isEmpty() ? u"dev"_s : version;
}

QString AppState::keyPath(const Record &volume)
{
    const QString keyVolume = str(volume, "key_volume");
    const QString name = keyVolume.isEmpty() ? str(volume, "name") : keyVolume;
    return QDir::homePath() + "/.quill/quill-"_L1 + name + ".key"_L1;
}

} // namespace quillfen
