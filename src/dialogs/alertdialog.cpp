// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "dialogs/alertdialog.h"

#include "ui/accessible.h"
#include "ui/controls/textfield.h"
#include "ui/layout.h"
#include "ui/overlays/scrim.h"
#include "ui/paint/paint.h"
#include "ui/paint/roundmask.h"
#include "ui/paint/shadow.h"
#include "ui/parts/scrollarea.h"
#include "ui/system/compositing.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QApplication>
#include <QBoxLayout>
#include <QPainter>
#include <QScreen>
#include <QShortcut>
#include <QStringList>
#include <QWindow>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int dialogWidth = 480;
constexpr int padding = 25; ///< the line included
constexpr int radius = 12;
constexpr int textWidth = dialogWidth - 2 * padding;
constexpr int fieldHeight = 24;
constexpr int mostTitleLines = 3;
constexpr int scrollBarRoom = 12;
constexpr int widestButton = (textWidth - 8) / 2;

/// More than anybody reads before pressing a button; a longer text comes from something that went wrong.
constexpr qsizetype longestText = qsizetype{16} * 1024;
constexpr qsizetype longestWindowTitle = 200;

/// What title, field, buttons and padding take of the screen at most, beside the text.
constexpr int otherHeight = 320;

/// Line ends are ours, to part paragraphs; nothing else stays unseen.
QString readable(const QString &text)
{
    QStringList lines = text.left(longestText).split(u'\n');
    for (QString &line : lines) {
        line = madeVisible(line);
    }
    return lines.join(u'\n') + (text.size() > longestText ? QStringLiteral("…") : QString());
}

QWidget *windowBelow(QWidget *parent)
{
    QWidget *window = parent ? parent->window() : QApplication::activeWindow();
    return window && window->isVisible() ? window : nullptr;
}

} // namespace

AlertDialog::AlertDialog(QWidget *parent, const QString &title)
    : QDialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
      m_parentWindow(windowBelow(parent)), m_body(column({})), m_buttons(row({Stretch{}})), m_shadowed(isComposited())
{
    setWindowModality(Qt::ApplicationModal);
    setModalDialog(this);
    setWindowTitle(madeVisible(title.left(longestWindowTitle)));
    setAccessibleName(madeVisible(title));
    setAttribute(Qt::WA_TranslucentBackground, m_shadowed);
    if (parent) {
        connect(parent, &QObject::destroyed, this, &AlertDialog::reject);
    }

    // Quitting closes every window first, which answers the question with "Cancel"; a dialog that insists refuses.
    connect(new QShortcut(Qt::CTRL | Qt::Key_Q, this), &QShortcut::activated, this, [this] {
        if (!m_insists) {
            QCoreApplication::quit();
        }
    });

    auto *heading = new AgentLabel(title, Type::Heading, Theme::heading);
    heading->setMaximumLines(mostTitleLines);
    heading->setFixedSize(textWidth, heading->heightForWidth(textWidth));
    QBoxLayout *parts = column({heading, m_body, Space{24}, m_buttons});
    parts->setContentsMargins(shadowMargins() + padding);
    parts->setSizeConstraint(QLayout::SetFixedSize);
    setLayout(parts);
}

AlertDialog::~AlertDialog()
{
    if (m_scrim) {
        m_scrim->leave();
    }
}

QMargins AlertDialog::shadowMargins() const
{
    return m_shadowed ? sheetShadow.margins() : QMargins();
}

int AlertDialog::mostTextHeight() const
{
    const QScreen *screen = m_parentWindow ? m_parentWindow->screen() : QGuiApplication::primaryScreen();
    return std::max(4 * lineHeight(Type::Body), screen->availableGeometry().height() - scaled(otherHeight));
}

void AlertDialog::addText(const QString &text)
{
    // The first stands close under the title, further ones one empty line apart.
    m_body->addSpacing(m_body->count() == 0 ? 8 : lineHeight(Type::Body));
    auto *label = new Label(readable(text), Type::Body, Theme::text);
    label->setWrap(textWidth);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setFixedSize(textWidth, label->heightForWidth(textWidth));
    if (label->height() <= mostTextHeight()) {
        m_body->addWidget(label);
        return;
    }
    const int besideBar = textWidth - scrollBarRoom;
    label->setFixedSize(besideBar, label->heightForWidth(besideBar));
    auto *scroll = new ScrollArea;
    scroll->setWidget(label);
    label->setAutoFillBackground(false);
    scroll->setFixedSize(textWidth, mostTextHeight());
    scroll->setFocusPolicy(Qt::TabFocus); // or the keyboard could not read to its end
    m_body->addWidget(scroll);
}

TextField *AlertDialog::addField(int width, const QString &accessibleName, const QString &initial,
                                 const QString &placeholder)
{
    auto *field = new TextField(accessibleName, placeholder, fieldHeight);
    field->setFixedWidth(width);
    field->setText(initial);
    m_body->addSpacing(12);
    m_body->addWidget(field, 0, Qt::AlignLeft);
    if (!m_first) {
        m_first = field;
    }
    return field;
}

void AlertDialog::addBody(QWidget *widget)
{
    m_body->addSpacing(12);
    m_body->addWidget(widget);
}

Button *AlertDialog::addButton(const QString &text, ButtonStyle style)
{
    auto *button = new Button(text, style);
    button->setMaximumWidth(widestButton);
    m_buttons->addWidget(button);
    return button;
}

Button *AlertDialog::addDefaultButton(const QString &text, ButtonStyle style)
{
    Button *button = addButton(text, style);
    button->setDefault(true);
    if (!m_first) {
        m_first = button;
    }
    return button;
}

void AlertDialog::insist()
{
    m_insists = true;
}

bool AlertDialog::ask()
{
    // A question over a question: the lower one has its scrim already, and is no window that could carry one.
    if (m_parentWindow && !qobject_cast<AlertDialog *>(m_parentWindow)) {
        m_scrim = new Scrim(m_parentWindow);
    }
    if (m_first) {
        m_first->setFocus(Qt::TabFocusReason); // the ring shows where Enter goes
    }
    // The place first, then the system's window: one that is moved once it is there hears of it when the window manager
    // has it in hand already, looks where it stands, and may go on believing in a place that was passed through. Lists
    // and tool tips would open there.
    placeOver(m_parentWindow);
    winId();
    if (m_parentWindow) {
        windowHandle()->setTransientParent(m_parentWindow->windowHandle());
    }
    const bool wasInFront = m_parentWindow && m_parentWindow->isActiveWindow();
    const bool accepted = exec() == QDialog::Accepted;
    // Most window managers think of it themselves; without, the keyboard would belong to nobody.
    if (wasInFront && m_parentWindow) {
        m_parentWindow->activateWindow();
    }
    return accepted;
}

void AlertDialog::placeOver(const QWidget *window)
{
    const QScreen *screen = window ? window->screen() : QGuiApplication::primaryScreen();
    const QRect room = screen->availableGeometry();
    layout()->activate();
    QRect panel(QPoint(), size().shrunkBy(shadowMargins()));
    panel.moveCenter(window ? window->frameGeometry().center() : room.center());
    panel.moveLeft(std::clamp(panel.left(), room.left(), std::max(room.left(), room.right() + 1 - panel.width())));
    panel.moveTop(std::clamp(panel.top(), room.top(), std::max(room.top(), room.bottom() + 1 - panel.height())));
    move(panel.topLeft() - QPoint(shadowMargins().left(), shadowMargins().top()));
}

void AlertDialog::reject()
{
    if (!m_insists) {
        QDialog::reject();
    }
}

void AlertDialog::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    if (!m_shadowed) {
        cutRoundCorners(this, radius);
    }
}

void AlertDialog::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF panel = QRectF(rect()).marginsRemoved(shadowMargins());
    if (m_shadowed) {
        paintShadow(painter, panel, radius, sheetShadow);
    } else {
        painter.fillRect(rect(), Theme::line); // where the mask's steps lie outside the smooth corner
    }
    paintSurface(painter, panel, radius, Theme::bg, Theme::line);
}

} // namespace quillfen
