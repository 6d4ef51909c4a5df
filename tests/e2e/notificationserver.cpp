// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "notificationserver.h"

#include "desktop.h"
#include "waiting.h"

#include <stdexcept>
#include <utility>

#include <gio/gio.h>

namespace quillfen::e2e {
namespace {

constexpr auto serviceName = "org.freedesktop.Notifications";
constexpr auto servicePath = "/org/freedesktop/Notifications";

constexpr auto description = R"(<node><interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
  </method>
  <method name="CloseNotification"><arg type="u" direction="in"/></method>
</interface></node>)";

std::string textAt(GVariant *parameters, std::size_t index)
{
    const char *text = nullptr;
    g_variant_get_child(parameters, index, "&s", &text);
    return text;
}

std::vector<std::string> textsAt(GVariant *parameters, std::size_t index)
{
    std::vector<std::string> texts;
    GVariantIter *each = nullptr;
    g_variant_get_child(parameters, index, "as", &each);
    for (const char *text = nullptr; g_variant_iter_next(each, "&s", &text) != FALSE;) {
        texts.emplace_back(text);
    }
    g_variant_iter_free(each);
    return texts;
}

std::string writtenAt(GVariant *parameters, std::size_t index)
{
    GVariant *value = g_variant_get_child_value(parameters, index);
    char *written = g_variant_print(value, TRUE);
    std::string result = written;
    g_free(written);
    g_variant_unref(value);
    return result;
}

} // namespace

class NotificationServer::Service final {
public:
    Service() : m_description(g_dbus_node_info_new_for_xml(description, nullptr))
    {
        const auto address = Desktop::instance().environment().at("DBUS_SESSION_BUS_ADDRESS");
        const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        m_bus = g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr);
        if (m_bus == nullptr) {
            throw std::runtime_error("no session bus for notifications");
        }
        static constexpr GDBusInterfaceVTable table = {receive, nullptr, nullptr, {nullptr}};
        g_dbus_connection_register_object(m_bus, servicePath, m_description->interfaces[0], &table, this, nullptr,
                                          nullptr);
        GVariant *answer = g_dbus_connection_call_sync(
            m_bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", serviceName, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
        if (answer == nullptr) {
            throw std::runtime_error("the session bus has no place for notifications");
        }
        g_variant_unref(answer);
    }
    ~Service()
    {
        g_dbus_connection_close_sync(m_bus, nullptr, nullptr);
        g_object_unref(m_bus);
        g_dbus_node_info_unref(m_description);
    }
    Service(const Service &) = delete;
    Service &operator=(const Service &) = delete;

    void tell(const char *signal, GVariant *parameters) const
    {
        g_dbus_connection_emit_signal(m_bus, nullptr, servicePath, serviceName, signal, parameters, nullptr);
    }

    void takeAway(unsigned id)
    {
        std::erase_if(standing, [id](const Notification &one) { return one.id == id; });
    }

    int calls = 0;
    std::vector<Notification> standing;

private:
    static void receive(GDBusConnection *, const char *, const char *, const char *, const char *method,
                        GVariant *parameters, GDBusMethodInvocation *invocation, void *data)
    {
        auto *const self = static_cast<Service *>(data);
        const std::string name = method;
        ++self->calls;
        GVariant *answer = nullptr;
        if (name == "GetCapabilities") {
            const char *const can[] = {"actions", "body", "body-markup", nullptr};
            answer = g_variant_new("(^as)", can);
        } else if (name == "Notify") {
            self->standing.push_back({++self->m_lastId, textAt(parameters, 0), textAt(parameters, 2),
                                      textAt(parameters, 3), textAt(parameters, 4), textsAt(parameters, 5),
                                      writtenAt(parameters, 6)});
            answer = g_variant_new("(u)", self->m_lastId);
        } else {
            unsigned id = 0;
            g_variant_get(parameters, "(u)", &id);
            self->takeAway(id);
        }
        g_dbus_method_invocation_return_value(invocation, answer);
    }

    GDBusNodeInfo *m_description;
    GDBusConnection *m_bus = nullptr;
    unsigned m_lastId = 0;
};

NotificationServer::NotificationServer() : m_service(std::make_unique<Service>()) {}

NotificationServer::~NotificationServer() = default;

int NotificationServer::calls() const noexcept
{
    return m_service->calls;
}

const std::vector<Notification> &NotificationServer::standing() const noexcept
{
    return m_service->standing;
}

void NotificationServer::click(unsigned id, const std::string &activationToken)
{
    m_service->tell("ActivationToken", g_variant_new("(us)", id, activationToken.c_str()));
    m_service->tell("ActionInvoked", g_variant_new("(us)", id, "default"));
    m_service->takeAway(id);
    m_service->tell("NotificationClosed", g_variant_new("(uu)", id, 2U));
}

} // namespace quillfen::e2e
