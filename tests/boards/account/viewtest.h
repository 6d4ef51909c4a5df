// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/account/accountview.h"

#include "accounttest.h"

#include "ui/style/fade.h"

namespace quillfen::test {

/// The board in a window, filled.
class AccountViewTest : public AccountTest {
protected:
    void SetUp() override
    {
        setReducedMotion(true);
        AccountTest::SetUp();
        open();
        ASSERT_TRUE(eventually([&] { return offers(u"Revoke, backup"_s); }));
        agent.clearLog();
    }

    void open(int width = 956, int height = 1000)
    {
        view.reset();
        view = std::make_unique<AccountView>(state, &window);
        resize(width, height);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        view->show();
    }

    void resize(int width, int height)
    {
        window.resize(width, height);
        view->resize(width, height);
    }

    /// A button that asks something has asked, and been answered, when this returns.
    static void press(const QWidget *inside, const QString &text)
    {
        test::press(inside, text);
        QCoreApplication::sendPostedEvents();
    }

    [[nodiscard]] QStringList texts() const { return shownTexts(view.get()); }
    [[nodiscard]] bool says(const QString &text) const { return texts().contains(text); }
    [[nodiscard]] bool eventuallySays(const QString &text) const
    {
        return eventually([&] { return says(text); });
    }
    [[nodiscard]] bool offers(const QString &button) const { return buttonOf(view.get(), button) != nullptr; }
    [[nodiscard]] bool eventuallyToast(const QString &text) const
    {
        return eventually([&] { return toast() == text; });
    }

    QWidget window;
    std::unique_ptr<AccountView> view;
};

} // namespace quillfen::test
