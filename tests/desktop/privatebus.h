// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QTemporaryDir>

namespace quillfen::test {

/// A bus of the test's own, on which nobody is started; gone with this object. Its address is empty where the computer
/// has no bus program.
class PrivateBus final {
public:
    PrivateBus()
    {
        const QString program = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
        QFile settings(m_folder.filePath(QStringLiteral("bus.conf")));
        if (program.isEmpty() || !settings.open(QIODevice::WriteOnly)) {
            return;
        }
        settings.write("<busconfig><type>session</type><listen>unix:dir=");
        settings.write(m_folder.path().toUtf8());
        settings.write("</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
                       "<allow receive_sender=\"*\"/><allow own=\"*\"/></policy></busconfig>");
        settings.close();
        m_program.start(program, {QStringLiteral("--config-file=") + settings.fileName(), QStringLiteral("--nofork"),
                                  QStringLiteral("--print-address")});
        if (m_program.waitForStarted() && m_program.waitForReadyRead(20'000)) {
            m_address = QString::fromUtf8(m_program.readLine().trimmed());
        }
    }
    ~PrivateBus()
    {
        m_program.kill();
        m_program.waitForFinished();
    }
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    [[nodiscard]] const QString &address() const noexcept { return m_address; }

private:
    QTemporaryDir m_folder;
    QProcess m_program;
    QString m_address;
};

} // namespace quillfen::test
