// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "element.h"

#include <atspi/atspi.h>

namespace quillfen::e2e {
namespace {

// Ends with the scope whatever error a question to a vanished element leaves behind.
class Forgiven final {
public:
    Forgiven() = default;
    ~Forgiven() { g_clear_error(&m_error); }
    Forgiven(const Forgiven &) = delete;
    Forgiven &operator=(const Forgiven &) = delete;
    operator GError **() { return &m_error; }

private:
    GError *m_error = nullptr;
};

std::string taken(char *text)
{
    std::string result = text ? text : "";
    g_free(text);
    return result;
}

template <class Interface>
std::shared_ptr<Interface> owned(Interface *pointer)
{
    return {pointer, [](Interface *object) {
                if (object) {
                    g_object_unref(object);
                }
            }};
}

} // namespace

Element::Element(AtspiAccessible *accessible) : m_accessible(owned(accessible)) {}

std::string Element::name() const
{
    return m_accessible ? taken(atspi_accessible_get_name(m_accessible.get(), Forgiven())) : std::string();
}

std::string Element::role() const
{
    return m_accessible ? taken(atspi_accessible_get_role_name(m_accessible.get(), Forgiven())) : std::string();
}

std::string Element::description() const
{
    return m_accessible ? taken(atspi_accessible_get_description(m_accessible.get(), Forgiven())) : std::string();
}

std::string Element::text() const
{
    const auto contents = owned(m_accessible ? atspi_accessible_get_text_iface(m_accessible.get()) : nullptr);
    if (!contents) {
        return {};
    }
    const int length = atspi_text_get_character_count(contents.get(), Forgiven());
    return taken(atspi_text_get_text(contents.get(), 0, length, Forgiven()));
}

double Element::value() const
{
    const auto number = owned(m_accessible ? atspi_accessible_get_value_iface(m_accessible.get()) : nullptr);
    return number ? atspi_value_get_current_value(number.get(), Forgiven()) : 0.0;
}

unsigned Element::processId() const
{
    return m_accessible ? atspi_accessible_get_process_id(m_accessible.get(), Forgiven()) : 0;
}

Rect Element::place() const
{
    const auto component = owned(m_accessible ? atspi_accessible_get_component_iface(m_accessible.get()) : nullptr);
    if (!component) {
        return {};
    }
    AtspiRect *rect = atspi_component_get_extents(component.get(), ATSPI_COORD_TYPE_SCREEN, Forgiven());
    if (!rect) {
        return {};
    }
    const Rect result{rect->x, rect->y, rect->width, rect->height};
    g_free(rect);
    return result;
}

Element Element::parent() const
{
    return Element(m_accessible ? atspi_accessible_get_parent(m_accessible.get(), Forgiven()) : nullptr);
}

std::vector<Element> Element::children() const
{
    std::vector<Element> result;
    const int count = m_accessible ? atspi_accessible_get_child_count(m_accessible.get(), Forgiven()) : 0;
    for (int index = 0; index < count; ++index) {
        if (auto *child = atspi_accessible_get_child_at_index(m_accessible.get(), index, Forgiven())) {
            result.emplace_back(child);
        }
    }
    return result;
}

bool Element::state(int state) const
{
    const auto set = owned(m_accessible ? atspi_accessible_get_state_set(m_accessible.get()) : nullptr);
    return set && atspi_state_set_contains(set.get(), static_cast<AtspiStateType>(state));
}

bool Element::showing() const
{
    return state(ATSPI_STATE_SHOWING);
}
bool Element::enabled() const
{
    return state(ATSPI_STATE_ENABLED);
}
bool Element::focusable() const
{
    return state(ATSPI_STATE_FOCUSABLE);
}
bool Element::focused() const
{
    return state(ATSPI_STATE_FOCUSED);
}
bool Element::selected() const
{
    return state(ATSPI_STATE_SELECTED);
}
bool Element::checked() const
{
    return state(ATSPI_STATE_CHECKED);
}
bool Element::active() const
{
    return state(ATSPI_STATE_ACTIVE);
}

bool Element::press() const
{
    const auto action = owned(m_accessible ? atspi_accessible_get_action_iface(m_accessible.get()) : nullptr);
    return action && enabled() && atspi_action_get_n_actions(action.get(), Forgiven()) > 0 &&
           atspi_action_do_action(action.get(), 0, Forgiven());
}

bool Element::takeFocus() const
{
    const auto component = owned(m_accessible ? atspi_accessible_get_component_iface(m_accessible.get()) : nullptr);
    return component && atspi_component_grab_focus(component.get(), Forgiven());
}

bool Element::setText(const std::string &text) const
{
    const auto field = owned(m_accessible ? atspi_accessible_get_editable_text_iface(m_accessible.get()) : nullptr);
    return field && enabled() && atspi_editable_text_set_text_contents(field.get(), text.c_str(), Forgiven());
}

bool Element::setValue(double value) const
{
    const auto number = owned(m_accessible ? atspi_accessible_get_value_iface(m_accessible.get()) : nullptr);
    return number && enabled() && atspi_value_set_current_value(number.get(), value, Forgiven());
}

Element Element::find(const std::function<bool(const Element &)> &wanted) const
{
    if (!showing()) {
        return {};
    }
    if (wanted(*this)) {
        return *this;
    }
    for (const auto &child : children()) {
        if (auto found = child.find(wanted)) {
            return found;
        }
    }
    return {};
}

Element Element::find(const std::string &role, const std::string &name) const
{
    return find([&](const Element &element) { return element.name() == name && element.role() == role; });
}

std::vector<Element> Element::all(const std::function<bool(const Element &)> &wanted) const
{
    if (!showing()) {
        return {};
    }
    std::vector<Element> result;
    if (wanted(*this)) {
        result.push_back(*this);
    }
    for (const auto &child : children()) {
        for (auto &found : child.all(wanted)) {
            result.push_back(std::move(found));
        }
    }
    return result;
}

std::vector<Element> Element::all(const std::string &role) const
{
    return all([&](const Element &element) { return element.role() == role; });
}

std::string Element::dump() const
{
    std::string lines;
    dumpInto(lines, 0);
    return lines;
}

void Element::dumpInto(std::string &lines, int depth) const
{
    const auto contents = text();
    lines += std::string(static_cast<std::size_t>(depth) * 2, ' ') + role() + " \"" + name() + '"';
    if (!contents.empty() && contents != name()) {
        lines += " text \"" + contents + '"';
    }
    for (const auto &[holds, word] :
         {std::pair(!showing(), " hidden"), std::pair(!enabled(), " disabled"), std::pair(focused(), " focused"),
          std::pair(selected(), " selected"), std::pair(checked(), " checked")}) {
        if (holds) {
            lines += word;
        }
    }
    lines += '\n';
    for (const auto &child : children()) {
        child.dumpInto(lines, depth + 1);
    }
}

} // namespace quillfen::e2e
