// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <atspi/atspi.h>
#include <dbus/dbus.h>

namespace quillfen::e2e {
namespace {

Desktop *theDesktop = nullptr;

std::filesystem::path privateFolder()
{
    auto pattern = (std::filesystem::temp_directory_path() / "quillfen-e2e.XXXXXX").string();
    if (!mkdtemp(pattern.data())) {
        throw std::runtime_error("no folder " + pattern);
    }
    return pattern;
}

// Programs only send events that somebody listens to.
constexpr auto eventTypes = {"object:state-changed", "object:property-change", "object:children-changed",
                             "object:announcement",  "object:text-changed",    "window"};

// No key bindings that could swallow the client's, no decorations' theme to look for.
constexpr auto windowManagerSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <desktops><number>1</number></desktops>
  <mouse><context name="Client">
    <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
  </context></mouse>
</openbox_config>
)";

// The last in the tree is the one that came last. A tool tip is for the pointer.
Element newestWindow(const Element &application)
{
    const auto windows = application.children();
    const auto newest = std::find_if(windows.rbegin(), windows.rend(), [](const Element &window) {
        return window.showing() && window.role() != "tool tip";
    });
    return newest == windows.rend() ? Element() : *newest;
}

} // namespace

// Registers for what the tests wait for.
class Desktop::Listener final {
public:
    explicit Listener(Desktop &desktop) : m_listener(atspi_event_listener_new(receive, &desktop, nullptr))
    {
        for (const char *type : eventTypes) {
            atspi_event_listener_register(m_listener, type, nullptr);
        }
    }
    ~Listener()
    {
        for (const char *type : eventTypes) {
            atspi_event_listener_deregister(m_listener, type, nullptr);
        }
        g_object_unref(m_listener);
    }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

private:
    static void receive(AtspiEvent *event, void *desktop)
    {
        // The library tells this of an element that is just being released here: one that is kept by its own
        // end is neither alive nor gone, and the next question to it ends in nowhere.
        if (event->type == std::string_view("object:state-changed:defunct")) {
            g_boxed_free(ATSPI_TYPE_EVENT, event);
            return;
        }
        auto *source = event->source ? static_cast<AtspiAccessible *>(g_object_ref(event->source)) : nullptr;
        static_cast<Desktop *>(desktop)->receive({event->type, event->detail1 != 0, Element(source)});
        g_boxed_free(ATSPI_TYPE_EVENT, event);
    }

    AtspiEventListener *m_listener;
};

void deliverEvents(std::chrono::milliseconds bound)
{
    const auto ring = [](void *rang) -> gboolean {
        *static_cast<bool *>(rang) = true;
        return G_SOURCE_REMOVE;
    };
    bool rang = false;
    const unsigned alarm = g_timeout_add(static_cast<unsigned>(bound.count()), ring, &rang);
    g_main_context_iteration(nullptr, TRUE);
    while (g_main_context_pending(nullptr)) {
        g_main_context_iteration(nullptr, FALSE);
    }
    if (!rang) {
        g_source_remove(alarm);
    }
}

Desktop::Desktop() : m_folder(privateFolder())
{
    std::filesystem::create_directory(home());
    std::filesystem::create_directory(m_folder / "runtime");
    std::filesystem::permissions(m_folder / "runtime", std::filesystem::perms::owner_all);
    startDisplay();
    startBus();
    startWindowManager();
    theDesktop = this;
}

Desktop::~Desktop()
{
    theDesktop = nullptr;
    m_listener.reset();
    m_events.clear();
    while (!m_processes.empty()) {
        m_processes.pop_back(); // last come, first go: nobody loses what it stands on
    }
    std::error_code ignored;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(m_folder, ignored)) {
        if (entry.is_directory(ignored) && !entry.is_symlink(ignored)) {
            std::filesystem::permissions(entry, std::filesystem::perms::owner_all, ignored);
        }
    }
    std::filesystem::remove_all(m_folder, ignored);
}

Desktop &Desktop::instance()
{
    if (!theDesktop) {
        throw std::logic_error("no desktop runs");
    }
    return *theDesktop;
}

Environment Desktop::environment() const
{
    Environment result{
        {"HOME", home()},
        {"XDG_RUNTIME_DIR", m_folder / "runtime"},
        {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + (m_folder / "bus").string()},
        {"DISPLAY", m_display},
        {"QUILL_AGENT_SOCKET", agentSocket()},
        {"QT_QPA_PLATFORM", "xcb"},
        {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"},
        {"GSETTINGS_BACKEND", "memory"},
        {"LANG", "en_US.UTF-8"},
        {"LC_ALL", "C.UTF-8"},
        {"TZ", "UTC"},
    };
    for (const char *name : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS", "UBSAN_OPTIONS"}) {
        if (const char *value = std::getenv(name)) {
            result.emplace(name, value);
        }
    }
    return result;
}

Element Desktop::application(pid_t process) const
{
    const Element desktop(atspi_get_desktop(0));
    for (const auto &application : desktop.children()) {
        if (application.processId() == static_cast<unsigned>(process)) {
            return application;
        }
    }
    return {};
}

void Desktop::awaitKeyboard() const
{
    const Element desktop(atspi_get_desktop(0));
    // A window is in the tree as soon as its program shows it; the window manager hands it the keyboard later, and
    // until then keys go to the window beneath, where a dialog lets nothing through.
    const auto isThere = [&] {
        const auto applications = desktop.children();
        return std::any_of(applications.begin(), applications.end(),
                           [](const Element &application) { return newestWindow(application).active(); });
    };
    static_cast<void>(waitFor(isThere, std::chrono::seconds(5 * slowness)));
}

bool Desktop::announced(const std::string &text)
{
    while (!m_told.contains(text) && m_read < m_events.size()) {
        const Event event = m_events[m_read++];
        if (event.type == "object:state-changed:showing" && event.on) {
            readAlert(event.source);
        }
    }
    return m_told.contains(text);
}

void Desktop::readAlert(const Element &element)
{
    if (element.role() == "alert") {
        m_told.insert(element.name());
    }
}

void Desktop::receive(Event event)
{
    // A new text is read out at once: the next may follow soon. What else comes into sight can wait until somebody
    // asks, for it is much.
    if (event.type == "object:property-change:accessible-name") {
        readAlert(event.source);
    }
    m_events.push_back(std::move(event));
}

Element Desktop::lastFocused() const
{
    for (std::size_t index = m_events.size(); index > 0; --index) {
        if (m_events[index - 1].type == "object:state-changed:focused" && m_events[index - 1].on) {
            return m_events[index - 1].source;
        }
    }
    return {};
}

void Desktop::forgetEvents()
{
    // Releasing an element may bring in events of others: these go into a queue that nobody is emptying.
    const auto forgotten = std::exchange(m_events, {});
    m_told.clear();
    m_read = 0;
}

void Desktop::start(const std::string &name, const std::vector<std::string> &command)
{
    m_processes.push_back(std::make_unique<Process>(command, environment(), m_folder / (name + ".log")));
}

void Desktop::startDisplay()
{
    start("display", {"Xvfb", "-displayfd", "1", "-screen", "0", "1600x1000x24", "-nolisten", "tcp", "-noreset"});
    const auto &display = m_processes.back();
    if (!waitFor([&] { return !display->running() || !displayIn(display->output()).empty(); }) || !display->running()) {
        throw std::runtime_error("no display: " + display->output());
    }
    m_display = ":" + displayIn(display->output());
    setenv("DISPLAY", m_display.c_str(), 1);
}

void Desktop::startBus()
{
    const auto variables = environment();
    const auto &address = variables.at("DBUS_SESSION_BUS_ADDRESS");
    start("bus", {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + address});
    if (!waitFor([this] { return listensAt(m_folder / "bus"); })) {
        throw std::runtime_error("no session bus: " + m_processes.back()->output());
    }
    // The library finds the accessibility bus through the session bus, which starts it at the first question.
    for (const auto &name : {"HOME", "XDG_RUNTIME_DIR", "DBUS_SESSION_BUS_ADDRESS"}) {
        setenv(name, variables.at(name).c_str(), 1);
    }
    unsetenv("AT_SPI_BUS_ADDRESS");
    if (atspi_init() != 0) {
        throw std::runtime_error("no accessibility bus");
    }
    // At the end the bus goes first, and by default the library takes the program along.
    if (auto *bus = dbus_bus_get(DBUS_BUS_SESSION, nullptr)) {
        dbus_connection_set_exit_on_disconnect(bus, FALSE);
    }
    // What the library remembers lags behind the program; every question goes there.
    atspi_accessible_set_cache_mask(Element(atspi_get_desktop(0)).handle(), ATSPI_CACHE_NONE);
    m_listener = std::make_unique<Listener>(*this);
}

void Desktop::startWindowManager()
{
    std::ofstream(m_folder / "openbox.xml") << windowManagerSettings;
    // Windows that it finds when it starts are not given the keyboard; what it runs when it has started says that ours
    // comes later.
    const auto started = m_folder / "started";
    start("openbox", {"openbox", "--sm-disable", "--config-file", m_folder / "openbox.xml", "--startup",
                      "touch " + started.string()});
    if (!waitFor([&] { return std::filesystem::exists(started); })) {
        throw std::runtime_error("no window manager: " + m_processes.back()->output());
    }
}

} // namespace quillfen::e2e
