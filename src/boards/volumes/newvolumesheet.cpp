// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/newvolumesheet.h"

#include "boards/volumes/sizefield.h"
#include "state/start.h"
#include "ui/accessible.h"
#include "ui/controls/buttons.h"
#include "ui/controls/sharetile.h"
#include "ui/controls/slider.h"
#include "ui/controls/textfield.h"
#include "ui/controls/toggle.h"
#include "ui/layout.h"
#include "ui/overlays/sheet.h"
#include "ui/paint/hairline.h"
#include "ui/parts/inlineerror.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace quillfen {

namespace {

constexpr int formWidth = 448;
constexpr std::array<QLatin1String, 3> shareValues{QLatin1String("smb"), QLatin1String("nfs"), QLatin1String("iscsi")};
constexpr std::size_t iscsi = 2;

QString mountText(const QString &name)
{
    return QCoreApplication::translate("NewVolumeSheet", "Mount on this Mac (~/Quillfen/%1)").arg(name);
}

Label *caption(const QString &text)
{
    return new Label(text, Type::BodyMedium, Theme::heading);
}

} // namespace

NewVolumeSheet::NewVolumeSheet(std::shared_ptr<NewVolumeModel> model, QWidget *parent)
    : QWidget(parent), m_model(std::move(model)),
      m_observer({&m_model->busy, &m_model->error, &m_model->nameInvalid, &m_model->state().account,
                  &m_model->state().auth, &m_model->state().volumes},
                 [this] { render(); })
{
    setAccessibleName(tr("New volume"));
    m_name = new TextField(tr("Name"), tr("Documents"));
    m_encrypt = new Toggle(tr("Encrypt with a key only I hold"), QStringLiteral(" "));
    m_mount = new Toggle(mountText(QString()));
    m_mount->setChecked(true);
    m_error = new InlineError;
    m_errorRow = new QWidget;
    m_errorRow->setLayout(column({m_error}, 0, QMargins{0, 12, 0, 0}));
    const QMargins outward{0, 0, sheetOverhang, 0};
    QBoxLayout *const upper =
        column({new Label(tr("New volume"), Type::Title, Theme::heading), Space{4},
                new Label(tr("It appears in Finder as soon as it's created."), Type::Body, Theme::text), Space{20},
                caption(tr("Name")), Space{6}, m_name, Space{16}},
               0, outward);
    // The number stands in line with the fields' edge; the frame that it has under the pointer reaches over it.
    QBoxLayout *const size = sizeHead();
    QBoxLayout *const lower =
        column({Space{4}, m_slider, Space{6}, m_room, Space{16}, caption(tr("Share")), Space{6}, shareBlock(),
                Space{20}, new Hairline, Space{14}, m_encrypt, Space{14}, m_mount, m_errorRow},
               0, outward);
    setLayout(column({upper, size, lower}, 0, QMargins{sheetOverhang, 0, 0, 0}));

    connect(m_name, &QLineEdit::textChanged, this, &NewVolumeSheet::change);
    connect(m_encrypt, &QAbstractButton::toggled, this, &NewVolumeSheet::render);
    connect(m_slider, &QSlider::valueChanged, this, &NewVolumeSheet::setSize);
    connect(m_size, &QSpinBox::valueChanged, this, &NewVolumeSheet::setSize);
    for (ShareTile *const tile : m_shares) {
        connect(tile, &QAbstractButton::toggled, this, &NewVolumeSheet::render);
    }
    render();
}

QBoxLayout *NewVolumeSheet::sizeHead()
{
    m_size = new SizeField(tr("Size in GB"));
    m_slider = new Slider(tr("Size"));
    m_room = new Label(QString(), Type::Caption, Theme::text);
    m_room->setWrap(formWidth);
    return row({caption(tr("Size")), Stretch{}, m_size});
}

QWidget *NewVolumeSheet::shareBlock()
{
    const QString served = tr("Served to your network");
    m_shares = {new ShareTile(tr("SMB"), tr("Finder, recommended")), new ShareTile(tr("NFS"), served),
                new ShareTile(tr("iSCSI"), served)};
    auto *const block = new QWidget;
    setAccessible(block, QAccessible::Grouping, tr("Share"));
    block->setLayout(row({Item{m_shares[0], 1}, Item{m_shares[1], 1}, Item{m_shares[2], 1}}));
    m_shares[0]->setChecked(true);
    return block;
}

void NewVolumeSheet::addButtons(QBoxLayout *foot)
{
    m_cancel = new Button(tr("Cancel"), SecondaryButtonStyle{36});
    m_create = new Button(tr("Create volume"), PrimaryButtonStyle{36});
    m_create->setDefault(true);
    foot->addWidget(m_cancel);
    foot->addWidget(m_create);
    connect(m_cancel, &QAbstractButton::clicked, this, [this] { m_model->cancel(); });
    connect(m_create, &QAbstractButton::clicked, this, &NewVolumeSheet::submit);
}

Sheet *NewVolumeSheet::present(QWidget *window, std::shared_ptr<AppState> state)
{
    auto *const form = new NewVolumeSheet(std::make_shared<NewVolumeModel>(std::move(state)));
    auto *const sheet = new Sheet(window, form);
    form->addButtons(sheet->foot());
    form->render();
    connect(sheet, &Sheet::dismissed, form, [form] { form->m_model->cancel(); });
    return sheet;
}

void NewVolumeSheet::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        submit();
    } else {
        QWidget::keyPressEvent(event);
    }
}

NewVolumeForm NewVolumeSheet::edited() const
{
    NewVolumeForm form;
    form.name = m_name->text();
    form.sizeGB = m_size->value();
    for (std::size_t i = 0; i < m_shares.size(); ++i) {
        if (m_shares[i]->isChecked()) {
            form.share = shareValues[i];
        }
    }
    form.encrypt = m_encrypt->isChecked();
    form.mountHere = m_mount->isChecked();
    return form;
}

void NewVolumeSheet::setSize(int gigabytes)
{
    m_sizeChosen = true;
    const QSignalBlocker quietField(m_size);
    const QSignalBlocker quietSlider(m_slider);
    m_size->setValue(gigabytes);
    m_slider->setValue(gigabytes);
    change();
}

void NewVolumeSheet::change()
{
    m_model->edited(edited());
    render();
}

void NewVolumeSheet::submit()
{
    m_size->interpretText();
    start(m_model->create(edited()));
}

void NewVolumeSheet::render()
{
    const NewVolumeForm form = edited();
    renderSize();
    m_encrypt->setCaption(form.encrypt ? tr("The key file is created on this Mac at ~/.quill/quill-%1.key when the "
                                            "volume first starts. Quillfen never sees it. If it's lost, the data "
                                            "can't be read.")
                                             .arg(form.name.trimmed())
                                       : tr("The vault stores the volume with its own key."));
    const QString mount = mountText(form.name.trimmed());
    m_mount->setText(mount);
    m_mount->setAccessibleName(mount);
    m_mount->setVisible(!m_shares[iscsi]->isChecked());
    m_errorRow->setVisible(!m_model->error().isEmpty());
    m_error->setText(m_model->error());
    m_name->setInvalid(m_model->nameInvalid());
    if (m_create != nullptr) {
        m_create->setRunning(m_model->busy());
        m_cancel->setEnabled(!m_model->busy());
    }
}

void NewVolumeSheet::renderSize()
{
    const PlanRoom room = planRoom(m_model->state());
    const QSignalBlocker quietField(m_size);
    const QSignalBlocker quietSlider(m_slider);
    m_slider->setRange(1, static_cast<int>(std::min<std::int64_t>(room.largestGB(), m_size->maximum())));
    if (!m_sizeChosen && room.known) {
        m_size->setValue(static_cast<int>(room.suggestedGB()));
    }
    if (!m_size->hasFocus()) {
        m_slider->setValue(m_size->value());
    }
    m_room->setText(planRoomText(room));
}

} // namespace quillfen
