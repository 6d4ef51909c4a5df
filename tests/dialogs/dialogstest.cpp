// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "dialogs/dialogs.h"

#include "ui/controls/buttons.h"
#include "ui/controls/textfield.h"
#include "ui/overlays/scrim.h"
#include "ui/paint/shadow.h"
#include "ui/style/fade.h"
#include "ui/style/focusring.h"
#include "ui/style/housestyle.h"
#include "ui/system/compositing.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QMimeData>
#include <QPlatformSurfaceEvent>
#include <QPointer>
#include <QScrollArea>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

void wearHouseLook()
{
    static const bool worn = [] {
        auto &application = *static_cast<QApplication *>(QCoreApplication::instance());
        applyHouseLook(application);
        installFocusRing(application);
        return true;
    }();
    Q_UNUSED(worn)
}

class Dialogs : public testing::Test {
protected:
    Dialogs()
    {
        wearHouseLook();
        setReducedMotion(true);
        window.resize(1180, 760);
        opener = new Button(u"Delete"_s, DangerButtonStyle{}, &window);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QApplication::clipboard()->clear();
    }

    ~Dialogs() override
    {
        setReducedMotion({});
        EXPECT_TRUE(met) << "the question has never been on the screen";
    }

    /// Runs `act` once the question is on the screen; a question still there afterwards is ended after a while, so that
    /// a wrong answer fails one test and does not stop them all.
    void during(std::function<void(QDialog &)> act)
    {
        met = false;
        auto *poll = new QTimer(&window);
        QObject::connect(poll, &QTimer::timeout, poll, [this, poll, act = std::move(act)] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (!dialog || !QApplication::focusWidget() || QApplication::focusWidget()->window() != dialog) {
                return;
            }
            poll->deleteLater();
            poll->stop();
            met = true;
            act(*dialog);
        });
        poll->start(5);
    }

    static Button *button(const QDialog &dialog, const QString &text)
    {
        for (Button *each : dialog.findChildren<Button *>()) {
            if (each->text() == text) {
                return each;
            }
        }
        ADD_FAILURE() << "no button " << text.toStdString();
        return nullptr;
    }

    static void click(const QDialog &dialog, const QString &text)
    {
        QTest::mouseClick(button(dialog, text), Qt::LeftButton);
    }

    static void type(const QString &text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    static QStringList texts(const QDialog &dialog)
    {
        QStringList all;
        for (const AgentLabel *label : dialog.findChildren<AgentLabel *>()) {
            all += label->text();
        }
        for (const Label *label : dialog.findChildren<Label *>()) {
            all += label->text();
        }
        return all;
    }

    static QRect panel(const QDialog &dialog)
    {
        return isComposited() ? dialog.geometry().marginsRemoved(sheetShadow.margins()) : dialog.geometry();
    }

    bool ask(Destructive destructive = Destructive::Yes)
    {
        return confirm(&window, u"Turn CHAP off?"_s, u"The target becomes open."_s, u"Turn off"_s, destructive);
    }

    bool askTyped() { return typedConfirm(&window, u"Close?"_s, u"It ends."_s, u"CLOSE"_s, u"Close it"_s); }

    std::optional<QString> askName()
    {
        return askText(&window, u"New volume"_s, u"A copy."_s, u"Documents-2026"_s, u"Prepare"_s, u"Name"_s);
    }

    QWidget window;
    Button *opener;
    bool met = true;
};

class Confirm : public Dialogs {};
class TypedConfirm : public Dialogs {};
class ShowSecret : public Dialogs {};
class AskText : public Dialogs {};

} // namespace

TEST_F(Confirm, VerbAnswersTrueAndCancelFalse)
{
    during([](QDialog &dialog) { click(dialog, u"Turn off"_s); });
    EXPECT_TRUE(ask());
    during([](QDialog &dialog) { click(dialog, u"Cancel"_s); });
    EXPECT_FALSE(ask());
}

TEST_F(Confirm, EnterIsTheVerbAndEscIsCancel)
{
    during([](QDialog &) { press(Qt::Key_Return); });
    EXPECT_TRUE(ask());
    during([](QDialog &) { press(Qt::Key_Enter); });
    EXPECT_TRUE(ask());
    during([](QDialog &) { press(Qt::Key_Escape); });
    EXPECT_FALSE(ask());
}

TEST_F(Confirm, EnterOnCancelIsCancel)
{
    during([](QDialog &dialog) {
        press(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), button(dialog, u"Cancel"_s));
        press(Qt::Key_Return);
    });
    EXPECT_FALSE(ask());
    during([](QDialog &) {
        press(Qt::Key_Tab);
        press(Qt::Key_Space);
    });
    EXPECT_FALSE(ask());
}

TEST_F(Confirm, ClosingTheWindowIsCancel)
{
    during([](QDialog &dialog) { dialog.close(); });
    EXPECT_FALSE(ask());
}

TEST_F(Confirm, FocusStartsOnTheDefaultAndShowsItsRing)
{
    during([](QDialog &dialog) {
        EXPECT_EQ(QApplication::focusWidget(), button(dialog, u"Turn off"_s));
        const auto *ring = dialog.findChild<QWidget *>(u"focusRing"_s);
        ASSERT_NE(ring, nullptr);
        EXPECT_TRUE(ring->isVisible());
        click(dialog, u"Cancel"_s);
    });
    EXPECT_FALSE(ask());
}

TEST_F(Confirm, OnlyADestructiveVerbWarns)
{
    const auto fill = [](QDialog &dialog) {
        Button *verb = button(dialog, u"Turn off"_s);
        const QColor colour = verb->grab().toImage().pixelColor(verb->width() / 2, 4);
        click(dialog, u"Cancel"_s);
        return colour;
    };
    during([&](QDialog &dialog) { EXPECT_EQ(fill(dialog), QColor(Theme::danger)); });
    EXPECT_FALSE(ask(Destructive::Yes));
    during([&](QDialog &dialog) {
        EXPECT_EQ(dialog.findChildren<Button *>().size(), 2);
        EXPECT_EQ(fill(dialog), QColor(Theme::accent));
    });
    EXPECT_FALSE(ask(Destructive::No));
}

TEST_F(Confirm, SaysItsTextsAndIsNamedByItsTitle)
{
    during([this](QDialog &dialog) {
        EXPECT_EQ(texts(dialog), (QStringList{u"Turn CHAP off?"_s, u"The target becomes open."_s}));
        EXPECT_EQ(dialog.accessibleName(), u"Turn CHAP off?"_s);
        EXPECT_EQ(QAccessible::queryAccessibleInterface(&dialog)->role(), QAccessible::Dialog);
        EXPECT_TRUE(dialog.isModal());
        EXPECT_EQ(dialog.windowHandle()->transientParent(), window.windowHandle());
        EXPECT_LT(button(dialog, u"Cancel"_s)->x(), button(dialog, u"Turn off"_s)->x()) << "the default is outermost";
        click(dialog, u"Cancel"_s);
    });
    EXPECT_FALSE(ask());
}

TEST_F(Confirm, StandsInTheMiddleOfItsWindowOverAScrim)
{
    window.setGeometry(40, 20, 600, 500); // the screen of the tests is a small one
    QApplication::processEvents();
    during([this](QDialog &dialog) {
        EXPECT_EQ(panel(dialog).width(), 480);
        EXPECT_LE(std::abs(panel(dialog).center().x() - window.geometry().center().x()), 1);
        auto *scrim = window.findChild<Scrim *>();
        ASSERT_NE(scrim, nullptr);
        EXPECT_EQ(scrim->geometry(), window.rect());
        click(dialog, u"Cancel"_s);
    });
    EXPECT_FALSE(ask());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window.findChild<Scrim *>(); }, 2000));
}

/// What the system's window of a dialog is told about its place.
class PlaceWatch final : public QObject {
public:
    PlaceWatch() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *const one = qobject_cast<QWindow *>(watched);
        if (one != nullptr && one->type() == Qt::Dialog && event->type() == QEvent::PlatformSurface &&
            static_cast<QPlatformSurfaceEvent *>(event)->surfaceEventType() == QPlatformSurfaceEvent::SurfaceCreated) {
            places.push_back(one->geometry());
        }
        return false;
    }

    QList<QRect> places;
};

TEST_F(Confirm, ItsWindowIsMadeWhereItStands)
{
    window.setGeometry(40, 20, 600, 500);
    QApplication::processEvents();
    const PlaceWatch watch;
    QRect place;
    during([&](QDialog &dialog) {
        place = dialog.geometry();
        click(dialog, u"Cancel"_s);
    });
    EXPECT_FALSE(ask());
    EXPECT_EQ(watch.places, QList<QRect>{place}) << "moved later, it may lose a race against its window manager";
}

TEST_F(Confirm, IsModalToAssistiveTechnology)
{
    during([](QDialog &dialog) {
        const QAccessibleInterface *const face = QAccessible::queryAccessibleInterface(&dialog);
        EXPECT_EQ(face->role(), QAccessible::Dialog);
        EXPECT_TRUE(face->state().modal);
        EXPECT_TRUE(face->state().active);
        click(dialog, u"Cancel"_s);
    });
    EXPECT_FALSE(ask());
}

TEST_F(Confirm, BlocksItsCallerWhileTheProgramGoesOn)
{
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&ticks] { ++ticks; });
    ticker.start(5);
    during([&](QDialog &dialog) {
        EXPECT_TRUE(QTest::qWaitFor([&ticks] { return ticks > 5; }, 2000));
        click(dialog, u"Turn off"_s);
    });
    EXPECT_TRUE(ask());
    EXPECT_GT(ticks, 5);
}

TEST_F(Confirm, GivesFocusBackToWhatHadIt)
{
    opener->setFocus(Qt::TabFocusReason);
    during([](QDialog &dialog) { click(dialog, u"Cancel"_s); });
    EXPECT_FALSE(ask());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_EQ(QApplication::focusWidget(), opener);
}

TEST_F(Confirm, WithoutAParentItStandsOverTheActiveWindow)
{
    during([this](QDialog &dialog) {
        EXPECT_NE(window.findChild<Scrim *>(), nullptr);
        click(dialog, u"Turn off"_s);
    });
    EXPECT_TRUE(confirm(nullptr, u"Sign out?"_s, {}, u"Turn off"_s, Destructive::No));
    window.hide();
    during([](QDialog &dialog) { click(dialog, u"Turn off"_s); });
    EXPECT_TRUE(confirm(nullptr, u"Sign out?"_s, {}, u"Turn off"_s, Destructive::No)) << "no window at all";
}

TEST_F(Confirm, ParentDestroyedMeanwhileIsCancel)
{
    auto *view = new QWidget(&window);
    during([view](QDialog &) { delete view; });
    EXPECT_FALSE(confirm(view, u"Delete?"_s, u"Gone."_s, u"Delete"_s, Destructive::Yes));
}

TEST_F(Confirm, WindowDestroyedMeanwhileIsCancel)
{
    auto other = std::make_unique<QWidget>();
    other->resize(800, 600);
    other->show();
    auto *view = new QWidget(other.get());
    during([&other](QDialog &) { other.reset(); });
    EXPECT_FALSE(confirm(view, u"Delete?"_s, u"Gone."_s, u"Delete"_s, Destructive::Yes));
}

TEST_F(Confirm, EndOfTheProgramIsCancel)
{
    during([](QDialog &) { QCoreApplication::exit(); });
    bool answer = true;
    QTimer::singleShot(0, &window, [this, &answer] { answer = ask(); });
    QCoreApplication::exec();
    EXPECT_FALSE(answer);
}

TEST_F(Confirm, KeysThatQuitCancelAndEndTheProgram)
{
    during([](QDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Q, Qt::ControlModifier); });
    std::optional<bool> answer;
    QTimer::singleShot(0, &window, [&] { answer = ask(); });
    bool late = false;
    QTimer::singleShot(10'000, &window, [&late] {
        late = true;
        QCoreApplication::exit();
    });
    QApplication::exec();
    EXPECT_FALSE(late) << "the program goes on";
    EXPECT_EQ(answer, false);
}

TEST_F(Confirm, LongTextsKeepItsWidthAndItsButtonsOnTheScreen)
{
    const QRect screen = window.screen()->availableGeometry();
    for (const QString &text : {QString(16 * 1024, u'x'), u"words and more "_s.repeated(1200),
                                QString(16 * 1024, u'\n'), QString(1024 * 1024, u'W')}) {
        during([&](QDialog &dialog) {
            EXPECT_EQ(panel(dialog).width(), 480);
            EXPECT_LE(panel(dialog).height(), screen.height());
            const Button *verb = button(dialog, u"Delete"_s);
            const QRect place(verb->mapToGlobal(QPoint()), verb->size());
            EXPECT_TRUE(screen.contains(place)) << place.top();
            EXPECT_FALSE(dialog.findChildren<QScrollArea *>().isEmpty());
            click(dialog, u"Delete"_s);
        });
        EXPECT_TRUE(confirm(&window, text, text, u"Delete"_s, Destructive::Yes));
    }
}

TEST_F(Confirm, AgentTextIsPlainAndVisible)
{
    during([](QDialog &dialog) {
        const QStringList all = texts(dialog);
        EXPECT_EQ(all.last(), u"<b>bold</b> gnp⟨U+202E⟩exe\nnext"_s);
        EXPECT_FALSE(dialog.windowTitle().contains(QChar(0x202E)));
        for (const Label *label : dialog.findChildren<Label *>()) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText);
        }
        click(dialog, u"Cancel"_s);
    });
    EXPECT_FALSE(confirm(&window, u"\u202Etitle"_s, u"<b>bold</b> gnp\u202Eexe\nnext"_s, u"Delete"_s, Destructive::No));
}

TEST_F(Confirm, OverAnotherQuestionItAnswersForItself)
{
    bool inner = false;
    during([this, &inner](QDialog &outer) {
        during([&inner](QDialog &dialog) {
            inner = true;
            click(dialog, u"Cancel"_s);
        });
        EXPECT_FALSE(confirm(nullptr, u"Really?"_s, {}, u"Yes"_s, Destructive::No));
        EXPECT_TRUE(outer.isVisible());
        click(outer, u"Turn off"_s);
    });
    EXPECT_TRUE(ask());
    EXPECT_TRUE(inner);
}

TEST_F(Confirm, CornersAreRoundWithAndWithoutACompositor)
{
    during([](QDialog &dialog) {
        const QImage picture = dialog.grab().toImage();
        const QPoint corner = panel(dialog).topLeft() - dialog.pos();
        EXPECT_EQ(picture.pixelColor(corner + QPoint(240, 0)), QColor(Theme::line));
        EXPECT_EQ(picture.pixelColor(corner + QPoint(240, 10)), QColor(Theme::bg));
        if (isComposited()) {
            EXPECT_LT(picture.pixelColor(corner).alpha(), 120) << "only shadow";
            EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0);
        } else {
            EXPECT_FALSE(dialog.mask().contains(QPoint(0, 0)));
            EXPECT_FALSE(dialog.mask().contains(QPoint(2, 2))) << "round, not cut off straight";
            EXPECT_TRUE(dialog.mask().contains(QPoint(5, 5)));
            EXPECT_TRUE(dialog.mask().contains(QPoint(240, 0)));
        }
        click(dialog, u"Cancel"_s);
    });
    EXPECT_FALSE(ask());
}

TEST_F(TypedConfirm, OnlyTheExactWordCounts)
{
    struct Case {
        QString typed;
        bool answer;
    };
    const Case cases[] = {{u"CLOSE"_s, true},   {u"close"_s, false},  {u" CLOSE"_s, false},
                          {u"CLOSE "_s, false}, {u"CLOSED"_s, false}, {QString(), false}};
    for (const Case &each : cases) {
        during([&](QDialog &dialog) {
            type(each.typed);
            click(dialog, u"Close it"_s);
        });
        EXPECT_EQ(askTyped(), each.answer) << each.typed.toStdString();
    }
}

TEST_F(TypedConfirm, CancelAfterTheRightWordIsFalse)
{
    during([](QDialog &dialog) {
        type(u"CLOSE"_s);
        click(dialog, u"Cancel"_s);
    });
    EXPECT_FALSE(askTyped());
    during([](QDialog &) {
        type(u"CLOSE"_s);
        press(Qt::Key_Escape);
    });
    EXPECT_FALSE(askTyped());
}

TEST_F(TypedConfirm, ThereIsNoSecondTry)
{
    during([](QDialog &dialog) {
        type(u"CLOS"_s);
        press(Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
        QTest::keyClicks(dialog.findChild<TextField *>(), u"E"_s); // too late
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    });
    EXPECT_FALSE(askTyped());
    during([](QDialog &) {
        type(u"CLOSE"_s);
        press(Qt::Key_Return);
    });
    EXPECT_TRUE(askTyped());
}

TEST_F(TypedConfirm, AsksForTheWordInAFieldOf200By24AndWarns)
{
    during([](QDialog &dialog) {
        EXPECT_EQ(texts(dialog), (QStringList{u"Close?"_s, u"It ends."_s, u"Type CLOSE to continue."_s}));
        auto *field = dialog.findChild<TextField *>();
        EXPECT_EQ(field->size(), QSize(200, 24));
        EXPECT_EQ(field->text(), QString());
        EXPECT_TRUE(field->hasFocus());
        EXPECT_EQ(field->accessibleName(), u"Type CLOSE to continue."_s);
        Button *verb = button(dialog, u"Close it"_s);
        EXPECT_EQ(verb->grab().toImage().pixelColor(verb->width() / 2, 4), QColor(Theme::danger));
        EXPECT_TRUE(verb->isEnabled());
        click(dialog, u"Cancel"_s);
    });
    EXPECT_FALSE(askTyped());
}

TEST_F(TypedConfirm, NoTextHidesTheWord)
{
    during([](QDialog &dialog) {
        QWidget *request = nullptr;
        for (Label *label : dialog.findChildren<Label *>()) {
            if (label->text() == u"Type RETIRE to continue."_s) {
                request = label;
            }
        }
        ASSERT_NE(request, nullptr);
        EXPECT_FALSE(request->visibleRegion().isEmpty());
        type(u"RETIRE"_s);
        press(Qt::Key_Return);
    });
    EXPECT_TRUE(typedConfirm(&window, u"Retire?"_s, QString(64 * 1024, u'x'), u"RETIRE"_s, u"Retire"_s));
}

TEST_F(TypedConfirm, ParentDestroyedMeanwhileIsCancelEvenWithTheWord)
{
    auto *view = new QWidget(&window);
    during([view](QDialog &) {
        type(u"CLOSE"_s);
        delete view;
    });
    EXPECT_FALSE(typedConfirm(view, u"Close?"_s, u"It ends."_s, u"CLOSE"_s, u"Close it"_s));
}

TEST_F(ShowSecret, KeysThatQuitLeaveIt)
{
    during([](QDialog &dialog) {
        QTest::keyClick(&dialog, Qt::Key_Q, Qt::ControlModifier);
        EXPECT_TRUE(dialog.isVisible());
        click(dialog, u"I have saved it"_s);
    });
    showSecret(&window, u"token"_s, u"s3cret"_s);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(ShowSecret, CopyLeavesTheSecretOnTheClipboardAndTheDialogOpen)
{
    const QString secret = u"quill_t8Vd2nQ0yXcJ5rWm"_s;
    QPointer<QDialog> shown;
    during([&](QDialog &dialog) {
        for (int time = 0; time < 3; ++time) {
            QApplication::clipboard()->setText(u"something else"_s);
            click(dialog, u"Copy"_s);
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_EQ(QApplication::clipboard()->text(), secret);
        }
        const QMimeData &held = *QApplication::clipboard()->mimeData();
        EXPECT_EQ(held.data(u"x-kde-passwordManagerHint"_s), "secret");
        EXPECT_TRUE(held.hasFormat(u"application/x-nspasteboard-concealed-type"_s)) << "marked as everywhere else";
        click(dialog, u"I have saved it"_s);
        EXPECT_FALSE(dialog.isVisible());
    });
    showSecret(&window, u"token backup script"_s, secret);
    EXPECT_EQ(QApplication::clipboard()->text(), secret) << "it stays on the clipboard";
}

TEST_F(ShowSecret, OnlyTheWordThatItIsSavedEndsIt)
{
    during([](QDialog &dialog) {
        press(Qt::Key_Escape);
        EXPECT_TRUE(dialog.isVisible());
        dialog.close();
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
        EXPECT_TRUE(dialog.isVisible());
        press(Qt::Key_Return); // the default is "Copy"
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(QApplication::clipboard()->text(), u"s3cret"_s);
        click(dialog, u"I have saved it"_s);
        EXPECT_FALSE(dialog.isVisible());
    });
    showSecret(&window, u"key"_s, u"s3cret"_s);
}

TEST_F(ShowSecret, SaysItsWordsAndShowsTheSecretToSelect)
{
    const QString secret = u"quill_t8Vd2nQ0yXcJ5rWm"_s;
    during([&](QDialog &dialog) {
        EXPECT_EQ(texts(dialog), (QStringList{u"Your token backup script"_s,
                                              u"Shown once. Without it the data cannot be read, by anyone."_s}));
        auto *well = dialog.findChild<QTextEdit *>();
        ASSERT_NE(well, nullptr);
        EXPECT_EQ(well->toPlainText(), secret);
        EXPECT_TRUE(well->isReadOnly());
        EXPECT_EQ(well->accessibleName(), u"token backup script"_s);
        EXPECT_LT(button(dialog, u"I have saved it"_s)->x(), button(dialog, u"Copy"_s)->x());

        QTest::mouseClick(well->viewport(), Qt::LeftButton);
        QTest::keyClick(well, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(well, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), secret);
        EXPECT_TRUE(QApplication::clipboard()->mimeData()->hasFormat(u"x-kde-passwordManagerHint"_s));
        QTest::keyClick(well, Qt::Key_Delete);
        EXPECT_EQ(well->toPlainText(), secret);
        click(dialog, u"I have saved it"_s);
    });
    showSecret(&window, u"token backup script"_s, secret);
}

TEST_F(ShowSecret, KeepsALongSecretWithinTheDialog)
{
    const QString secret = QString(4096, u'x') + u"\nsecond line \u202Eend"_s;
    during([&](QDialog &dialog) {
        EXPECT_EQ(panel(dialog).width(), 480);
        EXPECT_LT(panel(dialog).height(), 400);
        auto *well = dialog.findChild<QTextEdit *>();
        EXPECT_TRUE(well->toPlainText().contains(u"⟨U+202E⟩"_s));
        click(dialog, u"Copy"_s);
        EXPECT_EQ(QApplication::clipboard()->text(), secret);
        QApplication::clipboard()->clear();
        well->selectAll();
        well->copy();
        EXPECT_EQ(QApplication::clipboard()->text(), secret) << "the secret, not the signs that show it";
        click(dialog, u"I have saved it"_s);
    });
    showSecret(&window, u"key"_s, secret);
}

TEST_F(ShowSecret, OutlivesTheViewAndTheWindowThatAskedForIt)
{
    auto other = std::make_unique<QWidget>();
    other->resize(800, 600);
    other->show();
    auto *view = new QWidget(other.get());
    during([&](QDialog &dialog) {
        delete view;
        QApplication::processEvents();
        EXPECT_TRUE(dialog.isVisible());
        other.reset();
        QApplication::processEvents();
        EXPECT_TRUE(dialog.isVisible());
        click(dialog, u"Copy"_s);
        EXPECT_EQ(QApplication::clipboard()->text(), u"s3cret"_s);
        click(dialog, u"I have saved it"_s);
    });
    showSecret(view, u"key"_s, u"s3cret"_s);
}

TEST_F(AskText, AnswersWithTheTextAsItWasTyped)
{
    during([](QDialog &dialog) {
        auto *field = dialog.findChild<TextField *>();
        EXPECT_EQ(field->size(), QSize(260, 24));
        EXPECT_EQ(field->text(), u"Documents-2026"_s);
        EXPECT_EQ(field->placeholderText(), u"Name"_s);
        EXPECT_TRUE(field->hasFocus());
        EXPECT_EQ(field->selectedText(), u"Documents-2026"_s) << "typing replaces the suggestion";
        type(u" my copy "_s);
        press(Qt::Key_Return);
    });
    EXPECT_EQ(askName(), u" my copy "_s);
    during([](QDialog &dialog) { click(dialog, u"Prepare"_s); });
    EXPECT_EQ(askName(), u"Documents-2026"_s);
}

TEST_F(AskText, AnEmptyTextIsAnAnswerAndCancelIsNone)
{
    during([](QDialog &dialog) {
        dialog.findChild<TextField *>()->clear();
        click(dialog, u"Prepare"_s);
    });
    EXPECT_EQ(askName(), QString());
    during([](QDialog &dialog) { click(dialog, u"Cancel"_s); });
    EXPECT_EQ(askName(), std::nullopt);
    during([](QDialog &) { press(Qt::Key_Escape); });
    EXPECT_EQ(askName(), std::nullopt);
}

TEST_F(AskText, ParentDestroyedMeanwhileIsNoAnswer)
{
    auto *view = new QWidget(&window);
    during([view](QDialog &) { delete view; });
    EXPECT_EQ(askText(view, u"New volume"_s, {}, u"Documents"_s, u"Prepare"_s), std::nullopt);
}
