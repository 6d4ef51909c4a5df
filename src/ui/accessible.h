// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAccessible>

#include <optional>

class QWidget;

namespace quillfen {

/// Gives a widget the role under which assistive technology knows it. Painted widgets are nameless fillers without one.
/// States (checked, selected, disabled) and values follow the widget: a checkable `QAbstractButton` reports its check,
/// a widget with the property "accessibleValue" (QString) its value in words.
void setRole(QWidget *widget, QAccessible::Role role);

/// Role and name in one line, beside the widget's construction.
void setAccessible(QWidget *widget, QAccessible::Role role, const QString &name);

/// Role and state of a dialog that has to be dealt with before anything else of its program.
void setModalDialog(QWidget *widget);

/// Takes a widget and all that is in it away from assistive technology, and gives it back: for what lies beneath a
/// modal surface within the same window. Keeping mouse and keyboard from there is the surface's own matter.
void setInert(QWidget *widget, bool inert);
[[nodiscard]] bool isInert(const QWidget *widget);

/// The value of a painted widget in words, and where it has one as a share of the whole (0 to 1). Writes the property
/// "accessibleValue" and tells of the change; the same value again is silent.
void setAccessibleValue(QWidget *widget, const QString &words, std::optional<double> share = {});

/// What a widget offers besides its role when assistive technology may change its value: a number to read and to set.
/// The widget implements it, and tells of changes by `setAccessibleValue`, whose second value then is the number.
class AdjustableValue {
public:
    AdjustableValue() = default;
    virtual ~AdjustableValue() = default;
    AdjustableValue(const AdjustableValue &) = delete;
    AdjustableValue &operator=(const AdjustableValue &) = delete;

    [[nodiscard]] virtual double accessibleNumber() const = 0;
    [[nodiscard]] virtual double smallestNumber() const = 0;
    [[nodiscard]] virtual double largestNumber() const = 0;
    /// By how much the actions "increase" and "decrease" change it.
    [[nodiscard]] virtual double numberStep() const { return 1.0; }
    virtual void adjustTo(double number) = 0;
};

/// Says `text` to a screen reader once, politely, as an alert of `widget`, whose role is `QAccessible::AlertMessage`
/// and whose name becomes `text`. Qt 6.4 has no announcement of its own: a visible widget is told to have come into
/// sight, which is what screen readers read alerts at. A hidden one is read when it is shown.
void announce(QWidget *widget, const QString &text);

} // namespace quillfen
