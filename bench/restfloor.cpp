// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// The floor of the client at rest: every 15 seconds the calls of a refresh, one at a time, and nothing that anybody
// could look at. The answers are parsed, as they come, and dropped.
#include "rpc/rpc.h"
#include "state/start.h"
#include "state/timelimits.h"
#include "state/timing.h"
#include "state/values.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>
#include <exception>
#include <vector>

namespace {

using namespace quillfen;

class Floor final {
public:
    QCoro::Task<> begin()
    {
        m_rpc.connect(RPC::socketPath());
        co_await ask("agent.version", json::object());
        co_await refresh();
        co_await ask("events.subscribe", json::object());
        m_ticker.callOnTimeout([this] { start(refresh()); });
        m_ticker.start(Timing().refreshInterval);
    }

private:
    QCoro::Task<json::value> ask(std::string method, json::object params)
    {
        const RPC::Seconds limit = timeLimit(method);
        json::value answer = co_await m_rpc.call(std::move(method), std::move(params), limit);
        co_return answer;
    }

    QCoro::Task<> refresh()
    {
        const json::object none;
        for (const char *method : {"auth.status", "vm.status", "mount.state"}) {
            co_await ask(method, none);
        }
        const json::value listed = co_await ask("volumes.list", none);
        co_await ask("account", none);
        for (const char *method : {"volumes.status", "recoveries.list_for_volume"}) {
            for (const json::value &volume : listed.as_array()) {
                const json::object which = params("volume_id", num(volume.as_object(), "id"));
                co_await ask(method, which);
            }
        }
        for (const char *method : {"appliance.orphans", "appliance.list"}) {
            co_await ask(method, none);
        }
    }

    RPC m_rpc;
    QTimer m_ticker;
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Floor floor;
    start(floor.begin());
    return QCoreApplication::exec();
}
