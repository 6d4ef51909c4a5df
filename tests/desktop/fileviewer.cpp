// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/fileviewer.h"

#include "privatebus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTest>

#include <gmock/gmock.h>

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

class FileViewer : public testing::Test {
protected:
    QStringList shown;
    QStringList revealed;
    QStringList opened;
    std::optional<FileViewerOverride> instead{
        std::in_place, FileViewerOverride::Viewer{[this](const QString &path) { shown << path; },
                                                  [this](const QString &path) { revealed << path; },
                                                  [this](const QUrl &url) { opened << url.toString(); }}};
};

TEST_F(FileViewer, ATestMayStandInForTheDesktop)
{
    showFolder(u"/tmp/a"_s);
    revealFile(u"/tmp/a/b"_s);
    EXPECT_TRUE(openLink(QUrl(u"https://quillfen.example/x"_s)));
    EXPECT_THAT(shown, ElementsAre(u"/tmp/a"_s));
    EXPECT_THAT(revealed, ElementsAre(u"/tmp/a/b"_s));
    EXPECT_THAT(opened, ElementsAre(u"https://quillfen.example/x"_s));
}

TEST_F(FileViewer, OnlyWebLinksAreOpened)
{
    for (const QString &link : {u"file:///etc/passwd"_s, u"javascript:alert(1)"_s, u"ssh://host"_s, u"/bin/sh"_s, u""_s,
                                u"smb://host/share"_s, u"mailto:a@b"_s}) {
        EXPECT_FALSE(openLink(QUrl(link))) << link.toStdString();
    }
    EXPECT_TRUE(openLink(QUrl(u"http://quillfen.example"_s)));
    EXPECT_EQ(opened.size(), 1);
}

#ifdef Q_OS_LINUX
/// The desktop's file manager, as far as it is heard.
class Manager final : public QDBusVirtualObject {
public:
    QStringList calls;

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        calls << message.interface() + u' ' + message.member() + u' ' +
                     message.arguments().value(0).toStringList().join(u',') + u'|' +
                     message.arguments().value(1).toString();
        connection.send(message.createReply());
        return true;
    }
};

/// A session bus of the test's own; the process keeps the first it connects to.
class FileManagerTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        bus = new PrivateBus;
        if (!bus->address().isEmpty()) {
            qputenv("DBUS_SESSION_BUS_ADDRESS", bus->address().toUtf8());
        }
    }

    static void TearDownTestSuite()
    {
        QDBusConnection::disconnectFromBus(u"manager"_s);
        delete bus;
    }

    void SetUp() override
    {
        if (bus->address().isEmpty()) {
            GTEST_SKIP() << "no dbus-daemon on this computer";
        }
        auto connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"manager"_s);
        ASSERT_TRUE(connection.isConnected());
        ASSERT_TRUE(connection.registerVirtualObject(u"/org/freedesktop/FileManager1"_s, &manager));
        ASSERT_TRUE(connection.registerService(u"org.freedesktop.FileManager1"_s));
    }

    void TearDown() override
    {
        auto connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"manager"_s);
        connection.unregisterObject(u"/org/freedesktop/FileManager1"_s);
    }

    static inline PrivateBus *bus = nullptr;
    Manager manager;
};

TEST_F(FileManagerTest, ShowsFoldersAndSelectsFiles)
{
    showFolder(u"/home/u/Quillfen/my photos"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return manager.calls.size() == 1; }));
    revealFile(u"/home/u/.quill/quill-50% #1.key"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return manager.calls.size() == 2; }));
    EXPECT_EQ(manager.calls.at(0), u"org.freedesktop.FileManager1 ShowFolders file:///home/u/Quillfen/my%20photos|"_s);
    EXPECT_EQ(manager.calls.at(1),
              u"org.freedesktop.FileManager1 ShowItems file:///home/u/.quill/quill-50%25%20%231.key|"_s);
}
#endif

} // namespace
