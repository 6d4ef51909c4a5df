// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/mainwindow.h"
#include "state/appstate.h"
#include "states.h"
#include "support/await.h"
#include "support/fakeagent.h"

#include <QApplication>
#include <QTimer>

#include <gmock/gmock.h>

#include <malloc.h>

namespace quillfen::test {
namespace {

using namespace std::chrono_literals;

/// What the program holds of the heap, all its threads together.
std::int64_t heldBytes()
{
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<std::int64_t>(heap.uordblks + heap.hblkhd);
}

json::value parsed(const char *text)
{
    return json::parse(text);
}

/// Whether the window is open.
class RefreshMemory : public testing::TestWithParam<bool> {
protected:
    RefreshMemory()
    {
        agent.answer("agent.version", parsed(R"({"version": "2.1"})"));
        agent.answer("auth.status", parsed(R"({"signed_in": true})"));
        agent.answer("vm.status", parsed(R"({"status": "Running", "exists": true})"));
        agent.answer("mount.state", parsed(R"([{"name": "photos", "mountpoint": "/home/u/Quillfen/photos"}])"));
        agent.answer("volumes.list", parsed(R"([{"id": 1, "name": "photos", "size_bytes": 1099511627776},
                                                {"id": 2, "name": "music", "size_bytes": 1099511627776}])"));
        agent.answer("account", parsed(R"({"email": "mara@northmere.example", "plan": "pro", "capacity_gb": 2048})"));
        // No two answers are the same, so that there is something to render every time.
        agent.on("volumes.status", [this](const json::object &) {
            return json::value{{"appliance", {{"online", true}, {"pending_bytes", 1}}},
                               {"offsite", {{"percent", ++m_asked % 100}}}};
        });
        agent.answer("recoveries.list_for_volume",
                     parsed(R"({"recoveries": [{"id": 7, "state": "ready", "name": "photos-copy"}]})"));
        agent.answer("appliance.orphans", parsed(R"([{"container": "lost"}])"));
        agent.answer("appliance.list", parsed(R"([{"container": "q-photos", "status": "Up 3 hours"}])"));
        agent.answer("events.subscribe", nullptr);
        agent.allowUnexpected(); // what the card of the chosen volume asks for is not the matter
    }
    ~RefreshMemory() override { state->shutDown(); }

    void refresh(int times)
    {
        for (int count = 0; count < times; ++count) {
            await(state->refresh());
            agent.clearLog(); // which is kept in this very process
        }
        settle();
    }

    /// Lets every view render what was announced last.
    static void settle()
    {
        bool over = false;
        QTimer::singleShot(60ms, Qt::PreciseTimer, qApp, [&over] { over = true; });
        ASSERT_TRUE(eventually([&over] { return over; }));
    }

    FakeAgent agent;
    Environment socket{"QUILL_AGENT_SOCKET", QByteArray::fromStdString(agent.path())};
    std::shared_ptr<AppState> state = AppState::create();

private:
    std::int64_t m_asked = 0; ///< on the agent's thread
};

TEST_P(RefreshMemory, DoesNotGrow)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "this allocator does not tell what it holds";
#endif
    MainWindow window(state);
    window.show();
    state->connect();
    ASSERT_TRUE(eventually([&] { return agent.count("events.subscribe") > 0; }));
    state->selectedVolume = 1;
    settle();
    window.setVisible(GetParam());

    refresh(50); // every text has been drawn by then
    const std::int64_t before = heldBytes();
    refresh(100);

    // Half of what would be there if one answer were left behind each time.
    EXPECT_LT(heldBytes() - before, 100 * 500);
}

INSTANTIATE_TEST_SUITE_P(Window, RefreshMemory, testing::Bool(),
                         [](const auto &which) { return which.param ? "Open" : "Closed"; });

} // namespace
} // namespace quillfen::test
