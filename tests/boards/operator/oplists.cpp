// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "operatortest.h"

#include "boards/operator/opexportsview.h"
#include "boards/operator/optokensview.h"
#include "boards/operator/opusersview.h"

#include <QAccessible>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::Contains;
using testing::ElementsAre;

/// What rows of a tab show, top to bottom.
template <typename View>
class ListTest : public OperatorTabTest<View> {
protected:
    using OperatorTabTest<View>::view;

    [[nodiscard]] QStringList rowNames() const
    {
        QList<const QWidget *> rows;
        for (const QWidget *each : view->template findChildren<QWidget *>()) {
            if (each->isVisible() && each->property("accessibleRole").toInt() == QAccessible::ListItem) {
                rows.append(each);
            }
        }
        std::ranges::sort(rows, {}, [](const QWidget *row) { return row->mapToGlobal(QPoint()).y(); });
        QStringList names;
        for (const QWidget *row : rows) {
            names.append(row->accessibleName());
        }
        return names;
    }

    [[nodiscard]] bool rowsBecome(const QStringList &names) const
    {
        const bool did = this->eventually([&] { return rowNames() == names; });
        EXPECT_TRUE(did) << rowNames().join(u" | "_s).toStdString();
        return did;
    }

    [[nodiscard]] QLineEdit *filter() const { return view->template findChild<QLineEdit *>(); }
};

using UsersViewTest = ListTest<OpUsersView>;
using TokensViewTest = ListTest<OpTokensView>;
using ExportsViewTest = ListTest<OpExportsView>;

TEST_F(UsersViewTest, APendingUserOffersThreeActionsAnyOtherOne)
{
    view->load();
    ASSERT_TRUE(comes(u"mara@north.example"_s));
    EXPECT_TRUE(offers(u"Approve, jonas@tide.example"_s));
    EXPECT_TRUE(offers(u"Reject, jonas@tide.example"_s));
    EXPECT_TRUE(offers(u"Delete, jonas@tide.example"_s));
    EXPECT_TRUE(offers(u"Delete, mara@north.example"_s));
    EXPECT_FALSE(offers(u"Approve, mara@north.example"_s));
    EXPECT_FALSE(offers(u"Reject, mara@north.example"_s));
    EXPECT_TRUE(says(u"Sep 2, 2024"_s));
    EXPECT_TRUE(says(u"pending"_s));
    EXPECT_TRUE(comes(u"2.0 TB purchased · 512 GB allocated · active"_s));
}

TEST_F(UsersViewTest, EmptyListsSaySo)
{
    EXPECT_FALSE(says(u"No users."_s));
    giveUsers({});
    view->load();
    EXPECT_TRUE(comes(u"No users."_s));
}

TEST_F(UsersViewTest, AFailureStandsAboveTheListWhichStays)
{
    view->load();
    ASSERT_TRUE(comes(u"mara@north.example"_s));
    agent.fail("admin.users.list", {.message = "away"});
    view->load();
    EXPECT_TRUE(comes(u"away"_s));
    EXPECT_TRUE(says(u"mara@north.example"_s));
}

TEST_F(UsersViewTest, ApprovingAndRejectingAskNothing)
{
    view->load();
    ASSERT_TRUE(comes(u"mara@north.example"_s));
    agent.answer("admin.users.approve", nullptr);
    agent.answer("admin.users.reject", nullptr);
    press(view, u"Approve, jonas@tide.example"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"approved"_s; }));
    press(view, u"Reject, jonas@tide.example"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"rejected"_s; }));
    EXPECT_EQ(sent("admin.users.approve"), params("user_id", 11));
    EXPECT_EQ(sent("admin.users.reject"), params("user_id", 11));
}

TEST_F(UsersViewTest, AnApprovalLeavesTheKeyboardOnItsRowAndNotOnTheNextButton)
{
    view->load();
    ASSERT_TRUE(comes(u"mara@north.example"_s));
    agent.answer("admin.users.approve", nullptr);
    QAbstractButton *const approve = buttonOf(view, u"Approve, jonas@tide.example"_s);
    QWidget *const row = approve->parentWidget();
    approve->setFocus(Qt::TabFocusReason);
    giveUsers({user(11, u"jonas@tide.example"_s), user(12, u"mara@north.example"_s)});
    QTest::keyClick(approve, Qt::Key_Return);
    ASSERT_TRUE(eventually([&] { return !approve->isVisible(); }));
    EXPECT_EQ(QApplication::focusWidget(), row);
    EXPECT_EQ(row->accessibleName(), u"jonas@tide.example"_s);
    QTest::keyClick(row, Qt::Key_Return);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "one Enter more does nothing";
    QTest::keyClick(row, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), buttonOf(view, u"Delete, jonas@tide.example"_s));
}

TEST_F(UsersViewTest, ARunningActionHoldsItsButton)
{
    view->load();
    ASSERT_TRUE(comes(u"mara@north.example"_s));
    agent.answer("admin.users.approve", nullptr);
    agent.hold("admin.users.approve");
    QAbstractButton *const approve = buttonOf(view, u"Approve, jonas@tide.example"_s);
    QTest::mouseClick(approve, Qt::LeftButton);
    ASSERT_TRUE(eventually([&] { return !approve->isEnabled(); }));
    EXPECT_TRUE(buttonOf(view, u"Reject, jonas@tide.example"_s)->isEnabled());
    EXPECT_TRUE(buttonOf(view, u"Delete, mara@north.example"_s)->isEnabled());
    agent.release("admin.users.approve");
    EXPECT_TRUE(eventually([&] { return approve->isEnabled(); }));
}

TEST_F(UsersViewTest, DeletingWantsTheExactWord)
{
    view->load();
    ASSERT_TRUE(comes(u"mara@north.example"_s));
    for (const char *wrong : {"", "delete", "DELETE "}) {
        const Answering answer(u"Delete"_s, QString::fromLatin1(wrong));
        press(view, u"Delete, mara@north.example"_s);
        EXPECT_THAT(answer.texts, Contains(u"Delete mara@north.example?"_s));
        EXPECT_THAT(answer.texts, Contains(u"The user and their tokens are removed. Their account's volumes follow "
                                           "the account's own closure rules."_s));
    }
    QTest::qWait(5);
    EXPECT_EQ(agent.count("admin.users.delete"), 0U);
    agent.answer("admin.users.delete", nullptr);
    const Answering answer(u"Delete"_s, u"DELETE"_s);
    press(view, u"Delete, mara@north.example"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"deleted"_s; }));
    EXPECT_EQ(sent("admin.users.delete"), params("user_id", 12));
}

TEST_F(UsersViewTest, TheFilterFindsAddressesAndTenants)
{
    Record other = user(13, u"zoe@else.example"_s);
    other["tenant_name"] = "Lowfen Press";
    giveUsers({user(11, u"jonas@tide.example"_s, "pending"), user(12, u"mara@north.example"_s), other});
    agent.answer("admin.tenants.list", json::object());
    view->load();
    ASSERT_TRUE(rowsBecome({u"jonas@tide.example"_s, u"mara@north.example"_s, u"zoe@else.example"_s}));
    filter()->setText(u"LOWFEN"_s);
    EXPECT_TRUE(rowsBecome({u"zoe@else.example"_s}));
    filter()->setText(u"pend"_s);
    EXPECT_TRUE(rowsBecome({u"jonas@tide.example"_s}));
    filter()->setText(u"nobody"_s);
    EXPECT_TRUE(comes(u"Nothing here matches."_s));
    EXPECT_FALSE(says(u"No users."_s));
    filter()->clear();
    EXPECT_TRUE(rowsBecome({u"jonas@tide.example"_s, u"mara@north.example"_s, u"zoe@else.example"_s}));
}

TEST_F(UsersViewTest, ACaptionSortsByPointerAndByKey)
{
    Record older = user(13, u"anna@x.example"_s);
    older["created_at"] = "2020-01-01T00:00:00Z";
    giveUsers({user(11, u"jonas@x.example"_s), older, user(12, u"bela@x.example"_s)});
    agent.answer("admin.tenants.list", json::object());
    view->load();
    const QStringList came{u"jonas@x.example"_s, u"anna@x.example"_s, u"bela@x.example"_s};
    const QStringList sorted{u"anna@x.example"_s, u"bela@x.example"_s, u"jonas@x.example"_s};
    ASSERT_TRUE(rowsBecome(came));
    press(view, u"E-mail"_s);
    EXPECT_TRUE(rowsBecome(sorted));
    EXPECT_EQ(buttonOf(view, u"E-mail"_s)->accessibleDescription(), u"sorted, ascending"_s);
    buttonOf(view, u"E-mail"_s)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(buttonOf(view, u"E-mail"_s), Qt::Key_Return);
    EXPECT_TRUE(rowsBecome({sorted[2], sorted[1], sorted[0]}));
    QTest::keyClick(buttonOf(view, u"E-mail"_s), Qt::Key_Space);
    EXPECT_TRUE(rowsBecome(came));
    press(view, u"Created"_s);
    EXPECT_TRUE(eventually([&] { return rowNames().constFirst() == u"anna@x.example"_s; }));
}

TEST_F(TokensViewTest, RevokedOnesShowOnRequest)
{
    view->load();
    ASSERT_TRUE(rowsBecome({u"laptop"_s}));
    EXPECT_TRUE(says(u"expires Mar 1, 2031"_s));
    press(view, u"Show revoked"_s);
    ASSERT_TRUE(rowsBecome({u"laptop"_s, u"old nas"_s}));
    EXPECT_TRUE(says(u"revoked"_s));
    EXPECT_TRUE(offers(u"Revoke, laptop"_s));
    EXPECT_FALSE(offers(u"Revoke, old nas"_s));
    press(view, u"Show revoked"_s);
    EXPECT_TRUE(rowsBecome({u"laptop"_s}));
}

TEST_F(TokensViewTest, RevokingAsksFirst)
{
    giveTokens({token(21, QString())});
    view->load();
    ASSERT_TRUE(rowsBecome({u"(no label)"_s}));
    {
        const Answering answer(u"Cancel"_s);
        press(view, u"Revoke, (no label)"_s);
        EXPECT_THAT(answer.texts, Contains(u"Revoke this token?"_s));
        EXPECT_THAT(answer.texts, Contains(u"(no label) of mara@x.example stops working now."_s));
    }
    EXPECT_EQ(agent.count("admin.tokens.revoke"), 0U);
    agent.answer("admin.tokens.revoke", nullptr);
    const Answering answer(u"Revoke"_s);
    press(view, u"Revoke, (no label)"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"revoked"_s; }));
    EXPECT_EQ(sent("admin.tokens.revoke"), params("token_id", 21));
}

TEST_F(TokensViewTest, ARevocationThatRunsHoldsItsButton)
{
    view->load();
    ASSERT_TRUE(comes(u"laptop"_s));
    agent.answer("admin.tokens.revoke", nullptr);
    agent.hold("admin.tokens.revoke");
    {
        const Answering answer(u"Revoke"_s);
        press(view, u"Revoke, laptop"_s);
    }
    QAbstractButton *const revoke = buttonOf(view, u"Revoke, laptop"_s);
    EXPECT_TRUE(eventually([&] { return !revoke->isEnabled(); }));
    agent.release("admin.tokens.revoke");
    EXPECT_TRUE(eventually([&] { return revoke->isEnabled(); }));
}

TEST_F(TokensViewTest, TabTakesTheBandBeforeTheRows)
{
    view->load();
    ASSERT_TRUE(comes(u"laptop"_s));
    view->focusSearch();
    QStringList stops;
    for (int stop = 0; stop < 3; ++stop) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        const auto *const there = qobject_cast<QAbstractButton *>(QApplication::focusWidget());
        ASSERT_NE(there, nullptr);
        stops << (there->accessibleName().isEmpty() ? there->text() : there->accessibleName());
    }
    EXPECT_EQ(stops, (QStringList{u"Show revoked"_s, u"Prune revoked"_s, u"Label"_s}));
}

TEST_F(TokensViewTest, PruningAsksNothing)
{
    view->load();
    ASSERT_TRUE(rowsBecome({u"laptop"_s}));
    agent.answer("admin.tokens.prune", nullptr);
    press(view, u"Prune revoked"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"pruned"_s; }));
}

TEST_F(TokensViewTest, TwentyThousandKeepButAFewWidgets)
{
    std::vector<Record> many;
    for (int at = 0; at < 20'000; ++at) {
        many.push_back(token(at + 1, QStringLiteral("token-%1").arg(at)));
    }
    giveTokens(many);
    view->load();
    ASSERT_TRUE(comes(u"token-3"_s));
    EXPECT_LT(view->template findChildren<QAbstractButton *>().size(), 40);
    QAbstractButton *const first = buttonOf(view, u"Revoke, token-0"_s);
    first->setFocus(Qt::TabFocusReason);
    QTest::keyClick(first, Qt::Key_End);
    EXPECT_TRUE(comes(u"token-19999"_s));
    EXPECT_EQ(qobject_cast<QWidget *>(QApplication::focusWidget())->accessibleName(), u"Revoke, token-19999"_s);
    filter()->setText(u"token-1234"_s);
    EXPECT_TRUE(comes(u"token-12345"_s));
}

TEST_F(ExportsViewTest, OnlyMediaThatIsReadyCanBeMarked)
{
    view->load();
    ASSERT_TRUE(rowsBecome({u"#1182"_s, u"#1180"_s, u"#1177"_s}));
    EXPECT_TRUE(offers(u"Mark shipped, #1182"_s));
    EXPECT_FALSE(offers(u"Mark shipped, #1180"_s));
    EXPECT_FALSE(offers(u"Mark shipped, #1177"_s));
    for (const QString &order : {u"#1182"_s, u"#1180"_s, u"#1177"_s}) {
        EXPECT_TRUE(offers(u"Delete, "_s + order));
    }
    for (const char *text : {"Documents", "Northmere", "media", "ready", "LTO-8 tape"}) {
        EXPECT_TRUE(says(QString::fromLatin1(text))) << text;
    }
}

TEST_F(ExportsViewTest, AnEmptyListSaysSo)
{
    giveJobs({});
    view->load();
    EXPECT_TRUE(comes(u"None."_s));
}

TEST_F(ExportsViewTest, ShippingAsksForCarrierAndTracking)
{
    view->load();
    ASSERT_TRUE(comes(u"#1182"_s));
    agent.answer("admin.exports.ship", nullptr);
    {
        const Answering answer(u"Cancel"_s);
        press(view, u"Mark shipped, #1182"_s);
        EXPECT_THAT(answer.texts, Contains(u"Mark order #1182 shipped"_s));
        EXPECT_THAT(answer.texts, Contains(u"Carrier and tracking number (both optional)."_s));
    }
    EXPECT_EQ(agent.count("admin.exports.ship"), 0U);
    {
        const Answering answer(u"Mark shipped"_s, {}, [] {
            const auto fields = QApplication::activeModalWidget()->findChildren<QLineEdit *>();
            ASSERT_EQ(fields.size(), 2);
            EXPECT_EQ(QApplication::activeModalWidget()->focusWidget(), fields[0]);
            EXPECT_EQ(fields[0]->placeholderText(), u"carrier"_s);
            EXPECT_EQ(fields[1]->placeholderText(), u"tracking number"_s);
            EXPECT_GT(fields[1]->y(), fields[0]->y());
            fields[0]->setText(u"Fen Freight"_s);
            fields[1]->setText(u"FF-1"_s);
        });
        press(view, u"Mark shipped, #1182"_s);
    }
    EXPECT_TRUE(eventually([&] { return toast() == u"marked shipped"_s; }));
    EXPECT_EQ(sent("admin.exports.ship"), params("carrier", "Fen Freight", "tracking", "FF-1", "job_id", 1182));
    EXPECT_TRUE(eventually([&] { return buttonOf(view, u"Mark shipped, #1182"_s)->isEnabled(); }));
    const Answering empty(u"Mark shipped"_s);
    press(view, u"Mark shipped, #1182"_s);
    EXPECT_TRUE(eventually([&] { return agent.count("admin.exports.ship") == 2; }));
    EXPECT_EQ(sent("admin.exports.ship"), params("carrier", "", "tracking", "", "job_id", 1182));
}

TEST_F(ExportsViewTest, ADeletionThatRunsHoldsItsButton)
{
    view->load();
    ASSERT_TRUE(comes(u"#1177"_s));
    agent.answer("admin.exports.delete", nullptr);
    agent.hold("admin.exports.delete");
    {
        const Answering answer(u"Delete"_s);
        press(view, u"Delete, #1177"_s);
    }
    QAbstractButton *const remove = buttonOf(view, u"Delete, #1177"_s);
    EXPECT_TRUE(eventually([&] { return !remove->isEnabled(); }));
    EXPECT_TRUE(buttonOf(view, u"Delete, #1180"_s)->isEnabled());
    agent.release("admin.exports.delete");
    EXPECT_TRUE(eventually([&] { return remove->isEnabled(); }));
}

TEST_F(ExportsViewTest, DeletingAsksFirst)
{
    view->load();
    ASSERT_TRUE(comes(u"#1180"_s));
    {
        const Answering answer(u"Cancel"_s);
        press(view, u"Delete, #1180"_s);
        EXPECT_THAT(answer.texts, Contains(u"Delete order #1180?"_s));
        EXPECT_THAT(answer.texts, Contains(u"The packed copy is removed from the hub."_s));
    }
    EXPECT_EQ(agent.count("admin.exports.delete"), 0U);
    agent.answer("admin.exports.delete", nullptr);
    const Answering answer(u"Delete"_s);
    press(view, u"Delete, #1180"_s);
    EXPECT_TRUE(eventually([&] { return toast() == u"deleted"_s; }));
    EXPECT_EQ(sent("admin.exports.delete"), params("job_id", 1180));
}

TEST_F(ExportsViewTest, OrdersSortByTheirNumbers)
{
    giveJobs({job(99, "b", "link", "ready"), job(1000, "a", "link", "ready"), job(200, "c", "link", "ready")});
    view->load();
    ASSERT_TRUE(rowsBecome({u"#99"_s, u"#1000"_s, u"#200"_s}));
    press(view, u"Order"_s);
    EXPECT_TRUE(rowsBecome({u"#99"_s, u"#200"_s, u"#1000"_s}));
}

} // namespace
