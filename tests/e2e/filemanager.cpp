// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "filemanager.h"

#include "waiting.h"

#include <stdexcept>

#include <gio/gio.h>

namespace quillfen::e2e {
namespace {

constexpr auto description = R"(<node><interface name="org.freedesktop.FileManager1">
  <method name="ShowFolders"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
  <method name="ShowItems"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
</interface></node>)";

std::vector<std::string> pathsIn(GVariant *parameters)
{
    std::vector<std::string> paths;
    GVariantIter *links = nullptr;
    g_variant_get_child(parameters, 0, "as", &links);
    for (const char *link = nullptr; g_variant_iter_next(links, "&s", &link) != FALSE;) {
        char *path = g_filename_from_uri(link, nullptr, nullptr);
        paths.emplace_back(path ? path : link);
        g_free(path);
    }
    g_variant_iter_free(links);
    return paths;
}

} // namespace

class FileManager::Service final {
public:
    Service() : m_description(g_dbus_node_info_new_for_xml(description, nullptr))
    {
        m_owner = g_bus_own_name(G_BUS_TYPE_SESSION, "org.freedesktop.FileManager1", G_BUS_NAME_OWNER_FLAGS_NONE,
                                 reachedBus, acquired, nullptr, this, nullptr);
        if (!waitFor([this] { return m_known; })) {
            throw std::runtime_error("the session bus has no place for a file manager");
        }
    }
    ~Service()
    {
        g_bus_unown_name(m_owner);
        if (m_bus != nullptr) {
            g_dbus_connection_unregister_object(m_bus, m_object);
            g_object_unref(m_bus);
        }
        g_dbus_node_info_unref(m_description);
    }
    Service(const Service &) = delete;
    Service &operator=(const Service &) = delete;

    std::vector<std::string> folders;
    std::vector<std::string> items;

private:
    static void reachedBus(GDBusConnection *bus, const char *, void *data)
    {
        static constexpr GDBusInterfaceVTable table = {call, nullptr, nullptr, {nullptr}};
        auto *const self = static_cast<Service *>(data);
        self->m_bus = static_cast<GDBusConnection *>(g_object_ref(bus));
        // The bus goes before the program does; by default it would take the program along.
        g_dbus_connection_set_exit_on_close(bus, FALSE);
        self->m_object = g_dbus_connection_register_object(
            bus, "/org/freedesktop/FileManager1", self->m_description->interfaces[0], &table, self, nullptr, nullptr);
    }

    static void acquired(GDBusConnection *, const char *, void *data) { static_cast<Service *>(data)->m_known = true; }

    static void call(GDBusConnection *, const char *, const char *, const char *, const char *method,
                     GVariant *parameters, GDBusMethodInvocation *invocation, void *data)
    {
        auto *const self = static_cast<Service *>(data);
        auto &asked = std::string(method) == "ShowFolders" ? self->folders : self->items;
        for (auto &path : pathsIn(parameters)) {
            asked.push_back(std::move(path));
        }
        g_dbus_method_invocation_return_value(invocation, nullptr);
    }

    GDBusNodeInfo *m_description;
    GDBusConnection *m_bus = nullptr;
    unsigned m_owner = 0;
    unsigned m_object = 0;
    bool m_known = false;
};

FileManager::FileManager() : m_service(std::make_unique<Service>()) {}

FileManager::~FileManager() = default;

const std::vector<std::string> &FileManager::folders() const noexcept
{
    return m_service->folders;
}

const std::vector<std::string> &FileManager::items() const noexcept
{
    return m_service->items;
}

} // namespace quillfen::e2e
