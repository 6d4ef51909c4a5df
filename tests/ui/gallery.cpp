// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "gallery.h"

#include "ui/controls/buttons.h"
#include "ui/controls/iconbutton.h"
#include "ui/controls/spinner.h"
#include "ui/layout.h"
#include "ui/paint/paint.h"
#include "ui/parts/boardframe.h"
#include "ui/parts/brand.h"
#include "ui/parts/scrollarea.h"
#include "ui/parts/sectiontitle.h"
#include "ui/style/fade.h"
#include "ui/style/focusring.h"
#include "ui/style/housestyle.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCommandLineParser>
#include <QDir>
#include <QEnterEvent>
#include <QGridLayout>
#include <QPainter>

#include <functional>

using namespace quillfen;
using namespace Qt::StringLiterals;

namespace {

/// A plain surface in one colour, for swatches and dark grounds.
class Ground final : public QWidget {
public:
    Ground(const QColor &fill, int radius, const QColor &line = {}) : m_fill(fill), m_line(line), m_radius(radius) {}

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        paintSurface(painter, rect(), m_radius, m_fill, m_line);
    }

private:
    QColor m_fill;
    QColor m_line;
    int m_radius;
};

class PaintedIcon final : public QWidget {
public:
    PaintedIcon(Icon icon, int size, const QColor &colour) : m_icon(icon), m_colour(colour)
    {
        setFixedSize(size, size);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        paintIcon(painter, m_icon, rect(), m_colour);
    }

private:
    Icon m_icon;
    QColor m_colour;
};

QWidget *holder(QLayout *layout)
{
    auto *widget = new QWidget;
    widget->setLayout(layout);
    return widget;
}

QWidget *swatch(const QString &name, const QColor &colour)
{
    auto *block = new Ground(colour, 6, Theme::line);
    block->setFixedSize(88, 36);
    return holder(column({block, Space{4}, new Label(name, Type::Micro, Theme::heading),
                          new Label(colour.name().toUpper(), Type::MonoSmall, Theme::text)}));
}

QWidget *palette()
{
    struct Entry {
        const char *name;
        QColor colour;
    };
    using namespace Theme;
    const Entry light[] = {{"bg", bg},
                           {"panel", panel},
                           {"panel2", panel2},
                           {"line", line},
                           {"text", text},
                           {"heading", heading},
                           {"muted", muted},
                           {"accent", accent},
                           {"onAccent", onAccent},
                           {"ok", ok},
                           {"okBg", okBg},
                           {"okText", okText},
                           {"warn", warn},
                           {"warnBright", warnBright},
                           {"danger", danger},
                           {"dangerBg", dangerBg},
                           {"dangerText", dangerText}};
    const Entry dark[] = {{"dBg", dBg},     {"dPanel", dPanel},   {"dPanel2", dPanel2}, {"dLine", dLine},
                          {"dText", dText}, {"dBright", dBright}, {"dMuted", dMuted}};
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    int at = 0;
    for (const Entry &entry : light) {
        grid->addWidget(swatch(QString::fromLatin1(entry.name), entry.colour), at / 11, at % 11);
        ++at;
    }
    at = 0;
    for (const Entry &entry : dark) {
        grid->addWidget(swatch(QString::fromLatin1(entry.name), entry.colour), 2, at++);
    }
    grid->setColumnStretch(11, 1);
    return gallerySection(u"Palette"_s, grid);
}

QWidget *brands()
{
    auto *dark = new Ground(Theme::dBg, 12);
    dark->setLayout(row({new BrandMark(28), new Brand(true)}, 12, {16, 12, 16, 12}));
    return gallerySection(u"Brand, BrandMark"_s, row({new BrandMark(56), new BrandMark(28), new BrandMark(22),
                                                      new BrandMark(16), new Brand, dark, Stretch{}},
                                                     16));
}

QWidget *types()
{
    auto *list = column({new Label(u"Volumes"_s, Type::Title, Theme::heading),
                         new Label(u"388.2 GB"_s, Type::Heading, Theme::heading),
                         new Label(u"Restore points (1284)"_s, Type::Section, Theme::heading),
                         new Label(u"Right for most volumes."_s, Type::Body, Theme::text),
                         new Label(u"as of Thu, Nov 19 · 18:20:04"_s, Type::Caption, Theme::text),
                         new Label(u"Quillfen 1.4.0"_s, Type::MicroRegular, Theme::text),
                         new Label(u"~/.quill/quill-Documents.key -> != =="_s, Type::Mono, Theme::heading)});
    return gallerySection(u"Type"_s, list);
}

using MakeButton = std::function<Button *()>;

QLayout *buttonStates(const QString &caption, const QColor &colour, const MakeButton &make)
{
    auto *name = new Label(caption, Type::Micro, colour);
    name->setFixedWidth(150);
    auto *line = row({name}, 0);
    const auto add = [line](Button *button) {
        auto *cell = holder(row({button, Stretch{}}, 0));
        cell->setFixedWidth(118);
        line->addWidget(cell);
        return button;
    };
    add(make());
    showHovered(add(make()));
    add(make())->setDown(true);
    add(make())->setObjectName(u"focused"_s);
    add(make())->setEnabled(false);
    line->addStretch(1);
    return line;
}

QWidget *buttons()
{
    const auto compact = [](Button *button) {
        button->setControlHeight(28);
        return button;
    };
    auto *list = column({}, 16);
    list->addLayout(
        buttonStates(u"Primary, 32"_s, Theme::text, [] { return new Button(u"Save policy"_s, PrimaryButtonStyle{}); }));
    list->addLayout(
        buttonStates(u"Secondary, 32"_s, Theme::text, [] { return new Button(u"Unmount"_s, SecondaryButtonStyle{}); }));
    list->addLayout(buttonStates(u"Secondary, compact 28"_s, Theme::text,
                                 [] { return new Button(u"Release"_s, SecondaryButtonStyle{28}); }));
    list->addLayout(buttonStates(u"Danger, compact 28"_s, Theme::text,
                                 [&] { return compact(new Button(u"Discard"_s, DangerButtonStyle{})); }));
    list->addLayout(buttonStates(u"Danger as default button"_s, Theme::text,
                                 [] { return new Button(u"Delete"_s, DangerDefaultButtonStyle{}); }));
    auto *dark = new Ground(Theme::dBg, 12);
    auto *states = buttonStates(u"Secondary, dark"_s, Theme::dText, [] {
        return new Button(u"Back to now"_s, SecondaryButtonStyle{32, true});
    });
    states->setContentsMargins(12, 8, 12, 8);
    dark->setLayout(states);
    list->addWidget(dark);
    list->setContentsMargins(0, 0, 0, 0);

    auto *running = new Button(u"Mounting"_s, PrimaryButtonStyle{28});
    running->setRunning(true);
    auto *busy = new Button(u"Signing in…"_s, SecondaryButtonStyle{});
    busy->setRunning(true);
    auto *sizes =
        column({row({new Button(u"28"_s, PrimaryButtonStyle{28}), new Button(u"32"_s, PrimaryButtonStyle{}),
                     new Button(u"36"_s, PrimaryButtonStyle{36}), Stretch{}}),
                row({new Button(u"28"_s, SecondaryButtonStyle{28}), new Button(u"32"_s, SecondaryButtonStyle{}),
                     new Button(u"36"_s, SecondaryButtonStyle{36}), Stretch{}}),
                row({new Label(u"Running:"_s, Type::Micro, Theme::text), running, busy, Stretch{}}),
                row({new Button(Icon::FolderReveal, u"Show in Finder"_s, SecondaryButtonStyle{28}),
                     new Button(Icon::Copy, u"Copy"_s, SecondaryButtonStyle{28}), Stretch{}}),
                row({new IconButton(Icon::Eye, u"Show"_s), new IconButton(Icon::Copy, u"Copy the line"_s),
                     new Spinner(14), new Spinner(16), Stretch{}}),
                Stretch{}},
               16);
    auto *both = row({}, 32);
    both->addLayout(list, 1);
    both->addLayout(sizes);
    return gallerySection(u"Buttons"_s, both);
}

QWidget *labels()
{
    auto *narrow = new AgentLabel(u"a-name-that-is-far-too-long-for-its-column"_s, Type::BodySemibold, Theme::heading);
    narrow->setFixedWidth(160);
    auto *middle = new AgentLabel(u"/home/mara/Quillfen/Documents/of/somebody"_s, Type::Mono, Theme::heading);
    middle->setElideMode(Qt::ElideMiddle);
    middle->setFixedWidth(160);
    auto *tricky =
        new AgentLabel(QStringLiteral("<b>bold</b>\tand \u202Egnp.exe\u202C\nline"), Type::Body, Theme::text);
    auto *lines =
        new AgentLabel(u"Two lines at most: a text that goes on and on, until there is no more room for it in the "
                       u"second one and it has to give way."_s,
                       Type::Caption, Theme::text);
    lines->setMaximumLines(2);
    lines->setFixedWidth(300);
    auto *wrapped =
        new Label(u"back it up somewhere that is not this Mac; without it nobody can read this volume, Quillfen "
                  u"included."_s,
                  Type::Body, Theme::text);
    wrapped->setWrap(300);
    auto *right = new AgentLabel(u"512 GB"_s, Type::Body, Theme::heading);
    right->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return gallerySection(u"Label, AgentLabel"_s, row({narrow, middle, tricky, lines, wrapped, right, Stretch{}}, 16));
}

QWidget *icons()
{
    auto *grid = new QGridLayout;
    for (int at = 0; at <= static_cast<int>(Icon::TrayTemplate); ++at) {
        auto *line = row({}, 8);
        for (const int size : {16, 18, 20}) {
            line->addWidget(new PaintedIcon(static_cast<Icon>(at), size, Theme::heading));
        }
        grid->addLayout(line, at / 10, at % 10);
    }
    return gallerySection(u"Icons"_s, grid);
}

QWidget *basePage()
{
    auto *page = new QWidget;
    page->setLayout(column({row({new BrandMark(40), new Brand, Stretch{}}, 16), palette(), row({brands(), types()}, 28),
                            buttons(), labels(), icons()},
                           20, {28, 28, 28, 28}));
    page->resize(1180, 1300);
    return page;
}

QWidget *boardPage()
{
    auto *window = new QWidget;
    auto *board = new BoardFrame(u"Volumes"_s);
    board->setSubtitle(u"5 volumes · uploading"_s);
    board->actions()->addWidget(new Button(u"Unmount"_s, SecondaryButtonStyle{}));
    board->actions()->addWidget(new Button(u"+ New volume"_s, PrimaryButtonStyle{}));
    for (int at = 0; at < 6; ++at) {
        auto *card = new Ground(Theme::panel2, 12, Theme::line);
        card->setFixedHeight(160);
        card->setLayout(column({new SectionTitle(u"A card"_s), Stretch{}}, 0, {16, 12, 16, 12}));
        board->body()->addWidget(card);
    }
    auto *side = new Ground(Theme::dBg, 0);
    side->setFixedWidth(224);
    window->setLayout(row({side, Item{board, 1}}, 0));
    window->resize(1180, 760);
    return window;
}

const GalleryPage base("base", basePage);
const GalleryPage board("board", boardPage);

/// Saves the page at one scale. Real windows ask their screen for it; a picture brings its own.
void save(QWidget &page, const QString &file, qreal scale)
{
    QPixmap picture((QSizeF(page.size()) * scale).toSize());
    picture.setDevicePixelRatio(scale);
    page.render(&picture);
    picture.save(file);
}

} // namespace

QWidget *gallerySection(const QString &title, QLayout *contents)
{
    auto *rule = new Ground(Theme::line, 0);
    rule->setFixedHeight(1);
    auto *section = column({new SectionTitle(title), Space{8}, rule, Space{12}});
    section->addLayout(contents);
    return holder(section);
}

void showHovered(QWidget *widget)
{
    widget->setAttribute(Qt::WA_UnderMouse);
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QApplication::sendEvent(widget, &enter);
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    applyHouseLook(application);
    installFocusRing(application);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption folder(u"save"_s, u"Saves pictures at 1, 1.5 and 2 times the size."_s, u"folder"_s);
    parser.addOption(folder);
    parser.process(application);

    const bool saves = parser.isSet(folder);
    setReducedMotion(saves ? std::optional(true) : std::nullopt);
    for (const GalleryPage &each : GalleryPage::all()) {
        QWidget *page = each.make();
        page->setWindowTitle(each.name);
        page->show();
        if (auto *focused = page->findChild<QWidget *>(u"focused"_s)) {
            page->activateWindow();
            QApplication::processEvents();
            focused->setFocus(Qt::TabFocusReason);
        }
        QApplication::processEvents();
        if (!saves) {
            continue;
        }
        QDir().mkpath(parser.value(folder));
        for (const qreal scale : {1.0, 1.5, 2.0}) {
            save(*page, u"%1/%2@%3.png"_s.arg(parser.value(folder), each.name).arg(scale), scale);
        }
        delete page;
    }
    return saves ? 0 : QApplication::exec();
}
