// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/busdoor.h"
#include "shell/process/product.h"

#include <QDBusMessage>
#include <QDBusReply>

#include <vector>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

const QString &connectionName()
{
    static const QString name = u"quillfen"_s;
    return name;
}

const QString &objectPath()
{
    static const QString path = u"/io/quillfen/Quillfen"_s;
    return path;
}

/// Milliseconds. A client whose main thread is well answers within a few.
constexpr int patience = 2000;

constexpr auto tokenKey = "activation-token"_L1;
constexpr auto startupKey = "desktop-startup-id"_L1;

QVariantMap platformData(const Wish &wish)
{
    QVariantMap data;
    if (!wish.activationToken.isEmpty()) {
        data.insert(tokenKey, wish.activationToken);
    }
    if (!wish.startupId.isEmpty()) {
        data.insert(startupKey, wish.startupId);
    }
    return data;
}

Wish wishWith(const QVariantMap &data)
{
    Wish wish;
    wish.activationToken = data.value(tokenKey).toString();
    wish.startupId = data.value(startupKey).toString();
    return wish;
}

/// The wish in the words of org.freedesktop.Application, one call for each thing that is wished.
std::vector<QDBusMessage> callsFor(const Wish &wish)
{
    const QVariantMap data = platformData(wish);
    std::vector<QDBusMessage> calls;
    const auto add = [&](const QString &method, const QVariantList &arguments) {
        QDBusMessage call =
            QDBusMessage::createMethodCall(product::id(), objectPath(), u"org.freedesktop.Application"_s, method);
        call.setArguments(arguments);
        // One that ends meanwhile is not to be started again by this.
        call.setAutoStartService(false);
        calls.push_back(call);
    };
    if (!wish.code.isEmpty()) {
        add(u"ActivateAction"_s, {QString::fromLatin1(action::enroll), QVariantList{wish.code}, data});
    }
    if (!wish.action.isEmpty()) {
        add(u"ActivateAction"_s, {wish.action, QVariantList{}, data});
    }
    if (!wish.links.isEmpty()) {
        add(u"Open"_s, {wish.links, data});
    }
    if (calls.empty() && wish.show) {
        add(u"Activate"_s, {data});
    }
    return calls;
}

} // namespace

BusDoor::BusDoor(QObject *parent)
    : Door(parent), m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName()))
{
    new ApplicationAdaptor(this);
}

BusDoor::~BusDoor()
{
    QDBusConnection::disconnectFromBus(connectionName());
}

Claim BusDoor::claim(const Wish &wish)
{
    // First the object, then the name: what the bus has kept for the name comes in with it.
    m_bus.registerObject(objectPath(), this, QDBusConnection::ExportAdaptors);
    if (m_bus.registerService(product::id())) {
        return Claim::First;
    }
    m_bus.unregisterObject(objectPath());
    return handOver(wish);
}

Claim BusDoor::handOver(const Wish &wish)
{
    for (const QDBusMessage &call : callsFor(wish)) {
        if (m_bus.call(call, QDBus::Block, patience).type() != QDBusMessage::ReplyMessage) {
            return Claim::Unanswered;
        }
    }
    return Claim::HandedOver;
}

ApplicationAdaptor::ApplicationAdaptor(Door *door) : QDBusAbstractAdaptor(door), m_door(door) {}

void ApplicationAdaptor::Activate(const QVariantMap &platformData)
{
    Q_EMIT m_door->wished(wishWith(platformData));
}

void ApplicationAdaptor::Open(const QStringList &uris, const QVariantMap &platformData)
{
    Wish wish = wishWith(platformData);
    wish.links = uris;
    Q_EMIT m_door->wished(wish);
}

void ApplicationAdaptor::ActivateAction(const QString &name, const QVariantList &parameter,
                                        const QVariantMap &platformData)
{
    Wish wish = wishWith(platformData);
    if (name == QLatin1StringView(action::enroll)) {
        wish.code = parameter.value(0).toString();
    } else {
        wish.action = name;
    }
    Q_EMIT m_door->wished(wish);
}

} // namespace quillfen
