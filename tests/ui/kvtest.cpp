// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/kv.h"

#include "kittest.h"
#include "ui/parts/statcell.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <memory>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

class KVTest : public KitTest {};
class StatCellTest : public KitTest {};

QStringList textsOf(const QWidget &widget)
{
    QStringList texts;
    for (const AgentLabel *label : widget.findChildren<AgentLabel *>()) {
        texts += label->text();
    }
    return texts;
}

} // namespace

TEST_F(KVTest, KeyIsAsWideAsInEveryOtherLine)
{
    KV line(u"Cache disk"_s, u"80 GB"_s);
    line.resize(400, 28);
    line.show();
    EXPECT_EQ(line.sizeHint().height(), 28);
    const auto labels = line.findChildren<AgentLabel *>();
    EXPECT_EQ(labels[0]->width(), 104);
    EXPECT_EQ(labels[1]->x(), 120);
}

TEST_F(KVTest, LongValueNeverWidensItsLine)
{
    KV line(u"Target"_s, QString(16 * 1024, u'x'));
    EXPECT_LT(line.minimumSizeHint().width(), 200);
    line.setValue(u"iqn.2026-02"_s);
    EXPECT_EQ(textsOf(line), (QStringList{u"Target"_s, u"iqn.2026-02"_s}));
}

TEST_F(StatCellTest, CaptionOverValueInThe17Role)
{
    StatCell cell(u"Restore points"_s, u"1284"_s);
    EXPECT_EQ(cell.sizeHint().height(), 14 + 16 + 24 + 14);
    cell.setValue(u"1285"_s);
    EXPECT_EQ(textsOf(cell), (QStringList{u"Restore points"_s, u"1285"_s}));
}

TEST_F(StatCellTest, CellsOfARowAreEqualWithHairlinesBetween)
{
    auto *first = new StatCell(u"Restore points"_s, u"1284"_s);
    auto *second = new StatCell(u"A caption that is much longer than the other one"_s, QString(500, u'9'));
    const std::unique_ptr<QWidget> cells(statRow({first, second}));
    cells->resize(400, 68);
    cells->show();
    QApplication::processEvents();
    EXPECT_EQ(first->width(), 200);
    EXPECT_EQ(second->width(), 200);
    const QImage picture = kit::picture(*cells, 1.0, Theme::bg);
    EXPECT_EQ(kit::colourAt(picture, 200, 34), QColor(Theme::line));
    EXPECT_EQ(kit::colourAt(picture, 0, 34), QColor(Theme::bg));
}
