// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/text/tooltip.h"

#include "ui/text/label.h"
#include "ui/text/type.h"

#include <QStringList>
#include <QTextLayout>
#include <QTextOption>
#include <QToolTip>

namespace quillfen {
namespace {

constexpr int widest = 480;
constexpr int mostLines = 24;
constexpr int mostCharacters = 4096;

} // namespace

QString plainToolTip(const QString &text)
{
    const QString shown = madeVisible(text.left(mostCharacters));
    QTextLayout layout(shown, font(Type::Caption));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList lines;
    bool whole = text.size() <= mostCharacters;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        if (lines.size() == mostLines) {
            whole = false;
            break;
        }
        line.setLineWidth(scaled(widest));
        lines += shown.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    if (!whole && !lines.isEmpty()) {
        lines.back() += u'…';
    }
    const QString plain = lines.join(u'\n');
    if (!Qt::mightBeRichText(plain)) {
        return plain;
    }
    // What looks like markup would be taken for it: say it as markup that shows every sign.
    return QStringLiteral("<div style=\"white-space:pre\">") + lines.join(u'\n').toHtmlEscaped() +
           QStringLiteral("</div>");
}

void showPlainToolTip(const QPoint &globalPosition, const QString &text, QWidget *owner)
{
    QToolTip::showText(globalPosition, plainToolTip(text), owner);
}

} // namespace quillfen
