// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "statushost.h"

#include "desktop.h"
#include "waiting.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <stdexcept>

#include <gio/gio.h>

namespace quillfen::e2e {
namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
constexpr auto itemName = "org.kde.StatusNotifierItem";
constexpr auto itemPath = "/StatusNotifierItem";
constexpr auto menuName = "com.canonical.dbusmenu";
constexpr auto properties = "org.freedesktop.DBus.Properties";

constexpr auto description = R"(<node><interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
  <signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>)";

struct Unref {
    void operator()(GVariant *value) const { g_variant_unref(value); }
};

using Variant = std::unique_ptr<GVariant, Unref>;

Variant childOf(GVariant *value, std::size_t index)
{
    return Variant(g_variant_get_child_value(value, index));
}

/// What a variant in `value` holds.
Variant insideOf(GVariant *value)
{
    return Variant(g_variant_get_variant(value));
}

std::string textOf(GVariant *value)
{
    return g_variant_get_string(value, nullptr);
}

StatusPicture pictureFrom(GVariant *value)
{
    StatusPicture picture;
    g_variant_get_child(value, 0, "i", &picture.width);
    g_variant_get_child(value, 1, "i", &picture.height);
    const Variant bytes = childOf(value, 2);
    std::size_t count = 0;
    const auto *first = static_cast<const std::uint8_t *>(g_variant_get_fixed_array(bytes.get(), &count, 1));
    picture.argb.assign(first, first + count);
    return picture;
}

StatusEntry entryFrom(GVariant *value)
{
    StatusEntry entry;
    g_variant_get_child(value, 0, "i", &entry.id);
    const Variant about = childOf(value, 1);
    const char *label = nullptr;
    if (g_variant_lookup(about.get(), "label", "&s", &label) != FALSE) {
        entry.label = label;
    }
    gboolean enabled = TRUE;
    g_variant_lookup(about.get(), "enabled", "b", &enabled);
    entry.enabled = enabled != FALSE;
    const Variant below = childOf(value, 2);
    for (std::size_t i = 0; i < g_variant_n_children(below.get()); ++i) {
        const Variant child = childOf(below.get(), i);
        entry.below.push_back(entryFrom(insideOf(child.get()).get()));
    }
    return entry;
}

const StatusEntry *entryCalled(const std::string &label, const std::vector<StatusEntry> &entries)
{
    for (const StatusEntry &entry : entries) {
        if (entry.label == label) {
            return &entry;
        }
        if (const StatusEntry *found = entryCalled(label, entry.below)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

int StatusPicture::opacity(int x, int y) const
{
    return argb.at(4 * static_cast<std::size_t>(y * width + x));
}

class StatusHost::Service final {
public:
    explicit Service(bool isShown) : shown(isShown)
    {
        const auto address = Desktop::instance().environment().at("DBUS_SESSION_BUS_ADDRESS");
        const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        m_bus = g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr);
        if (m_bus == nullptr) {
            throw std::runtime_error("no session bus for a status area");
        }
        // On the connection's own thread: a program that asks us waits for the answer with its main thread, also while
        // we wait for that program ourselves.
        g_dbus_connection_add_filter(m_bus, receive, this, nullptr);
        // An icon is gone when its owner has left the bus.
        g_dbus_connection_signal_subscribe(m_bus, "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
                                           "/org/freedesktop/DBus", nullptr, G_DBUS_SIGNAL_FLAGS_NONE, ownerChanged,
                                           this, nullptr);
        call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
             g_variant_new("(su)", watcherName, 0U));
    }

    ~Service()
    {
        g_dbus_connection_close_sync(m_bus, nullptr, nullptr);
        g_object_unref(m_bus);
    }
    Service(const Service &) = delete;
    Service &operator=(const Service &) = delete;

    /// Asks and delivers what comes until the answer does: whom we ask may ask us meanwhile.
    Variant call(const std::string &who, const std::string &path, const std::string &interface,
                 const std::string &method, GVariant *parameters) const
    {
        struct Answer {
            bool came = false;
            Variant value;
            std::string error;
        };
        const auto take = [](GObject *bus, GAsyncResult *result, void *data) {
            auto *const answer = static_cast<Answer *>(data);
            GError *error = nullptr;
            answer->value.reset(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
            answer->error = error == nullptr ? "" : error->message;
            g_clear_error(&error);
            answer->came = true;
        };
        Answer answer;
        g_dbus_connection_call(m_bus, who.c_str(), path.c_str(), interface.c_str(), method.c_str(), parameters, nullptr,
                               G_DBUS_CALL_FLAGS_NO_AUTO_START, static_cast<int>(patience.count()) / 2, nullptr, take,
                               &answer);
        if (!waitFor([&] { return answer.came; }) || !answer.value) {
            throw std::runtime_error(method + ": " + answer.error);
        }
        return std::move(answer.value);
    }

    [[nodiscard]] Variant ofIcon(const std::string &property) const
    {
        const Variant answer =
            call(icons().at(0), itemPath, properties, "Get", g_variant_new("(ss)", itemName, property.c_str()));
        const Variant wrapped = childOf(answer.get(), 0);
        return insideOf(wrapped.get());
    }

    void tell(const char *signal) const
    {
        g_dbus_connection_emit_signal(m_bus, nullptr, watcherPath, watcherName, signal, nullptr, nullptr);
    }

    [[nodiscard]] std::vector<std::string> icons() const
    {
        const std::lock_guard lock(m_mutex);
        return m_icons;
    }

    std::atomic<bool> shown;
    std::atomic<int> asked = 0;
    std::atomic<int> registrations = 0;

private:
    static GDBusMessage *receive(GDBusConnection *bus, GDBusMessage *message, gboolean isIncoming, void *data)
    {
        const char *const path = g_dbus_message_get_path(message);
        if (isIncoming == FALSE || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL ||
            path == nullptr || std::string(path) != watcherPath) {
            return message;
        }
        GDBusMessage *const reply = g_dbus_message_new_method_reply(message);
        if (GVariant *const body = static_cast<Service *>(data)->answer(message)) {
            g_dbus_message_set_body(reply, body);
        }
        g_dbus_connection_send_message(bus, reply, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
        g_object_unref(reply);
        g_object_unref(message);
        return nullptr;
    }

    /// What is asked of the watcher. Any thread.
    GVariant *answer(GDBusMessage *message)
    {
        const std::string method = g_dbus_message_get_member(message);
        if (method == "Introspect") {
            return g_variant_new("(s)", description);
        }
        if (method == "Get") {
            return g_variant_new("(v)", property(textOf(childOf(g_dbus_message_get_body(message), 1).get())));
        }
        if (method == "RegisterStatusNotifierItem") {
            const std::lock_guard lock(m_mutex);
            m_icons.emplace_back(g_dbus_message_get_sender(message));
            ++registrations;
        }
        return nullptr;
    }

    GVariant *property(const std::string &name)
    {
        if (name == "IsStatusNotifierHostRegistered") {
            ++asked;
            return g_variant_new_boolean(shown ? TRUE : FALSE);
        }
        return name == "ProtocolVersion" ? g_variant_new_int32(0) : g_variant_new_strv(nullptr, 0);
    }

    static void ownerChanged(GDBusConnection *, const char *, const char *, const char *, const char *,
                             GVariant *parameters, void *data)
    {
        const std::string name = textOf(childOf(parameters, 0).get());
        const std::string owner = textOf(childOf(parameters, 2).get());
        if (owner.empty()) {
            auto *const self = static_cast<Service *>(data);
            const std::lock_guard lock(self->m_mutex);
            std::erase(self->m_icons, name);
        }
    }

    mutable std::mutex m_mutex;
    std::vector<std::string> m_icons;
    GDBusConnection *m_bus = nullptr;
};

StatusHost::StatusHost(Shown shown) : m_service(std::make_unique<Service>(shown == Shown::AtOnce)) {}

StatusHost::~StatusHost() = default;

void StatusHost::show()
{
    m_service->shown = true;
    m_service->tell("StatusNotifierHostRegistered");
}

int StatusHost::asked() const
{
    return m_service->asked;
}

std::vector<std::string> StatusHost::icons() const
{
    return m_service->icons();
}

int StatusHost::registrations() const
{
    return m_service->registrations;
}

void StatusHost::seeIcon() const
{
    if (!waitFor([this] { return m_service->icons().size() == 1; })) {
        throw std::runtime_error("there are " + std::to_string(m_service->icons().size()) + " status icons");
    }
}

std::string StatusHost::text(const std::string &property) const
{
    return textOf(m_service->ofIcon(property).get());
}

std::string StatusHost::toolTip() const
{
    const Variant toolTip = m_service->ofIcon("ToolTip");
    return textOf(childOf(toolTip.get(), 2).get()); // after the name and the pictures of one of its own
}

std::vector<StatusPicture> StatusHost::pictures() const
{
    std::vector<StatusPicture> result;
    const Variant pictures = m_service->ofIcon("IconPixmap");
    for (std::size_t i = 0; i < g_variant_n_children(pictures.get()); ++i) {
        result.push_back(pictureFrom(childOf(pictures.get(), i).get()));
    }
    return result;
}

StatusPicture StatusHost::picture(int size) const
{
    const auto all = pictures();
    const auto found = std::find_if(all.begin(), all.end(), [&](const auto &one) { return one.width == size; });
    return found == all.end() ? StatusPicture{} : *found;
}

void StatusHost::click(int x, int y) const
{
    m_service->call(m_service->icons().at(0), itemPath, itemName, "Activate", g_variant_new("(ii)", x, y));
}

std::vector<StatusEntry> StatusHost::menu() const
{
    const std::string icon = m_service->icons().at(0);
    const std::string path = textOf(m_service->ofIcon("Menu").get());
    m_service->call(icon, path, menuName, "AboutToShow", g_variant_new("(i)", 0));
    const Variant layout = m_service->call(icon, path, menuName, "GetLayout", g_variant_new("(iias)", 0, -1, nullptr));
    return entryFrom(childOf(layout.get(), 1).get()).below;
}

void StatusHost::choose(const std::string &label) const
{
    const auto entries = menu();
    const StatusEntry *entry = entryCalled(label, entries);
    if (entry == nullptr) {
        throw std::runtime_error("the status icon's menu has no \"" + label + '"');
    }
    const std::string path = textOf(m_service->ofIcon("Menu").get());
    m_service->call(m_service->icons().at(0), path, menuName, "Event",
                    g_variant_new("(isvu)", entry->id, "clicked", g_variant_new_int32(0), 0U));
}

} // namespace quillfen::e2e
