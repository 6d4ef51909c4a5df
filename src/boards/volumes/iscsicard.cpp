// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/iscsicard.h"

#include "boards/volumes/commandrow.h"
#include "desktop/lanaddress.h"
#include "dialogs/dialogs.h"
#include "state/start.h"
#include "ui/controls/buttons.h"
#include "ui/controls/segmented.h"
#include "ui/controls/textfield.h"
#include "ui/controls/toggle.h"
#include "ui/layout.h"
#include "ui/paint/hairline.h"
#include "ui/parts/kv.h"
#include "ui/parts/well.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QSignalBlocker>

#include <utility>

namespace quillfen {

namespace {

constexpr int compact = 28;
/// Below this width the two columns stand below one another.
constexpr int narrowWidth = 760;
constexpr int noteWidth = 760;
/// As wide as the captions of the rows above the secret, so that the values stand below one another.
constexpr int captionWidth = 104;
constexpr int captionGap = 16;
/// As many whatever the secret's length, which is nobody's business either.
const QString hiddenSecret(12, QChar(0x2022));

Button *compactButton(Icon icon, const QString &text)
{
    return new Button(icon, text, SecondaryButtonStyle{compact});
}

} // namespace

IscsiCard::IscsiCard(std::shared_ptr<AppState> state, QWidget *parent)
    : QWidget(parent), m_model(std::make_shared<IscsiModel>(std::move(state))),
      m_observer({&m_model->info, &m_model->localSecret, &m_model->savedPortal}, [this] { render(); })
{
    auto *const others =
        new Label(tr("macOS has no built-in initiator: other machines connect to this Mac"), Type::Body, Theme::text);
    others->setWrap(noteWidth);
    auto *const heading = column({new Label(tr("Connect over iSCSI"), Type::Section, Theme::heading), Space{2}, others},
                                 0, QMargins{16, 16, 16, 0});
    m_between = new Hairline(Qt::Vertical);
    m_columns = row({Item{portalColumn(), 1}, m_between, Item{chapColumn(), 1}}, 20, QMargins{16, 12, 16, 16});
    m_notes = new AgentLabel(QString(), Type::Body, Theme::text);
    m_notes->setMaximumLines(4);
    m_notes->setMaximumWidth(scaled(noteWidth));
    m_notesRow = new QWidget;
    m_notesRow->setLayout(column({new Hairline, row({Item{m_notes, 1000}, Stretch{}}, 0, QMargins{16, 14, 16, 14})}));
    setLayout(column({heading, m_columns, m_notesRow, new Hairline, commandBlock()}));
    connectActions();
    render();
}

IscsiCard::~IscsiCard() = default;

QWidget *IscsiCard::portalColumn()
{
    m_target = new KV(tr("Target"), QString());
    m_target->setValueType(Type::Mono, Qt::ElideMiddle);
    m_portal = new KV(tr("Portal"), QString());
    m_portal->setValueType(Type::Mono, Qt::ElideMiddle);
    m_lun = new KV(tr("LUN"), QString());
    m_lun->setValueType(Type::Mono);
    m_portalField = new TextField(tr("Portal for other machines"), QStringLiteral("192.168.1.20"));
    m_portalField->setFont(quillfen::font(Type::Mono));
    m_save = new Button(tr("Save"), SecondaryButtonStyle{});
    m_address = new AgentLabel(QString(), Type::Mono, Theme::heading);
    m_addressLine = new QWidget;
    m_addressLine->setLayout(
        row({new Label(tr("This Mac's address"), Type::Caption, Theme::text), Item{m_address, 1}}, 4));
    auto *const side = new QWidget;
    side->setLayout(column({m_target, m_portal, m_lun, Space{12},
                            new Label(tr("Portal for other machines"), Type::BodyMedium, Theme::heading), Space{6},
                            row({Item{m_portalField, 1}, m_save}), Space{6}, m_addressLine, Stretch{}}));
    return side;
}

QWidget *IscsiCard::chapColumn()
{
    m_chap = new Toggle(tr("Require CHAP"), QStringLiteral(" "));
    m_login = new QWidget;
    m_user = new KV(tr("CHAP user"), QString());
    m_user->setValueType(Type::Mono);
    m_origin = new Label(tr("from the appliance's log"), Type::Caption, Theme::text);
    m_login->setLayout(column({Space{12}, new Hairline, Space{8}, m_user, secretRow(),
                               row({Space{scaled(captionWidth) + captionGap}, m_origin, Stretch{}}, 0)}));
    auto *const side = new QWidget;
    side->setLayout(column({m_chap, m_login, Stretch{}}));
    return side;
}

QWidget *IscsiCard::secretRow()
{
    m_secret = new AgentLabel(QString(), Type::Mono, Theme::heading);
    m_show = compactButton(Icon::Eye, tr("Show"));
    m_hide = compactButton(Icon::EyeOff, tr("Hide"));
    m_copySecret = compactButton(Icon::Copy, tr("Copy"));
    m_copySecret->setAccessibleName(tr("Copy, CHAP secret"));
    auto *const caption = new Label(tr("CHAP secret"), Type::Body, Theme::text);
    caption->setFixedWidth(scaled(captionWidth));
    auto *const line = new QWidget;
    line->setLayout(row({caption, Space{captionGap - 8}, Item{m_secret, 1}, m_show, m_hide, m_copySecret}));
    return line;
}

QWidget *IscsiCard::commandBlock()
{
    m_systems = new Segmented(tr("System of the other machine"));
    m_systems->setControlHeight(28);
    m_systems->addPart(tr("Linux"));
    m_systems->addPart(tr("Windows (PowerShell as Administrator)"));
    m_copyAll = compactButton(Icon::Copy, tr("Copy all"));
    m_well = new Well;
    m_lines = column({}, 0, QMargins{1, 1, 1, 1});
    m_well->setLayout(m_lines);
    auto *const block = new QWidget;
    block->setLayout(column({row({m_systems, Stretch{}, m_copyAll}), Space{12}, m_well}, 0, QMargins{16, 16, 16, 16}));
    return block;
}

void IscsiCard::connectActions()
{
    IscsiModel *const model = m_model.get();
    connect(m_save, &QAbstractButton::clicked, this, &IscsiCard::save);
    connect(m_portalField, &QLineEdit::returnPressed, this, &IscsiCard::save);
    connect(m_chap, &QAbstractButton::clicked, this, &IscsiCard::changeChap);
    connect(m_show, &QAbstractButton::clicked, this, [this] { reveal(true); });
    connect(m_hide, &QAbstractButton::clicked, this, [this] { reveal(false); });
    connect(m_copySecret, &QAbstractButton::clicked, this, [model] {
        if (const IscsiDetails details = iscsiDetails(model->info(), model->localSecret()); details.secret) {
            model->copy(*details.secret);
        }
    });
    connect(m_systems, &Segmented::currentChanged, this, &IscsiCard::render);
    connect(m_copyAll, &QAbstractButton::clicked, this, [this, model] {
        const IscsiDetails details = iscsiDetails(model->info(), model->localSecret());
        model->copy(commandLines(model->info(), system(), details.secret).join(QLatin1Char('\n')));
    });
}

void IscsiCard::setVolume(std::optional<std::int64_t> id)
{
    if (std::exchange(m_id, id) == id) {
        return;
    }
    m_revealed = false;
    m_takenPortal.clear();
    m_sentPortal.clear();
    m_portalField->clear();
    if (id) {
        start(m_model->load(*id));
    }
    render();
}

void IscsiCard::save()
{
    if (m_id) {
        m_sentPortal = m_portalField->text().trimmed();
        m_portalField->setText(m_sentPortal);
        start(m_model->save(*m_id, m_sentPortal));
    }
}

void IscsiCard::reveal(bool shown)
{
    const bool byKeyboard = m_show->hasFocus() || m_hide->hasFocus();
    m_revealed = shown;
    render();
    // The button that was pressed is gone; the one in its place takes over.
    if (byKeyboard) {
        (shown ? m_hide : m_show)->setFocus(Qt::TabFocusReason);
    }
}

void IscsiCard::changeChap(bool on)
{
    const std::optional<std::int64_t> id = m_id;
    const std::shared_ptr<IscsiModel> model = m_model;
    // The toggle tells what the agent says, not what was clicked: it waits for the answer where it was.
    m_chap->setChecked(!on);
    const bool agreed = on || confirm(this, tr("Turn CHAP off?"),
                                      tr("The target becomes open: any machine that can reach the portal can log in "
                                         "and read and write this volume, with no password. Use it on a network you "
                                         "trust."),
                                      tr("Turn off"), Destructive::Yes);
    if (agreed && id) {
        start(model->setChap(*id, on));
    }
}

void IscsiCard::render()
{
    const IscsiDetails details = iscsiDetails(m_model->info(), m_model->localSecret());
    renderPortal(details);
    renderChap(details);
    m_notes->setText(details.notes);
    m_notesRow->setVisible(!details.notes.isEmpty());
    renderCommands(details);
}

void IscsiCard::renderPortal(const IscsiDetails &details)
{
    m_target->setValue(details.target);
    m_portal->setValue(details.portal);
    m_lun->setValue(details.lun);
    const QString saved = m_model->savedPortal();
    // What somebody is typing stays; what was saved reads as the agent has taken it.
    const QString typed = m_portalField->text();
    if (saved != m_takenPortal && (typed == m_takenPortal || typed == m_sentPortal)) {
        m_portalField->setText(saved);
    }
    m_takenPortal = saved;
    const std::optional<QString> address = lanAddress();
    m_addressLine->setVisible(address.has_value());
    m_address->setText(address.value_or(QString()));
}

void IscsiCard::renderChap(const IscsiDetails &details)
{
    m_chap->setChecked(details.chap);
    m_chap->setCaption(details.chap
                           ? tr("Initiators log in with the user and secret below. Turn off for initiators without "
                                "CHAP (Proxmox's iSCSI dialog).")
                           : tr("Off: an open target, no login. Anyone who can reach the portal can read and write "
                                "this volume."));
    m_login->setVisible(details.chap);
    m_user->setValue(details.chapUser);
    const bool known = details.secret.has_value();
    m_secret->setType(known ? Type::Mono : Type::Body);
    m_secret->setText(!known       ? tr("only in the appliance's log; redeploy it to adopt an issued secret")
                      : m_revealed ? *details.secret
                                   : hiddenSecret);
    m_show->setVisible(known && !m_revealed);
    m_hide->setVisible(known && m_revealed);
    m_copySecret->setVisible(known);
    m_origin->setVisible(details.secretFromLog);
}

void IscsiCard::renderCommands(const IscsiDetails &details)
{
    const QStringList lines = commandLines(m_model->info(), system(), details.secret);
    const std::optional<QString> spokenSecret =
        details.secret && !m_revealed ? std::optional(hiddenSecret) : details.secret;
    const QStringList spoken = commandLines(m_model->info(), system(), spokenSecret);
    while (m_lines->count() > lines.size()) {
        delete m_lines->itemAt(m_lines->count() - 1)->widget(); // its place goes with it
    }
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const int place = static_cast<int>(i);
        if (m_lines->count() <= place) {
            auto *const added = new CommandRow;
            added->setDivided(place > 0);
            connect(added, &QAbstractButton::clicked, this, [this, added] { m_model->copy(added->line()); });
            m_lines->addWidget(added);
        }
        static_cast<CommandRow *>(m_lines->itemAt(place)->widget())->setLine(lines[i], spoken[i]);
    }
    m_well->setVisible(!lines.isEmpty());
    m_copyAll->setEnabled(!lines.isEmpty());
}

InitiatorSystem IscsiCard::system() const
{
    return m_systems->currentIndex() == 1 ? InitiatorSystem::Windows : InitiatorSystem::Linux;
}

void IscsiCard::resizeEvent(QResizeEvent *)
{
    const bool narrow = width() < scaled(narrowWidth);
    m_columns->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_between->setVisible(!narrow);
}

} // namespace quillfen
