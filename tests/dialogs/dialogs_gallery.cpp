// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0

// The four dialogs as pictures: `dialogs_gallery --save <folder>`. Each is asked for real, taken, and dismissed.
#include "dialogs/dialogs.h"

#include "ui/paint/shadow.h"
#include "ui/style/fade.h"
#include "ui/style/focusring.h"
#include "ui/style/housestyle.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QPainter>
#include <QTimer>

#include <cstdio>
#include <vector>

namespace {

using namespace quillfen;

constexpr QColor ground(0x92, 0xA1, 0x96); // `bg` under a scrim

/// Takes a picture of the question that is about to be asked, then presses `answer`.
void take(std::vector<QPixmap> &pictures, const QString &answer)
{
    QTimer::singleShot(300, qApp, [&pictures, answer] {
        QWidget *dialog = QApplication::activeModalWidget();
        pictures.push_back(dialog->grab());
        for (QAbstractButton *button : dialog->findChildren<QAbstractButton *>()) {
            if (button->text() == answer) {
                button->click();
                return;
            }
        }
        std::fprintf(stderr, "no such button: %s\n", qPrintable(answer));
        std::exit(1);
    });
}

std::vector<QPixmap> takeAll()
{
    std::vector<QPixmap> pictures;
    const QString cancel = QStringLiteral("Cancel");
    take(pictures, cancel);
    bool answered = confirm(nullptr, QStringLiteral("Turn CHAP off?"),
                            QStringLiteral("The target becomes open: any machine that can reach the portal can log in "
                                           "and read and write this volume, with no password. Use it on a network you "
                                           "trust."),
                            QStringLiteral("Turn off"), Destructive::Yes);
    take(pictures, cancel);
    answered |=
        typedConfirm(nullptr, QStringLiteral("Retire hub-c?"),
                     QStringLiteral("The site is removed and its machine wiped of Quill. Only for a hub that is "
                                    "not serving."),
                     QStringLiteral("RETIRE"), QStringLiteral("Retire"));
    take(pictures, QStringLiteral("I have saved it"));
    showSecret(nullptr, QStringLiteral("token backup script on nas"),
               QStringLiteral("quill_t8Vd2nQ0yXcJ5rWmB71hLzKfA9sPeUgT3iOaRx6NbYqC4vHw"));
    take(pictures, cancel);
    answered |=
        askText(nullptr, QStringLiteral("New volume from Fri, Nov 20 · 11:06:42"),
                QStringLiteral("A writable copy of Documents as it was at that second is prepared (a full copy, "
                               "which takes a while for a large volume); when it is ready, one click makes it a "
                               "volume. The original is untouched."),
                QStringLiteral("Documents-202611201106"), QStringLiteral("Prepare"))
            .has_value();
    if (answered) {
        std::fprintf(stderr, "a cancelled question was answered\n");
    }
    return pictures;
}

QImage together(const std::vector<QPixmap> &pictures)
{
    const qreal scale = pictures.front().devicePixelRatio();
    QImage page(QSizeF(1180 * scale, 760 * scale).toSize(), QImage::Format_RGB32);
    page.setDevicePixelRatio(scale);
    page.fill(ground);
    QPainter painter(&page);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        // Where the design shows them; the picture brings its shadow.
        const QPointF corner(i % 2 == 0 ? 86 : 614, i < 2 ? 116 : 410);
        const QMargins shadow = sheetShadow.margins();
        painter.drawPixmap(corner - QPointF(shadow.left(), shadow.top()), pictures[i]);
    }
    return page;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    applyHouseLook(application);
    installFocusRing(application);
    setReducedMotion(true);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3 || arguments[1] != QStringLiteral("--save")) {
        std::fprintf(stderr, "usage: dialogs_gallery --save <folder>\n");
        return 2;
    }
    const QDir folder(arguments[2]);
    if (!folder.mkpath(QStringLiteral(".")) ||
        !together(takeAll()).save(folder.filePath(QStringLiteral("dialogs.png")))) {
        std::fprintf(stderr, "cannot write to %s\n", qPrintable(arguments[2]));
        return 1;
    }
    return 0;
}
