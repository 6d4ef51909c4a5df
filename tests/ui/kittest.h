// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kit.h"
#include "ui/style/fade.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QEnterEvent>
#include <QTest>

#include <gtest/gtest.h>

/// A component alone: in the house's look, without motion, seen by eye and by assistive technology.
class KitTest : public testing::Test {
protected:
    KitTest()
    {
        kit::wearHouseLook();
        quillfen::setReducedMotion(true);
    }
    ~KitTest() override { quillfen::setReducedMotion({}); }

    static QAccessible::Role role(QWidget &widget) { return tree(widget)->role(); }
    static QString name(QWidget &widget) { return tree(widget)->text(QAccessible::Name); }
    static QString description(QWidget &widget) { return tree(widget)->text(QAccessible::Description); }
    static QAccessibleInterface *tree(QWidget &widget) { return QAccessible::queryAccessibleInterface(&widget); }

    /// Shown and in front, so that keys arrive.
    static void show(QWidget &widget)
    {
        widget.show();
        widget.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
    }

    /// Something else that has the focus, so that it can be told whether a click takes it away.
    static QWidget *focused(QWidget &window)
    {
        auto *other = new QWidget(&window);
        other->setFocusPolicy(Qt::TabFocus);
        other->show();
        other->setFocus();
        return other;
    }

    static void hover(QWidget &widget)
    {
        widget.setAttribute(Qt::WA_UnderMouse);
        QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QApplication::sendEvent(&widget, &enter);
    }
};

inline constexpr qreal everyScale[] = {1.0, 1.5, 2.0};
