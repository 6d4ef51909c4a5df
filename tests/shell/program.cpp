// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "support/fakeagent.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quillfen {
namespace {

using namespace Qt::StringLiterals;
namespace json = boost::json;

struct Outcome {
    int code = -1;
    QString out;
    QString err;
};

/// Runs the program to its end, with the variables of `changes` set, or taken away where the value is null.
Outcome run(const QStringList &arguments, const std::vector<std::pair<QString, QString>> &changes = {})
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto &[name, value] : changes) {
        if (value.isNull()) {
            environment.remove(name);
        } else {
            environment.insert(name, value);
        }
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(QUILLFEN_CLIENT), arguments);
    EXPECT_TRUE(process.waitForFinished(50'000));
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}

const std::vector<std::pair<QString, QString>> noDisplay{
    {u"QT_QPA_PLATFORM"_s, QString()}, {u"DISPLAY"_s, QString()}, {u"WAYLAND_DISPLAY"_s, QString()}};

TEST(Program, HelpsWithoutADisplay)
{
    const Outcome outcome = run({u"--help"_s}, noDisplay);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_TRUE(outcome.out.startsWith(u"Usage: quillfen"_s));
    EXPECT_EQ(outcome.err, u""_s);
}

TEST(Program, TellsItsVersionWithoutADisplay)
{
    const Outcome outcome = run({u"--version"_s}, noDisplay);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_TRUE(outcome.out.startsWith(u"quillfen "_s));
}

TEST(Program, NamesAnUnknownOption)
{
    const Outcome outcome = run({u"--frobnicate"_s}, noDisplay);
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.out, u""_s);
    EXPECT_EQ(outcome.err, u"Unknown option: --frobnicate\nTry: quillfen --help\n"_s);
}

TEST(Program, SaysWhatToDoWithoutADisplay)
{
    const Outcome outcome = run({}, noDisplay);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains(u"needs a display"_s)) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.err.contains(u"xvfb-run"_s));
}

TEST(Program, EndsWithASentenceWhereTheDisplayDoesNotAnswer)
{
    const Outcome outcome = run({}, {{u"QT_QPA_PLATFORM"_s, u"xcb"_s}, {u"DISPLAY"_s, u":987"_s}});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains(u"Quillfen cannot start."_s)) << outcome.err.toStdString();
}

/// An agent that has everything a tour waits for.
void furnish(test::FakeAgent &agent)
{
    agent.allowUnexpected();
    agent.answer("agent.version", json::parse(R"({"version": "1.4.1"})"));
    agent.answer("auth.status", json::parse(R"({"signed_in": true, "is_admin": true})"));
    agent.answer("vm.status", json::parse(R"({"status": "Running", "exists": true})"));
    agent.answer("account", json::parse(R"({"email": "mara@northmere.example", "plan": "pro", "capacity_gb": 2048})"));
    agent.answer("volumes.list", json::parse(R"([{"id": 1, "name": "Documents", "size_bytes": 107374182400}])"));
    agent.answer("volumes.status", json::parse(R"({"synced": true})"));
    agent.answer("mount.state", json::array());
    agent.answer("appliance.orphans", json::array());
    agent.answer("appliance.list", json::array());
}

TEST(Program, TakesATourOfEveryScreen)
{
    test::FakeAgent agent;
    furnish(agent);
    const QTemporaryDir folder;
    const QString pictures = folder.filePath(u"new/folder"_s);
    const Outcome outcome =
        run({u"--tour"_s, pictures}, {{u"QUILL_AGENT_SOCKET"_s, QString::fromStdString(agent.path())}});
    EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
    for (const QString &name :
         {u"volumes"_s, u"time-travel"_s, u"history-policy"_s, u"get-a-copy-of-my-data"_s, u"account-engine"_s,
          u"operator"_s, u"operator-users"_s, u"operator-tokens"_s, u"operator-exports"_s, u"advanced"_s, u"about"_s,
          u"activity"_s, u"activity-detail"_s, u"menu-bar-panel"_s, u"agent-down"_s, u"first-run"_s}) {
        EXPECT_FALSE(QImage(pictures + u'/' + name + u".png"_s).isNull()) << name.toStdString();
    }
    EXPECT_EQ(QDir(pictures).entryList(QDir::Files).size(), 16);
}

TEST(Program, SaysWhyATourCannotBeWritten)
{
    test::FakeAgent agent;
    furnish(agent);
    const Outcome outcome = run({u"--tour"_s, u"/proc/no/such/folder"_s},
                                {{u"QUILL_AGENT_SOCKET"_s, QString::fromStdString(agent.path())}});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains(u"The folder /proc/no/such/folder cannot be made."_s))
        << outcome.err.toStdString();
}

TEST(Program, SaysWhyATourHasNoAgent)
{
    const QTemporaryDir folder;
    const Outcome outcome =
        run({u"--tour"_s, folder.path()}, {{u"QUILL_AGENT_SOCKET"_s, u"/nonexistent/quill.sock"_s}});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains(u"the Quillfen agent is not running (/nonexistent/quill.sock)"_s))
        << outcome.err.toStdString();
}

} // namespace
} // namespace quillfen
