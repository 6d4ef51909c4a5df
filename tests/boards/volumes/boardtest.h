// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "builders.h"

#include "state/appstate.h"
#include "support/await.h"
#include "support/fakeagent.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QCoroTask>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <optional>

namespace quillfen::test {

/// A state that is connected to a scripted agent: signed in, the engine running, a home of its own.
class BoardTest : public testing::Test {
protected:
    BoardTest()
    {
        qputenv("QUILL_AGENT_SOCKET", agent.path().c_str());
        m_homeBefore = qgetenv("HOME");
        qputenv("HOME", home.path().toUtf8());
        agent.answer("agent.version", params("version", "2.1"));
        agent.answer("auth.status", params("signed_in", true));
        agent.answer("vm.status", params("status", "Running"));
        agent.answer("account", params("plan", "pro"));
        agent.answer("recoveries.list_for_volume", params("recoveries", json::array()));
        agent.answer("volumes.status", json::object());
        agent.answer("restore_points.list", params("recovery_points", json::array()));
        agent.answer("events.subscribe", nullptr);
        for (const char *list : {"mount.state", "volumes.list", "appliance.orphans", "appliance.list"}) {
            agent.answer(list, json::array());
        }
        Timing timing;
        timing.refreshInterval = std::chrono::hours(1);
        timing.toastDuration = std::chrono::hours(1);
        timing.retryDelay = std::chrono::hours(1);
        timing.mountRetryDelay = std::chrono::milliseconds(1);
        timing.frame = std::chrono::milliseconds(1);
        state = AppState::create(timing);
    }

    ~BoardTest() override
    {
        state->shutDown();
        qunsetenv("QUILL_AGENT_SOCKET");
        qputenv("HOME", m_homeBefore);
    }

    void SetUp() override
    {
        state->connect();
        ASSERT_TRUE(eventually([&] { return agent.count("events.subscribe") == 1; }));
        agent.clearLog();
    }

    static bool eventually(const std::function<bool()> &condition) { return test::eventually(condition); }

    static void await(const QCoro::Task<> &task)
    {
        EXPECT_TRUE(eventually([&] { return task.isReady(); }));
    }

    /// The account's volumes, for the state and for every refresh to come.
    void give(const Records &volumes)
    {
        agent.answer("volumes.list", json::array(volumes.begin(), volumes.end()));
        await(state->refresh());
        agent.clearLog();
    }

    void giveStatus(const Record &status)
    {
        agent.answer("volumes.status", status);
        await(state->refresh());
        agent.clearLog();
    }

    void mounted(const QString &name, const QString &folder)
    {
        agent.answer("mount.state", json::array({params("name", name, "mountpoint", folder)}));
        await(state->refresh());
        agent.clearLog();
    }

    void runHere(const QString &container, const QString &status = QStringLiteral("Up 3 hours"))
    {
        agent.answer("appliance.list", json::array({params("container", container, "status", status)}));
        await(state->refresh());
        agent.clearLog();
    }

    void writeFile(const QString &path, const QByteArray &contents) const
    {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    [[nodiscard]] QString toast() const { return state->toast().value_or(QString()); }

    [[nodiscard]] json::object sent(std::string_view method) const
    {
        const auto requests = agent.requests(method);
        return requests.empty() ? json::object() : requests.back().params;
    }

    FakeAgent agent;
    QTemporaryDir home;
    std::shared_ptr<AppState> state;

private:
    QByteArray m_homeBefore;
};

/// Every text inside that can be seen, read out or found by pointing.
inline QStringList shownTexts(const QWidget *inside)
{
    QStringList found;
    for (const QWidget *each : inside->findChildren<QWidget *>()) {
        if (each->isVisible()) {
            found << each->accessibleName() << each->property("text").toString();
        }
    }
    return found;
}

/// The visible button with this text or accessible name, a kit button as any other.
inline QAbstractButton *buttonOf(const QWidget *inside, const QString &text)
{
    for (QAbstractButton *each : inside->findChildren<QAbstractButton *>()) {
        if (each->isVisible() && (each->text() == text || each->accessibleName() == text)) {
            return each;
        }
    }
    return nullptr;
}

inline void press(const QWidget *inside, const QString &text)
{
    QAbstractButton *const button = buttonOf(inside, text);
    ASSERT_NE(button, nullptr) << text.toStdString();
    ASSERT_TRUE(button->isEnabled()) << text.toStdString();
    QTest::mouseClick(button, Qt::LeftButton);
}

/// Answers the next question of the dialogs by the button `answer`, its field filled with `typed` before. What the
/// question says is kept.
class Answering {
public:
    explicit Answering(
        const QString &answer, std::optional<QString> typed = {}, std::function<void()> meanwhile = [] {})
    {
        QObject::connect(&m_poll, &QTimer::timeout, &m_poll, [this, answer, typed, meanwhile] {
            auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (dialog == nullptr) {
                return;
            }
            m_poll.stop();
            title = dialog->accessibleName().isEmpty() ? dialog->windowTitle() : dialog->accessibleName();
            for (const QWidget *part : dialog->findChildren<QWidget *>()) {
                texts << part->accessibleName() << part->property("text").toString();
            }
            if (auto *const field = dialog->findChild<QLineEdit *>(); field != nullptr) {
                initial = field->text();
                if (typed) {
                    field->setText(*typed);
                }
            }
            meanwhile();
            if (QAbstractButton *const button = buttonOf(dialog, answer); button != nullptr && button->isEnabled()) {
                button->click();
            } else {
                ADD_FAILURE() << "no button " << answer.toStdString();
                dialog->reject();
            }
            met = true;
        });
        m_poll.start(1);
    }
    ~Answering() { EXPECT_TRUE(met) << "nothing was asked"; }

    bool met = false;
    QString title;
    QString initial;
    QStringList texts;

private:
    QTimer m_poll;
};

} // namespace quillfen::test
