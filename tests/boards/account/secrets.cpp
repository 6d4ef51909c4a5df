// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "viewtest.h"

#include <QAccessible>
#include <QClipboard>
#include <QMimeData>

namespace {

using namespace quillfen;
using namespace quillfen::test;

const QString secret = u"quill_token_s3cr3t"_s;

/// What the program wrote to its log meanwhile.
class LogWatch {
public:
    LogWatch()
    {
        lines().clear();
        m_before =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &line) { lines() << line; });
    }
    ~LogWatch() { qInstallMessageHandler(m_before); }
    LogWatch(const LogWatch &) = delete;
    LogWatch &operator=(const LogWatch &) = delete;

    [[nodiscard]] static QStringList &lines()
    {
        static QStringList all;
        return all;
    }

private:
    QtMessageHandler m_before;
};

/// The places of a widget and all below it that hold the secret, besides the text itself that shows it.
QStringList leaks(const QWidget *top)
{
    QStringList found;
    QList<const QWidget *> all{top};
    for (const QWidget *each : top->findChildren<QWidget *>()) {
        all << each;
    }
    for (const QWidget *each : all) {
        for (const QString &text :
             {each->toolTip(), each->accessibleName(), each->accessibleDescription(), each->windowTitle(),
              each->statusTip(), each->whatsThis(), each->objectName(), each->property("accessibleValue").toString()}) {
            if (text.contains(secret)) {
                found << QString::fromLatin1(each->metaObject()->className()) + u": "_s + text;
            }
        }
    }
    return found;
}

class SecretsTest : public AccountViewTest, public testing::WithParamInterface<bool> {
protected:
    [[nodiscard]] static bool isToken() { return GetParam(); }

    void SetUp() override
    {
        AccountViewTest::SetUp();
        agent.answer("auth.tokens.create", params("token", secret));
        agent.answer("auth.enroll_code", params("code", secret));
    }

    void ask()
    {
        if (isToken()) {
            const Answering answer(u"Create"_s, u"nas"_s);
            press(view.get(), u"Create token"_s);
        } else {
            press(view.get(), u"Enrol another computer"_s);
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Both, SecretsTest, testing::Values(true, false),
                         [](const auto &given) { return given.param ? "Token" : "EnrolmentCode"; });

TEST_P(SecretsTest, AreNowhereButInTheTextThatShowsThem)
{
    const LogWatch log;
    ask();
    QStringList inDialog;
    int shown = 0;
    const Answering answer(u"I have saved it"_s, {}, [&] {
        const QWidget *const dialog = QApplication::activeModalWidget();
        inDialog = leaks(dialog);
        for (const QWidget *each : dialog->findChildren<QWidget *>()) {
            shown += each->property("plainText").toString().contains(secret) ? 1 : 0;
        }
    });
    ASSERT_TRUE(eventually([&] { return answer.met; }));
    EXPECT_EQ(shown, 1) << "it is there to be read";
    EXPECT_EQ(inDialog, QStringList());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (const QWidget *const top : QApplication::topLevelWidgets()) {
        EXPECT_EQ(leaks(top), QStringList());
    }
    EXPECT_FALSE(toast().contains(secret));
    EXPECT_FALSE(LogWatch::lines().join(u'\n').contains(secret));
}

TEST_P(SecretsTest, AreGoneWithTheirDialog)
{
    ask();
    {
        const Answering answer(u"I have saved it"_s);
        ASSERT_TRUE(eventually([&] { return answer.met; }));
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (const QWidget *const each : QApplication::allWidgets()) {
        EXPECT_FALSE(each->property("plainText").toString().contains(secret));
        EXPECT_FALSE(each->property("text").toString().contains(secret));
    }
}

TEST_P(SecretsTest, AreMarkedAsSecretOnTheClipboard)
{
    ask();
    {
        const Answering copied(u"I have saved it"_s, {},
                               [] { buttonOf(QApplication::activeModalWidget(), u"Copy"_s)->click(); });
        ASSERT_TRUE(eventually([&] { return copied.met; }));
    }
    EXPECT_EQ(QApplication::clipboard()->text(), secret);
    EXPECT_EQ(QApplication::clipboard()->mimeData()->data(u"x-kde-passwordManagerHint"_s), "secret");
}

TEST_P(SecretsTest, AFailureTellsTheReasonAndNothingElse)
{
    const LogWatch log;
    agent.fail(isToken() ? "auth.tokens.create" : "auth.enroll_code", {.message = "The account is closing."});
    ask();
    EXPECT_TRUE(eventuallyToast(u"The account is closing."_s));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

} // namespace
