// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/statemark.h"

#include "kittest.h"
#include "ui/text/label.h"
#include "ui/theme.h"

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class StateMarkTest : public KitTest {
protected:
    static QImage mark(const QColor &colour, qreal scale)
    {
        QImage image((QSizeF(16, 16) * scale).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(Theme::bg);
        QPainter painter(&image);
        paintStateMark(painter, QPointF(8, 8), colour);
        return image;
    }
};

} // namespace

TEST_F(StateMarkTest, StatesAreDotsAndUnknownIsARing)
{
    for (const qreal scale : everyScale) {
        EXPECT_EQ(kit::colourAt(mark(Theme::ok, scale), 8, 8), QColor(Theme::ok));
        EXPECT_EQ(kit::colourAt(mark(Theme::warn, scale), 8, 8), QColor(Theme::warn));
        EXPECT_EQ(kit::colourAt(mark(Theme::muted, scale), 8, 8), QColor(Theme::bg)) << "the ring is open";
        EXPECT_NE(kit::colourAt(mark(Theme::muted, scale), 8, 4.5), QColor(Theme::bg));
    }
}

TEST_F(StateMarkTest, TextTakesTheColourThatCanBeReadThere)
{
    EXPECT_EQ(stateTextColour(Theme::ok, StateSurface::Window), QColor(Theme::ok));
    EXPECT_EQ(stateTextColour(Theme::ok, StateSurface::Card), QColor(Theme::okText));
    EXPECT_EQ(stateTextColour(Theme::muted, StateSurface::Card), QColor(Theme::text));
    EXPECT_EQ(stateTextColour(Theme::warn, StateSurface::Card), QColor(Theme::warn));
    EXPECT_EQ(stateTextColour(Theme::warn, StateSurface::Selection), QColor(Theme::heading));
}

TEST_F(StateMarkTest, TextIsReadAndTheMarkIsNot)
{
    StateText state(u"87% · uploading"_s, Theme::warn);
    auto *label = state.findChild<AgentLabel *>();
    EXPECT_EQ(name(*label), u"87% · uploading"_s);
    EXPECT_EQ(name(state), QString());
    state.setState(u"100% · synced"_s, Theme::ok);
    EXPECT_EQ(name(*label), u"100% · synced"_s);
    state.resize(200, 20);
    EXPECT_EQ(kit::colourAt(kit::picture(state), 4, 10), QColor(Theme::ok));
}
