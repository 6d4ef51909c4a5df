// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../volumes/boardtest.h"

#include "ui/style/fade.h"
#include "ui/style/housestyle.h"

namespace quillfen::test {

inline Record hub(std::int64_t id, const char *name, const char *role, const char *state = "ready")
{
    return params("id", id, "name", name, "role", role, "address", QStringLiteral("10.0.0.%1:8443").arg(id), "state",
                  state, "sold_pct", 10 * id);
}

inline Record user(std::int64_t id, const QString &email, const char *state = "active")
{
    return params("id", id, "email", email, "tenant_name", "Northmere", "created_at", "2024-09-02T10:00:00Z", "state",
                  state);
}

inline Record token(std::int64_t id, const QString &label, const QString &email = QStringLiteral("mara@x.example"))
{
    return params("id", id, "label", label, "email", email, "created_at", "2024-09-02T10:00:00Z", "expires_at",
                  "2031-03-01T10:00:00Z");
}

inline Record revokedToken(std::int64_t id, const QString &label)
{
    Record record = token(id, label);
    record["revoked"] = true;
    return record;
}

inline Record job(std::int64_t id, const char *volume, const char *delivery, const char *state)
{
    return params("id", id, "volume_name", volume, "tenant_name", "Northmere", "delivery", delivery, "state", state,
                  "medium", delivery == std::string_view("media") ? "LTO-8 tape" : "");
}

inline json::array listOf(const std::vector<Record> &records)
{
    return json::array(records.begin(), records.end());
}

/// An agent with something in every list of the console.
class OperatorTest : public BoardTest {
protected:
    OperatorTest()
    {
        setReducedMotion(true);
        agent.answer("auth.status", params("signed_in", true, "is_admin", true));
        giveHubs({hub(1, "hub-a", "primary", "serving"), hub(2, "hub-b", "replica")});
        agent.answer(
            "admin.hubs.replication",
            params("replicas",
                   listOf({params("name", "hub-b", "address", "10.0.0.2:8443", "state", "streaming", "lag", "0.8 s")}),
                   "summary", "1 of 1 replicas connected."));
        agent.answer("admin.hubs.promote_status", params("state", "idle"));
        giveUsers({user(11, QStringLiteral("jonas@tide.example"), "pending"),
                   user(12, QStringLiteral("mara@north.example"))});
        agent.answer(
            "admin.tenants.list",
            params("tenants", listOf({params("name", "Northmere", "purchased_capacity_bytes", std::int64_t{2048} << 30,
                                             "allocated_bytes", std::int64_t{512} << 30, "state", "active")})));
        giveTokens({token(21, QStringLiteral("laptop")), revokedToken(22, QStringLiteral("old nas"))});
        giveJobs({job(1182, "Documents", "media", "ready"), job(1180, "photos", "link", "ready"),
                  job(1177, "masters", "media", "packing")});
    }

    void giveHubs(const std::vector<Record> &hubs) { agent.answer("admin.hubs.list", params("hubs", listOf(hubs))); }
    void giveUsers(const std::vector<Record> &users)
    {
        agent.answer("admin.users.list", params("users", listOf(users)));
    }
    void giveTokens(const std::vector<Record> &tokens)
    {
        agent.answer("admin.tokens.list", params("tokens", listOf(tokens)));
    }
    void giveJobs(const std::vector<Record> &jobs)
    {
        agent.answer("admin.exports.list", params("exports", listOf(jobs)));
    }
};

/// A tab of the console in a window in front.
template <typename View>
class OperatorTabTest : public OperatorTest {
protected:
    void SetUp() override
    {
        OperatorTest::SetUp();
        applyHouseLook(*qobject_cast<QApplication *>(QCoreApplication::instance()));
        window.resize(900, 640);
        view = new View(state, &window);
        view->setGeometry(0, 0, 900, 640);
        view->setRoom(600);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    void open()
    {
        view->load();
        ASSERT_TRUE(eventually([&] { return !view->template findChildren<QAbstractButton *>().isEmpty(); }));
    }

    [[nodiscard]] bool says(const QString &text) const { return shownTexts(view).contains(text); }

    /// Waits until the text shows.
    [[nodiscard]] bool comes(const QString &text) const
    {
        return eventually([&] { return says(text); });
    }

    [[nodiscard]] bool offers(const QString &button) const { return buttonOf(view, button) != nullptr; }

    QWidget window;
    View *view = nullptr;
};

} // namespace quillfen::test
