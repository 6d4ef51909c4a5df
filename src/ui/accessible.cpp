// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/accessible.h"

#include "ui/text/label.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QApplication>
#include <QEvent>
#include <QVariant>
#include <QWidget>

namespace quillfen {
namespace {

constexpr const char *roleProperty = "accessibleRole";
constexpr const char *valueProperty = "accessibleValue";
constexpr const char *numberProperty = "accessibleNumber";
constexpr const char *modalProperty = "accessibleModal";
constexpr const char *inertProperty = "accessibleInert";

/// Whether a modal window keeps mouse and keyboard away from the widget.
bool isBehindModal(const QWidget &widget)
{
    const QWidget *const modal = QApplication::activeModalWidget();
    const QWidget *part = &widget;
    while (part != nullptr && part != modal) {
        part = part->parentWidget(); // also from a window to the one it stands over
    }
    return modal != nullptr && part == nullptr;
}

/// Whether the widget is, or is in, what a modal surface of its own window lies over.
bool isBeneathSheet(const QWidget &widget)
{
    const QWidget *part = &widget;
    while (part != nullptr && !isInert(part)) {
        part = part->isWindow() ? nullptr : part->parentWidget();
    }
    return part != nullptr;
}

/// Assistive technology reaches what mouse and keyboard reach, and no more.
bool isInReach(const QWidget &widget)
{
    return widget.isEnabled() && !isBehindModal(widget) && !isBeneathSheet(widget);
}

/// Presses the button from the event loop: what it does may last as long as a dialog, while the one who asked waits for
/// an answer. A button that is gone by then takes its press along.
void pressSoon(QAbstractButton *button)
{
    const auto press = [button] {
        if (button->isVisible() && isInReach(*button)) {
            button->click();
        }
    };
    QMetaObject::invokeMethod(button, press, Qt::QueuedConnection);
}

/// A painted widget as assistive technology sees it. Its value in words is a text to read, since the bridge passes on
/// only numbers as values; the number is there besides, where the widget has one.
class HouseAccessible final : public QAccessibleWidget,
                              public QAccessibleTextInterface,
                              public QAccessibleValueInterface {
public:
    explicit HouseAccessible(QWidget *widget) : QAccessibleWidget(widget) {}

    [[nodiscard]] QAccessible::Role role() const override
    {
        return static_cast<QAccessible::Role>(widget()->property(roleProperty).toInt());
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value) {
            return words();
        }
        if (kind == QAccessible::Name && button() != nullptr && widget()->accessibleName().isEmpty()) {
            return button()->text();
        }
        return QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = widget()->property(modalProperty).toBool();
        if (isBeneathSheet(*widget())) {
            state.invisible = true;
            state.focusable = false;
        }
        if (role() == QAccessible::StaticText || role() == QAccessible::Heading) {
            state.readOnly = true;
            // A line that is kept free for a text to come is nothing to stop at.
            if (text(QAccessible::Name).isEmpty()) {
                state.invisible = true;
            }
        }
        if (button() == nullptr) {
            return state;
        }
        state.pressed = button()->isDown();
        if (role() == QAccessible::PageTab) {
            state.selectable = true;
            state.selected = button()->isChecked();
        } else if (button()->isCheckable()) {
            state.checkable = true;
            state.checked = button()->isChecked();
        }
        return state;
    }

    // Beneath a modal surface there is nothing. What is in there is still asked for its place in its parent by those
    // who know it from before, and tells it.

    [[nodiscard]] int childCount() const override { return isInert(widget()) ? 0 : QAccessibleWidget::childCount(); }
    [[nodiscard]] QAccessibleInterface *child(int index) const override
    {
        return isInert(widget()) ? nullptr : QAccessibleWidget::child(index);
    }
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override
    {
        return isInert(widget()) ? nullptr : QAccessibleWidget::childAt(x, y);
    }
    [[nodiscard]] QAccessibleInterface *focusChild() const override
    {
        return isInert(widget()) ? nullptr : QAccessibleWidget::focusChild();
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface && widget()->property(valueProperty).isValid()) {
            return static_cast<QAccessibleTextInterface *>(this);
        }
        if (type == QAccessible::ValueInterface &&
            (adjustable() != nullptr || widget()->property(numberProperty).isValid())) {
            return static_cast<QAccessibleValueInterface *>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }

    // What can be done with it.

    [[nodiscard]] QStringList actionNames() const override
    {
        QStringList names;
        if (button() != nullptr && widget()->isEnabled()) {
            names += buttonAction();
        }
        if (adjustable() != nullptr && widget()->isEnabled()) {
            names << increaseAction() << decreaseAction();
        }
        return names + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        if (isBeneathSheet(*widget())) {
            return;
        }
        if (button() != nullptr && widget()->isEnabled() && name == buttonAction()) {
            pressSoon(button());
        } else if (adjustable() != nullptr && (name == increaseAction() || name == decreaseAction())) {
            const double step = adjustable()->numberStep();
            setCurrentValue(adjustable()->accessibleNumber() + (name == increaseAction() ? step : -step));
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

    [[nodiscard]] QStringList keyBindingsForAction(const QString &) const override { return {}; }

    // The value as a number.

    [[nodiscard]] QVariant currentValue() const override
    {
        return adjustable() != nullptr ? adjustable()->accessibleNumber() : widget()->property(numberProperty);
    }
    void setCurrentValue(const QVariant &value) override
    {
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        if (adjustable() != nullptr && isNumber && isInReach(*widget())) {
            adjustable()->adjustTo(number);
        }
    }
    [[nodiscard]] QVariant maximumValue() const override
    {
        return adjustable() != nullptr ? adjustable()->largestNumber() : 1.0;
    }
    [[nodiscard]] QVariant minimumValue() const override
    {
        return adjustable() != nullptr ? adjustable()->smallestNumber() : 0.0;
    }
    [[nodiscard]] QVariant minimumStepSize() const override
    {
        return adjustable() != nullptr ? adjustable()->numberStep() : 0.0;
    }

    // The value in words, to be read and not to be changed.

    void selection(int, int *start, int *end) const override { *start = *end = 0; }
    [[nodiscard]] int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    [[nodiscard]] int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    [[nodiscard]] QString text(int start, int end) const override { return words().mid(start, end - start); }
    [[nodiscard]] int characterCount() const override { return static_cast<int>(words().size()); }
    [[nodiscard]] QRect characterRect(int) const override { return rect(); }
    [[nodiscard]] int offsetAtPoint(const QPoint &) const override { return 0; }
    void scrollToSubstring(int, int) override {}
    [[nodiscard]] QString attributes(int, int *start, int *end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    [[nodiscard]] QAbstractButton *button() const { return qobject_cast<QAbstractButton *>(object()); }
    [[nodiscard]] AdjustableValue *adjustable() const { return dynamic_cast<AdjustableValue *>(widget()); }
    [[nodiscard]] QString words() const { return widget()->property(valueProperty).toString(); }
    [[nodiscard]] QString buttonAction() const
    {
        return button()->isCheckable() && role() != QAccessible::PageTab ? toggleAction() : pressAction();
    }
};

QAccessibleInterface *houseFactory(const QString &, QObject *object)
{
    auto *widget = qobject_cast<QWidget *>(object);
    if (widget == nullptr || !widget->property(roleProperty).isValid()) {
        return nullptr;
    }
    return new HouseAccessible(widget);
}

void installFactory()
{
    static const bool installed = [] {
        QAccessible::installFactory(houseFactory);
        return true;
    }();
    Q_UNUSED(installed)
}

/// Qt tells of a button's check by itself, not of a tab's selection.
void tellSelection(QAbstractButton *button)
{
    QObject::connect(button, &QAbstractButton::toggled, button, [button] {
        if (!QAccessible::isActive()) {
            return;
        }
        QAccessibleEvent event(button, QAccessible::Selection);
        QAccessible::updateAccessibility(&event);
    });
}

/// Remembers for the rest of the turn that an alert has just come into sight: Qt tells of that by itself, and telling
/// it again would have it read twice.
class AlertWatch final : public QObject {
public:
    explicit AlertWatch(QWidget *alert) : QObject(alert) { alert->installEventFilter(this); }

    [[nodiscard]] bool hasJustAppeared() const noexcept { return m_hasJustAppeared; }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Show) {
            m_hasJustAppeared = true;
            QMetaObject::invokeMethod(
                this, [this] { m_hasJustAppeared = false; }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    bool m_hasJustAppeared = false;
};

bool hasJustAppeared(const QWidget *alert)
{
    for (const QObject *child : alert->children()) {
        if (const auto *watch = dynamic_cast<const AlertWatch *>(child)) {
            return watch->hasJustAppeared();
        }
    }
    return false;
}

/// A widget that was named or shown before it got its role may be known already, as what Qt takes it for. Asking makes
/// an interface, so only such widgets are asked for.
void forgetOldInterface(QWidget *widget)
{
    const auto *button = qobject_cast<QAbstractButton *>(widget);
    const bool hasText = button != nullptr && !button->text().isEmpty();
    if (!hasText && widget->accessibleName().isEmpty() && !widget->isVisible()) {
        return;
    }
    QAccessibleInterface *known = QAccessible::queryAccessibleInterface(widget);
    if (known != nullptr && dynamic_cast<HouseAccessible *>(known) == nullptr) {
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
    }
}

} // namespace

void setRole(QWidget *widget, QAccessible::Role role)
{
    installFactory();
    const bool isNew = !widget->property(roleProperty).isValid();
    widget->setProperty(roleProperty, static_cast<int>(role));
    if (!isNew) {
        return;
    }
    forgetOldInterface(widget);
    if (role == QAccessible::AlertMessage) {
        new AlertWatch(widget); // the widget's own
    }
    if (auto *button = qobject_cast<QAbstractButton *>(widget); button != nullptr && role == QAccessible::PageTab) {
        tellSelection(button);
    }
}

void setModalDialog(QWidget *widget)
{
    setRole(widget, QAccessible::Dialog);
    widget->setProperty(modalProperty, true);
}

void setInert(QWidget *widget, bool inert)
{
    if (!widget->property(roleProperty).isValid()) {
        setRole(widget, QAccessible::Client); // what it is without one
    }
    widget->setProperty(inertProperty, inert);
    if (QAccessible::isActive() && widget->isVisible()) {
        QAccessibleEvent event(widget, inert ? QAccessible::ObjectHide : QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&event);
    }
}

bool isInert(const QWidget *widget)
{
    return widget->property(inertProperty).toBool();
}

void setAccessible(QWidget *widget, QAccessible::Role role, const QString &name)
{
    setRole(widget, role);
    widget->setAccessibleName(name);
}

void setAccessibleValue(QWidget *widget, const QString &words, std::optional<double> share)
{
    const QString before = widget->property(valueProperty).toString();
    const QVariant number = share ? QVariant(*share) : QVariant();
    if (before == words && widget->property(numberProperty) == number && !words.isNull()) {
        return;
    }
    widget->setProperty(valueProperty, words);
    widget->setProperty(numberProperty, number);
    if (!QAccessible::isActive()) {
        return; // an event would build the widget's interface for nobody
    }
    QAccessibleTextUpdateEvent text(widget, 0, before, words);
    QAccessible::updateAccessibility(&text);
    if (share) {
        QAccessibleValueChangeEvent value(widget, number);
        QAccessible::updateAccessibility(&value);
    }
}

void announce(QWidget *widget, const QString &text)
{
    if (text.isEmpty()) {
        return;
    }
    if (const QString shown = madeVisible(text); widget->accessibleName() != shown) {
        widget->setAccessibleName(shown);
    }
    // The bridge drops alert events. What a screen reader listens to is an alert that comes into sight: the showing of
    // the widget, told once more for a text that changes in place.
    if (!QAccessible::isActive() || !widget->isVisible() || hasJustAppeared(widget)) {
        return;
    }
    QAccessibleEvent shown(widget, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}

} // namespace quillfen
