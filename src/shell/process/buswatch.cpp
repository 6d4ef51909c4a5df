// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/buswatch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

QString service()
{
    return u"org.kde.StatusNotifierWatcher"_s;
}

QString path()
{
    return u"/StatusNotifierWatcher"_s;
}

} // namespace

BusWatch::BusWatch(QObject *parent) : QObject(parent)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    auto *watcher = new QDBusServiceWatcher(service(), bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    // One owner may follow another without a moment between them.
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) { ownerChanged(owner); });
    bus.connect(service(), path(), service(), u"StatusNotifierHostRegistered"_s, this, SLOT(ask()));
    ask();
}

void BusWatch::ownerChanged(const QString &owner)
{
    ++m_owners;
    if (m_there) {
        m_there = false;
        Q_EMIT gone();
    }
    if (!owner.isEmpty()) {
        ask();
    }
}

/// Whether somebody shows icons. Nobody is started for this, and no answer is a no.
void BusWatch::ask()
{
    auto question = QDBusMessage::createMethodCall(service(), path(), u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << service() << u"IsStatusNotifierHostRegistered"_s;
    question.setAutoStartService(false);
    auto *answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, asked = m_owners] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (asked == m_owners && !m_there && reply.isValid() && reply.value().variant().toBool()) {
            m_there = true;
            Q_EMIT appeared();
        }
    });
}

} // namespace quillfen
