// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/controls/textfield.h"

#include "kittest.h"
#include "ui/controls/searchfield.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QSignalSpy>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class TextFieldTest : public KitTest {
protected:
    static QColor border(QWidget &field, qreal scale = 1.0)
    {
        return kit::colourAt(kit::picture(field, scale, Theme::bg), field.width() / 2.0, 0);
    }
};

class SearchFieldTest : public KitTest {};

/// Hears of the keys that its child leaves alone.
class KeyListener final : public QWidget {
public:
    int escapes = 0;

protected:
    void keyPressEvent(QKeyEvent *event) override { escapes += event->key() == Qt::Key_Escape ? 1 : 0; }
};

} // namespace

TEST_F(TextFieldTest, BorderTellsTheState)
{
    for (const qreal scale : everyScale) {
        TextField field(u"Name"_s);
        field.resize(200, 32);
        EXPECT_EQ(border(field, scale), QColor(Theme::muted));
        hover(field);
        EXPECT_EQ(border(field, scale), QColor(Theme::text));
        field.setInvalid(true);
        EXPECT_EQ(border(field, scale), QColor(Theme::danger));
        field.setInvalid(false);
        field.setEnabled(false);
        EXPECT_EQ(border(field, scale), QColor(Theme::line));
    }
}

TEST_F(TextFieldTest, FocusThickensTheBorderAndTheTextStays)
{
    QWidget window;
    auto *other = new QWidget(&window);
    other->setFocusPolicy(Qt::TabFocus);
    auto *field = new TextField(u"Name"_s, {}, 32, &window);
    field->setText(u"Documents"_s);
    field->resize(200, 32);
    window.resize(240, 60);
    show(window);
    other->setFocus();
    const QImage before = kit::picture(*field, 1.0, Theme::bg).copy(4, 4, 190, 24);
    field->setFocus();
    field->deselect();
    field->setReadOnly(true); // no caret in the picture
    QImage after = kit::picture(*field, 1.0, Theme::bg);
    EXPECT_EQ(kit::colourAt(after, 100, 0), QColor(Theme::ok));
    EXPECT_EQ(kit::colourAt(after, 100, 1), QColor(Theme::ok));
    EXPECT_EQ(kit::colourAt(after, 100, 2), QColor(Theme::bg));
    EXPECT_EQ(after.copy(4, 4, 190, 24), before);
}

TEST_F(TextFieldTest, DarkVariant)
{
    TextField field(u"Moment"_s);
    field.setDark(true);
    field.resize(200, 32);
    const QImage picture = kit::picture(field);
    EXPECT_EQ(kit::colourAt(picture, 100, 0), QColor(Theme::dMuted));
    EXPECT_EQ(kit::colourAt(picture, 100, 16), QColor(Theme::dPanel));
    EXPECT_EQ(field.palette().color(QPalette::Text), QColor(Theme::dBright));
    show(field);
    field.setFocus();
    EXPECT_EQ(border(field), QColor(Theme::accent));
}

TEST_F(TextFieldTest, NameIsGivenAndDescriptionIsThePlaceholder)
{
    TextField field(u"Control plane URL"_s, u"https://"_s);
    EXPECT_EQ(role(field), QAccessible::EditableText);
    EXPECT_EQ(name(field), u"Control plane URL"_s);
    EXPECT_EQ(description(field), u"https://"_s);
}

TEST_F(TextFieldTest, TakesFocusByMouseAndKeepsItsHeight)
{
    TextField low(u"Word"_s, {}, 24);
    EXPECT_EQ(low.sizeHint().height(), 24);
    EXPECT_EQ(TextField(u"Word"_s).sizeHint().height(), 32);
    show(low);
    low.clearFocus();
    QTest::mouseClick(&low, Qt::LeftButton);
    EXPECT_TRUE(low.hasFocus());
}

TEST_F(SearchFieldTest, IsNamedByItsPlaceholder)
{
    SearchField field(u"Search volumes"_s);
    EXPECT_EQ(name(field), u"Search volumes"_s);
    EXPECT_EQ(field.sizeHint(), QSize(224, 32));
    field.resize(field.sizeHint());
    field.setPlaceholderText({});
    EXPECT_GT(kit::count(kit::picture(field, 2.0), Theme::text), 20) << "the magnifying glass";
}

TEST_F(SearchFieldTest, EscEmptiesFirstAndIsPassedOnOnlyThen)
{
    KeyListener window;
    auto *field = new SearchField(u"Search volumes"_s, &window);
    const QSignalSpy changed(field, &QLineEdit::textChanged);
    show(window);
    field->setFocus();
    QTest::keyClicks(field, u"doc"_s);
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(field->text(), QString());
    EXPECT_EQ(window.escapes, 0);
    EXPECT_EQ(changed.size(), 4);
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(window.escapes, 1);
    EXPECT_EQ(changed.size(), 4);
}

TEST_F(SearchFieldTest, TakesEscBeforeItBecomesAShortcut)
{
    SearchField field(u"Search volumes"_s);
    const auto claims = [&field] {
        QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_Escape, Qt::NoModifier);
        event.ignore();
        QApplication::sendEvent(&field, &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(claims());
    field.setText(u"doc"_s);
    EXPECT_TRUE(claims());
}
