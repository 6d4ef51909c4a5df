// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/export/exportview.h"

#include "boardtest.h"

#include "desktop/fileviewer.h"
#include "ui/controls/radiorow.h"
#include "ui/controls/segmented.h"
#include "ui/controls/textfield.h"
#include "ui/parts/pill.h"
#include "ui/style/fade.h"

#include <QAccessible>
#include <QUrl>

namespace {

using namespace quillfen;
using namespace quillfen::test;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

json::object option(const char *name, const char *medium, int units, const char *price, bool toEurope)
{
    return params("name", name, "medium", medium, "units", units, "media_cost", price, "packing", "$6.00", "work",
                  "$18.00", "shipping", toEurope ? "$22.00" : "$12.50");
}

class ExportViewTest : public BoardTest {
protected:
    void SetUp() override
    {
        setReducedMotion(true);
        BoardTest::SetUp();
        give({with(volume(1, u"Documents"_s), "encryption", "customer"), volume(2, u"photos"_s, 512 * gigabyte)});
        agent.on("export.media", [](const json::object &asked) -> FakeAgent::Answer {
            const bool second = asked.at("volume_id") == json::value(2);
            const bool toEurope = asked.at("region") == json::value("EU");
            json::array options{
                option("BD-R XL 100 GB", "bdxl", second ? 6 : 2, second ? "$102.00" : "$34.00", toEurope)};
            if (asked.at("region") != json::value("other")) {
                options.push_back(option("LTO-8 tape", "lto8", 1, "$78.00", toEurope));
            }
            return params("options", options, "retrieval",
                          params("total", second ? 12.5 : 0.0, "free_bytes", 100 * gigabyte));
        });
        agent.answer("volumes.export", nullptr);
        agent.answer("volumes.export.set", json::object());
        agent.answer("export.remove", json::object());
    }

    void giveCopies()
    {
        agent.on("volumes.export", [](const json::object &asked) -> FakeAgent::Answer {
            if (asked.at("volume_id") == json::value(2)) {
                return params("state", "ready", "delivery", "link", "link", "https://copies.example/a", "expires_at",
                              "2026-11-21T09:12:00Z");
            }
            return params("state", "shipped", "delivery", "media", "medium", "LTO-8 tape", "region", "US", "key_note",
                          "the key is not on the tape", "tracking", "1Z 84W");
        });
    }

    void show(int width = 956, int height = 900)
    {
        window.resize(width, height);
        view = std::make_unique<ExportView>(state, &window);
        view->resize(width, height);
        window.show();
        view->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        const auto count = static_cast<std::size_t>(state->volumes().size());
        ASSERT_TRUE(eventually([&] { return agent.count("volumes.export") >= count; }));
        QTest::qWait(5);
    }

    [[nodiscard]] QStringList texts() const { return shownTexts(view.get()); }
    [[nodiscard]] bool says(const QString &text) const { return texts().contains(text); }
    [[nodiscard]] bool eventuallySays(const QString &text) const
    {
        return eventually([&] { return says(text); });
    }

    /// The radio row whose name begins with its title.
    [[nodiscard]] RadioRow *row(const QString &title) const
    {
        for (RadioRow *each : view->findChildren<RadioRow *>()) {
            if (each->isVisible() && (each->accessibleName() + u',').startsWith(title + u',')) {
                return each;
            }
        }
        return nullptr;
    }
    void choose(const QString &title)
    {
        RadioRow *const wanted = row(title);
        ASSERT_NE(wanted, nullptr) << title.toStdString();
        QTest::mouseClick(wanted, Qt::LeftButton);
    }
    void ship()
    {
        choose(u"Ship it to me"_s);
        ASSERT_TRUE(eventually([&] { return row(u"LTO-8 tape"_s) != nullptr; }));
    }
    void shipTo(const QString &region) { QTest::mouseClick(buttonOf(view.get(), region), Qt::LeftButton); }

    QWidget window;
    std::unique_ptr<ExportView> view;
};

TEST_F(ExportViewTest, SaysEverythingItHasToSayForADownload)
{
    show();
    for (const char *text :
         {"Get a copy of my data", "A full copy of a volume as it is now, yours to keep outside Quillfen.",
          "Documents, 100 GB", "photos, 512 GB",
          "Documents is encrypted. Its copy opens only with its key file, quill-Documents.key. Without it nobody can "
          "read it, Quillfen included.",
          "How should it reach you?", "Download, Ready within the hour for most volumes. The link works for 48 hours.",
          "Ship it to me, BD-R XL discs, LTO tape, SSD or hard disk. Price shown before you confirm.",
          "Ready within the hour for most volumes; the link works for 48 hours. Free at this size.", "Request copy",
          "Recent copies", "None yet.", "quill export unpack <file> --into <folder>   # unpacks a downloaded copy"}) {
        EXPECT_TRUE(says(QString::fromUtf8(text))) << text;
    }
}

TEST_F(ExportViewTest, SaysEverythingItHasToSayForMedia)
{
    show();
    ship();
    for (const char *text :
         {"BD-R XL 100 GB × 2, media $34.00 · packing $6.00 · work $18.00 · shipping $12.50",
          "LTO-8 tape, media $78.00 · packing $6.00 · work $18.00 · shipping $12.50", "Ship to", "United States",
          "European Union", "Elsewhere", "Postal address",
          "The order is confirmed by e-mail with the price above; nothing is charged before that.", "Order the copy"}) {
        EXPECT_TRUE(says(QString::fromUtf8(text))) << text;
    }
    EXPECT_FALSE(says(u"Request copy"_s));
    EXPECT_FALSE(says(u"Ready within the hour for most volumes; the link works for 48 hours. Free at this size."_s));
}

TEST_F(ExportViewTest, WaitsForTheOptionsInWords)
{
    show();
    agent.hold("export.media");
    choose(u"photos"_s);
    choose(u"Ship it to me"_s);
    EXPECT_TRUE(eventuallySays(u"Loading the options…"_s));
    EXPECT_FALSE(buttonOf(view.get(), u"Order the copy"_s)->isEnabled());
    agent.release("export.media");
    EXPECT_TRUE(eventually([&] { return row(u"LTO-8 tape"_s) != nullptr && !says(u"Loading the options…"_s); }));
    EXPECT_TRUE(buttonOf(view.get(), u"Order the copy"_s)->isEnabled());
}

TEST_F(ExportViewTest, TheNoteIsThereForVolumesWithTheUsersKeyOnly)
{
    show();
    choose(u"photos"_s);
    EXPECT_TRUE(eventuallySays(
        u"Ready within the hour for most volumes; the link works for 48 hours. Retrieval $12.50 (free up to 100 GB)."_s));
    EXPECT_FALSE(texts().filter(u"is encrypted."_s).join(u' ').contains(u"Documents"_s));
}

TEST_F(ExportViewTest, AnotherVolumesPriceIsNeverShown)
{
    show();
    ship();
    agent.hold("export.media");
    choose(u"photos"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("export.media") == 3; }));
    EXPECT_TRUE(eventually([&] { return texts().filter(u"media $"_s).isEmpty(); }));
    agent.release("export.media");
    EXPECT_TRUE(eventuallySays(u"BD-R XL 100 GB × 6, media $102.00 · packing $6.00 · work $18.00 · shipping $12.50"_s));
}

TEST_F(ExportViewTest, OrdersWhatIsShown)
{
    show();
    ship();
    choose(u"LTO-8 tape"_s);
    auto *const address = view->findChild<TextField *>();
    EXPECT_EQ(address->accessibleName(), u"Postal address"_s);
    QTest::keyClicks(address, u"418 Alder Street"_s);
    shipTo(u"European Union"_s);
    ASSERT_TRUE(eventuallySays(u"LTO-8 tape, media $78.00 · packing $6.00 · work $18.00 · shipping $22.00"_s));
    EXPECT_TRUE(row(u"LTO-8 tape"_s)->isChecked());
    press(view.get(), u"Order the copy"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.export.set") == 1; }));
    EXPECT_EQ(sent("volumes.export.set"), params("volume_id", 1, "delivery", "media", "medium", "lto8", "region", "EU",
                                                 "address", "418 Alder Street"));
    EXPECT_TRUE(eventually([&] { return toast().startsWith(u"Order placed."_s); }));
    EXPECT_EQ(address->text(), u"418 Alder Street"_s);
}

TEST_F(ExportViewTest, ARegionWithoutTheMediumShowsTheFirstChosen)
{
    show();
    ship();
    choose(u"LTO-8 tape"_s);
    shipTo(u"Elsewhere"_s);
    EXPECT_TRUE(eventually([&] {
        return row(u"LTO-8 tape"_s) == nullptr && row(u"BD-R XL 100 GB × 2"_s) != nullptr &&
               row(u"BD-R XL 100 GB × 2"_s)->isChecked();
    }));
}

TEST_F(ExportViewTest, RequestsADownloadAndShowsThatItRuns)
{
    show();
    choose(u"photos"_s);
    agent.hold("volumes.export.set");
    press(view.get(), u"Request copy"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.export.set") == 1; }));
    EXPECT_TRUE(eventually([&] { return !buttonOf(view.get(), u"Request copy"_s)->isEnabled(); }));
    giveCopies();
    agent.release("volumes.export.set");
    EXPECT_TRUE(eventuallySays(u"available until Sat, Nov 21 · 09:12:00"_s));
    EXPECT_EQ(sent("volumes.export.set"), params("volume_id", 2, "delivery", "link"));
    EXPECT_TRUE(eventually([&] { return buttonOf(view.get(), u"Request copy"_s)->isEnabled(); }));
}

TEST_F(ExportViewTest, ShowsRecentCopiesInTheOrderOfTheVolumes)
{
    giveCopies();
    show();
    ASSERT_TRUE(eventually([&] { return view->findChildren<RecentCopyRow *>().size() == 2; }));
    // A row that has come is laid out and shown with the next turn of the loop.
    ASSERT_TRUE(eventuallySays(u"Open download, photos"_s) && eventuallySays(u"tracking 1Z 84W"_s));
    for (const char *text : {"ready", "available until Sat, Nov 21 · 09:12:00", "shipped", "LTO-8 tape to US",
                             "the key is not on the tape", "tracking 1Z 84W"}) {
        EXPECT_TRUE(says(QString::fromUtf8(text))) << text;
    }
    EXPECT_FALSE(says(u"None yet."_s));
    const auto rows = view->findChildren<RecentCopyRow *>();
    const auto place = [&](const RecentCopyRow *each) { return each->mapTo(view.get(), QPoint()).y(); };
    const bool firstIsDocuments = buttonOf(rows.at(0), u"Remove, Documents"_s) != nullptr;
    EXPECT_TRUE(eventually([&] { return (place(rows.at(0)) < place(rows.at(1))) == firstIsDocuments; }));
    EXPECT_NE(buttonOf(view.get(), u"Open download, photos"_s), nullptr);
    EXPECT_EQ(buttonOf(view.get(), u"Open download, Documents"_s), nullptr) << "it has no link";
}

TEST_F(ExportViewTest, ARemovedCopyIsNotShown)
{
    agent.answer("volumes.export", params("state", "removed", "link", "https://a"));
    show();
    QTest::qWait(5);
    EXPECT_TRUE(says(u"None yet."_s));
    EXPECT_TRUE(view->findChildren<RecentCopyRow *>().isEmpty());
}

TEST_F(ExportViewTest, AFailureIsInItsOwnColourAndWords)
{
    agent.answer("volumes.export", params("state", "failed", "error", "The volume is larger than the medium."));
    show();
    ASSERT_TRUE(eventuallySays(u"The volume is larger than the medium."_s));
    EXPECT_TRUE(says(u"failed"_s));
    EXPECT_NE(buttonOf(view.get(), u"Remove, Documents"_s), nullptr);
}

TEST_F(ExportViewTest, OpensADownloadInTheBrowser)
{
    giveCopies();
    show();
    ASSERT_TRUE(eventually([&] { return buttonOf(view.get(), u"Open download, photos"_s) != nullptr; }));
    QStringList opened;
    const FileViewerOverride viewer({{}, {}, [&](const QUrl &url) { opened << url.toString(); }});
    press(view.get(), u"Open download, photos"_s);
    EXPECT_THAT(opened, ElementsAre(u"https://copies.example/a"_s));
}

TEST_F(ExportViewTest, OpensNothingThatIsNoWebAddress)
{
    agent.answer("volumes.export", params("state", "ready", "link", "file:///etc/passwd"));
    show();
    ASSERT_TRUE(eventually([&] { return buttonOf(view.get(), u"Open download, photos"_s) != nullptr; }));
    QStringList opened;
    const FileViewerOverride viewer({{}, {}, [&](const QUrl &url) { opened << url.toString(); }});
    press(view.get(), u"Open download, photos"_s);
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(ExportViewTest, RemovesACopyOfItsRow)
{
    giveCopies();
    show();
    ASSERT_TRUE(eventually([&] { return buttonOf(view.get(), u"Remove, photos"_s) != nullptr; }));
    agent.hold("export.remove");
    press(view.get(), u"Remove, photos"_s);
    ASSERT_TRUE(eventually([&] { return agent.count("export.remove") == 1; }));
    EXPECT_TRUE(eventually([&] { return !buttonOf(view.get(), u"Remove, photos"_s)->isEnabled(); }));
    EXPECT_TRUE(buttonOf(view.get(), u"Remove, Documents"_s)->isEnabled());
    agent.answer("volumes.export", params("state", "removed"));
    agent.release("export.remove");
    EXPECT_TRUE(eventuallySays(u"None yet."_s));
    EXPECT_EQ(sent("export.remove"), params("volume_id", 2));
    EXPECT_EQ(toast(), u"copy removed"_s);
}

TEST_F(ExportViewTest, ARefreshKeepsRowsChoicesAndText)
{
    giveCopies();
    show();
    ship();
    choose(u"LTO-8 tape"_s);
    auto *const address = view->findChild<TextField *>();
    QTest::keyClicks(address, u"418 Alder"_s);
    const auto before = view->findChildren<RecentCopyRow *>();
    await(state->refresh());
    view->reload();
    const std::size_t asked = agent.count("volumes.export");
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.export") >= asked + 2; }));
    QTest::qWait(10);
    EXPECT_EQ(view->findChildren<RecentCopyRow *>(), before);
    EXPECT_TRUE(row(u"LTO-8 tape"_s)->isChecked());
    EXPECT_EQ(address->text(), u"418 Alder"_s);
}

TEST_F(ExportViewTest, EverythingHasItsRole)
{
    show();
    ship();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(row(u"Documents"_s))->role(), QAccessible::RadioButton);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(row(u"LTO-8 tape"_s))->role(), QAccessible::RadioButton);
    EXPECT_EQ(view->findChild<Segmented *>()->accessibleName(), u"Ship to"_s);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(buttonOf(view.get(), u"Elsewhere"_s))->role(),
              QAccessible::RadioButton);
}

TEST_F(ExportViewTest, TheKeyboardAloneOrders)
{
    show();
    RadioRow *const ship = row(u"Ship it to me"_s);
    row(u"Download"_s)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    ASSERT_TRUE(eventually([&] { return ship->isChecked() && row(u"LTO-8 tape"_s) != nullptr; }));
    EXPECT_EQ(QApplication::focusWidget(), ship);
    const auto tabTo = [&](const QString &name) {
        for (int stop = 0; stop < 12; ++stop) {
            const QWidget *const focused = QApplication::focusWidget();
            if ((focused->accessibleName() + u',').startsWith(name + u',') ||
                focused->property("text").toString() == name) {
                return true;
            }
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        return false;
    };
    ASSERT_TRUE(tabTo(u"BD-R XL 100 GB × 2"_s));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_TRUE(eventually([&] { return row(u"LTO-8 tape"_s)->isChecked(); }));
    ASSERT_TRUE(tabTo(u"United States"_s));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    ASSERT_TRUE(eventuallySays(u"LTO-8 tape, media $78.00 · packing $6.00 · work $18.00 · shipping $22.00"_s));
    ASSERT_TRUE(tabTo(u"Postal address"_s));
    QTest::keyClicks(QApplication::focusWidget(), u"here"_s);
    ASSERT_TRUE(tabTo(u"Order the copy"_s));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    ASSERT_TRUE(eventually([&] { return agent.count("volumes.export.set") == 1; }));
    EXPECT_EQ(sent("volumes.export.set"),
              params("volume_id", 1, "delivery", "media", "medium", "lto8", "region", "EU", "address", "here"));
}

TEST_F(ExportViewTest, TabGoesFromTopToBottomWhateverCameLate)
{
    giveCopies();
    show();
    ship();
    give({with(volume(1, u"Documents"_s), "encryption", "customer"), volume(2, u"photos"_s, 512 * gigabyte),
          volume(3, u"music"_s)});
    ASSERT_TRUE(eventually([&] { return row(u"music"_s) != nullptr; }));
    choose(u"music"_s);
    ship();
    row(u"music"_s)->setFocus(Qt::TabFocusReason);
    int last = 0;
    int stops = 0;
    do {
        const int top = QApplication::focusWidget()->mapTo(view.get(), QPoint()).y();
        EXPECT_GE(top, last) << QApplication::focusWidget()->accessibleName().toStdString();
        last = top;
        ++stops;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != row(u"music"_s) && stops < 30);
    EXPECT_GE(stops, 6);
}

TEST_F(ExportViewTest, WithoutVolumesNothingCanBeRequested)
{
    give({});
    show();
    EXPECT_FALSE(buttonOf(view.get(), u"Request copy"_s)->isEnabled());
    EXPECT_TRUE(says(u"None yet."_s));
    EXPECT_EQ(agent.count("export.media"), 0U);
}

TEST_F(ExportViewTest, TenThousandVolumesCostAsMuchAsTen)
{
    agent.silent("volumes.export");
    agent.answer("export.media", nullptr);
    agent.allowUnexpected();
    state->volumes = manyVolumes(10'000);
    view = std::make_unique<ExportView>(state, &window);
    view->resize(956, 900);
    window.show();
    view->show();
    EXPECT_TRUE(eventually([&] { return row(u"volume-0"_s) != nullptr; }));
    EXPECT_LE(view->findChildren<RadioRow *>().size(), 30);
}

TEST_F(ExportViewTest, LongTextsOfTheAgentDoNotWidenANarrowWindow)
{
    const QString longText(16'384, u'x');
    give({with(volume(1, longText), "encryption", "customer")});
    agent.answer("volumes.export", params("state", longText, "delivery", "media", "medium", longText, "region", "US",
                                          "error", longText, "key_note", longText, "link", "https://a"));
    agent.answer("export.media",
                 params("options", json::array{params("name", longText, "medium", "m", "media_cost", longText)}));
    show(736, 600);
    choose(u"Ship it to me"_s);
    QTest::qWait(20);
    for (const QWidget *each : view->findChildren<QWidget *>()) {
        if (each->isVisible()) {
            EXPECT_LE(each->mapTo(view.get(), QPoint(each->width(), 0)).x(), view->width())
                << each->metaObject()->className();
        }
    }
}

} // namespace
