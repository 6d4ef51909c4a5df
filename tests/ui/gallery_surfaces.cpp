// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "gallery.h"

#include "ui/controls/buttons.h"
#include "ui/controls/picker.h"
#include "ui/controls/radiorow.h"
#include "ui/controls/searchfield.h"
#include "ui/controls/segmented.h"
#include "ui/controls/sharetile.h"
#include "ui/controls/slider.h"
#include "ui/controls/textfield.h"
#include "ui/controls/toggle.h"
#include "ui/layout.h"
#include "ui/overlays/sheet.h"
#include "ui/overlays/toast.h"
#include "ui/parts/bar.h"
#include "ui/parts/card.h"
#include "ui/parts/emptystate.h"
#include "ui/parts/inlineerror.h"
#include "ui/parts/kv.h"
#include "ui/parts/pill.h"
#include "ui/parts/sectiontitle.h"
#include "ui/parts/statcell.h"
#include "ui/parts/statemark.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QGridLayout>

namespace quillfen {

namespace {

QWidget *wrapped(QLayout *layout)
{
    auto *widget = new QWidget;
    widget->setLayout(layout);
    return widget;
}

/// A widget as it looks in another state.
template <typename Widget, typename... Arguments>
Widget *with(Widget *widget, void (Widget::*setter)(Arguments...), std::type_identity_t<Arguments>... arguments)
{
    (widget->*setter)(arguments...);
    return widget;
}

TextField *field(const QString &text, int height = 32)
{
    auto *made = new TextField(text + QStringLiteral(" field"), QStringLiteral("Search volumes"), height);
    made->setText(text);
    return made;
}

template <typename Widget>
Widget *disabled(Widget *widget)
{
    widget->setEnabled(false);
    return widget;
}

template <typename Widget>
Widget *checked(Widget *widget)
{
    widget->setChecked(true);
    return widget;
}

QWidget *card(bool dark)
{
    const QColor track = dark ? Theme::dLine : Theme::line;
    auto *made = new Card(dark);
    made->band()->addWidget(new SectionTitle(QStringLiteral("SectionTitle"), dark));
    if (!dark) {
        auto *neutral = new Pill(QStringLiteral("appliance running here"), Theme::panel, Theme::heading);
        neutral->setOutlined(true);
        auto *upload = new Pill(QStringLiteral("87% · uploading"), Theme::panel2, Theme::warn);
        upload->setOutlined(true);
        made->band()->addWidget(new Pill(QStringLiteral("Protected"), Theme::okBg, Theme::okText));
        made->band()->addWidget(neutral);
        made->band()->addWidget(upload);
        made->band()->addWidget(new Pill(QStringLiteral("failed"), Theme::dangerBg, Theme::dangerText));
    }
    made->band()->addStretch();
    made->addRow(statRow({new StatCell(QStringLiteral("Restore points"), QStringLiteral("1284"), dark),
                          new StatCell(QStringLiteral("Local cache"), QStringLiteral("18.6 GB"), dark)}));
    auto *target = new KV(QStringLiteral("Target"), QStringLiteral("iqn.2026-02.quillfen:vm-store"), dark);
    target->setValueType(Type::Mono, Qt::ElideMiddle);
    made->addRow(wrapped(
        column({new KV(QStringLiteral("Cache disk"), QStringLiteral("80 GB"), dark), target}, 0, {16, 8, 16, 8})));
    made->addRow(wrapped(column({new Bar(0.629, track, Theme::accent, 4), new Bar(0.629, track, Theme::accent, 6),
                                 new Bar(0.75, track, Theme::tierColors[3], 6)},
                                10, {16, 14, 16, 14})));
    made->foot()->addStretch();
    if (!dark) {
        made->foot()->addWidget(new Button(QStringLiteral("Release"), SecondaryButtonStyle{.height = 28}));
    }
    return made;
}

QLayout *fields()
{
    auto *grid = new QGridLayout;
    grid->setSpacing(10);
    auto *picker = new Picker(QStringLiteral("Keep"));
    picker->addItems({QStringLiteral("12 hours"), QStringLiteral("2 days")});
    picker->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto *low = new Picker(QStringLiteral("Volume"));
    low->addItems({QStringLiteral("Documents")});
    low->setControlHeight(28);
    auto *off = disabled(new Picker(QStringLiteral("Delivery")));
    off->addItems({QStringLiteral("Download")});
    auto *dark = new TextField(QStringLiteral("Date"), {});
    dark->setDark(true);
    dark->setText(QStringLiteral("Nov 20, 2026 · 11:06"));
    auto *ground = new Card(true);
    ground->addRow(wrapped(row({dark}, 0, {16, 12, 16, 12})));
    const std::initializer_list<QWidget *> all{new SearchField(QStringLiteral("Search volumes")),
                                               field(QStringLiteral("Documents")),
                                               with(field(QStringLiteral("quill_8f2c")), &TextField::setInvalid, true),
                                               disabled(field(QStringLiteral("Documents"))),
                                               disabled(field({})),
                                               field(QStringLiteral("CLO"), 24),
                                               picker,
                                               low,
                                               off,
                                               ground};
    int at = 0;
    for (QWidget *each : all) {
        grid->addWidget(each, at / 2, at % 2);
        ++at;
    }
    return grid;
}

QLayout *choices()
{
    auto *segmented = new Segmented(QStringLiteral("Console"));
    for (const auto &part : {QStringLiteral("Hubs"), QStringLiteral("Users"), QStringLiteral("Tokens")}) {
        segmented->addPart(part);
    }
    auto *slider = new Slider(QStringLiteral("Size"));
    slider->setRange(1, 760);
    slider->setValue(250);
    auto *documents = checked(new RadioRow(QStringLiteral("Documents")));
    documents->setValue(QStringLiteral("100 GB"));
    auto *photos = new RadioRow(QStringLiteral("photos-archive"));
    photos->setValue(QStringLiteral("512 GB"));
    auto *rows = new Card;
    rows->addRow(documents);
    rows->addRow(photos);
    rows->addRow(disabled(new RadioRow(QStringLiteral("Shipped disk"), QStringLiteral("Not in this country"))));
    const QString network = QStringLiteral("Served to your network");
    return column(
        {row({checked(new Toggle({})), new Toggle({}), disabled(new Toggle({})), segmented, Stretch{}}, 20), slider,
         row({checked(new ShareTile(QStringLiteral("SMB"), QStringLiteral("Finder, recommended"))),
              new ShareTile(QStringLiteral("NFS"), network),
              disabled(new ShareTile(QStringLiteral("iSCSI"), network))}),
         rows,
         checked(new Toggle(QStringLiteral("Encrypt with a key only I hold"),
                            QStringLiteral("The key file is created on this Mac at ~/.quill/quill-field-recordings.key "
                                           "when the volume first starts. Quillfen never sees it."))),
         new Toggle(QStringLiteral("Mount on this Mac (~/Quillfen/field-recordings)"))},
        12);
}

QLayout *states()
{
    auto *error = new InlineError;
    error->setText(QStringLiteral("A volume named Documents exists already."));
    return column({new StateText(QStringLiteral("100% · synced"), Theme::ok),
                   new StateText(QStringLiteral("87% · uploading"), Theme::warn),
                   new StateText(QStringLiteral("not started · Mount to start"), Theme::muted), error},
                  8);
}

QWidget *surfacesPage()
{
    auto *left = wrapped(column({card(false), fields(), states(), Stretch{}}, 16));
    auto *right = wrapped(column({card(true), choices(), Stretch{}}, 16));
    auto *page = new QWidget;
    page->setLayout(row({Item{left, 1}, Item{right, 1}}, 28, {28, 28, 28, 28}));
    page->resize(1180, 820);
    (new Toast(page))->setText(QStringLiteral("policy saved"));
    return page;
}

QWidget *emptyPage()
{
    auto *empty = new EmptyState(Icon::Drive,
                                 QStringLiteral("A volume is a drive on this Mac whose every second is kept offsite."),
                                 QStringLiteral("+ New volume"));
    empty->resize(956, 660);
    return empty;
}

QLayout *labelled(const QString &label, QWidget *widget)
{
    return column({new Label(label, Type::BodyMedium, Theme::heading), widget}, 6);
}

QWidget *sheetForm()
{
    auto *name = new TextField(QStringLiteral("Name"));
    name->setText(QStringLiteral("field-recordings"));
    auto *size = new Slider(QStringLiteral("Size"));
    size->setRange(1, 760);
    size->setValue(250);
    const QString network = QStringLiteral("Served to your network");
    auto *tiles =
        wrapped(row({checked(new ShareTile(QStringLiteral("SMB"), QStringLiteral("Finder, recommended"))),
                     new ShareTile(QStringLiteral("NFS"), network), new ShareTile(QStringLiteral("iSCSI"), network)}));
    auto *key = checked(new Toggle(
        QStringLiteral("Encrypt with a key only I hold"),
        QStringLiteral("The key file is created on this Mac at ~/.quill/quill-field-recordings.key when the "
                       "volume first starts. Quillfen never sees it. If it's lost, the data can't be read.")));
    auto *mount = checked(new Toggle(QStringLiteral("Mount on this Mac (~/Quillfen/field-recordings)")));
    auto *form = new QWidget;
    form->setAccessibleName(QStringLiteral("New volume"));
    form->setLayout(column(
        {new Label(QStringLiteral("New volume"), Type::Title, Theme::heading), Space{4},
         new Label(QStringLiteral("It appears in Finder as soon as it's created."), Type::Body, Theme::text), Space{20},
         labelled(QStringLiteral("Name"), name), Space{16}, labelled(QStringLiteral("Size"), size), Space{6},
         new Label(QStringLiteral("760 GB left on your plan. History is kept inside this space."), Type::Caption,
                   Theme::text),
         Space{16}, labelled(QStringLiteral("Share"), tiles), Space{34}, key, Space{10}, mount}));
    return form;
}

QWidget *sheetPage(int height)
{
    auto *window = new QWidget;
    window->resize(1180, height);
    window->setLayout(column({emptyPage()}));
    auto *sheet = new Sheet(window, sheetForm());
    sheet->foot()->addWidget(new Button(QStringLiteral("Cancel"), SecondaryButtonStyle{.height = 36}));
    auto *create = new Button(QStringLiteral("Create volume"), PrimaryButtonStyle{.height = 36});
    create->setDefault(true);
    sheet->foot()->addWidget(create);
    return window;
}

const GalleryPage surfaces("surfaces", surfacesPage);
const GalleryPage empty("empty", emptyPage);
const GalleryPage sheet("sheet", [] { return sheetPage(760); });
const GalleryPage lowSheet("sheet-low", [] { return sheetPage(560); });

} // namespace

} // namespace quillfen
