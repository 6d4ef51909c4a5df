// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/panel/menubarview.h"

#include "shell/mainview/darktextbutton.h"
#include "shell/mainview/sidebarfooter.h"
#include "shell/panel/menubarrows.h"
#include "shell/panel/menubarvolumes.h"
#include "state/appstate.h"
#include "ui/accessible.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/paint/direction.h"
#include "ui/paint/hairline.h"
#include "ui/paint/paint.h"
#include "ui/paint/roundmask.h"
#include "ui/paint/shadow.h"
#include "ui/parts/bar.h"
#include "ui/parts/brand.h"
#include "ui/parts/statemark.h"
#include "ui/system/compositing.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int panelWidth = 380;
constexpr int padding = 16;
constexpr int radius = 12;
constexpr int rowHeight = 50;
constexpr int mostRows = 6;
constexpr int headerHeight = 52;
constexpr int footHeight = 40;
constexpr int gapToIcon = 4;
constexpr int dotRoom = 16; // an 8-px dot and its gap

QWidget *padded(QLayout *layout)
{
    auto *part = new QWidget;
    part->setLayout(layout);
    return part;
}

} // namespace

MenuBarView::MenuBarView(std::shared_ptr<AppState> state, QWidget *parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint | Qt::WindowStaysOnTopHint),
      m_state(std::move(state)), m_shadowed(isComposited()),
      m_status(new AgentLabel({}, Type::BodyMedium, Theme::dBright)), m_plan(new QWidget),
      m_planName(new AgentLabel({}, Type::CaptionSemibold, Theme::dBright)),
      m_planLine(new AgentLabel({}, Type::Caption, Theme::dText)), m_bar(new Bar(0.0, Theme::dLine, Theme::accent, 4)),
      m_volumes(std::make_unique<MenuBarVolumes>(m_state)), m_list(new LongList(*m_volumes, rowHeight, tr("Volumes"))),
      m_engine(new AgentLabel({}, Type::Caption, Theme::dText)),
      m_observer(
          {&m_state->account, &m_state->vm, &m_state->volumes, &m_state->mounts, &m_state->statuses},
          [this] { renderIfVisible(); }, m_state->timing().frame)
{
    setWindowTitle(QStringLiteral("Quillfen"));
    setAccessible(this, QAccessible::Window, tr("Quillfen, running in background"));
    setAttribute(Qt::WA_TranslucentBackground, m_shadowed);
    setProperty("ownFocus", true);
    build();
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &MenuBarView::focusMoved);
}

MenuBarView::~MenuBarView()
{
    delete m_list; // before the rows it asks for
}

void MenuBarView::build()
{
    m_list->setLineColour(Qt::transparent);
    m_planLine->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_bar->setAccessibleName(tr("Plan"));
    m_plan->setLayout(
        column({row({Item{m_planName, 1}, m_planLine}), Space{8}, m_bar}, 0, QMargins(padding, 12, padding, 12)));
    auto *title = new Label(tr("Volumes"), Type::CaptionSemibold, Theme::dText);
    setLayout(
        column({header(), row({m_status}, 0, QMargins(padding + dotRoom, 0, padding, 12)), new Hairline(Theme::dLine),
                m_plan, new Hairline(Theme::dLine), row({title}, 0, QMargins(padding, 12, padding, 4)), m_list,
                Space{8}, buttons(), new Hairline(Theme::dLine), foot()},
               0, shadowMargins() + 1));
    setFixedWidth(scaled(panelWidth) + shadowMargins().left() + shadowMargins().right());
}

QWidget *MenuBarView::header()
{
    auto *mark = new BrandMark(22);
    setAccessible(mark, QAccessible::Client, {}); // the word beside it says the name
    auto *background = new Label(tr("Running in background"), Type::Caption, Theme::dMuted);
    QWidget *part = padded(row({mark, new Brand(true), Stretch{}, background}, 8, QMargins(padding, 0, padding, 0)));
    part->setFixedHeight(scaled(headerHeight));
    return part;
}

QWidget *MenuBarView::buttons()
{
    const SecondaryButtonStyle dark{.height = 32, .dark = true};
    auto *timeTravel = new Button(tr("Time travel"), dark);
    auto *newVolume = new Button(tr("+ New volume"), dark);
    auto *open = new Button(tr("Open Quillfen"), PrimaryButtonStyle{});
    open->setProperty("darkSurface", true);
    const auto act = [this](Button *button, void (MenuBarView::*signal)()) {
        connect(button, &QAbstractButton::clicked, this, [this, signal] {
            hide();
            Q_EMIT(this->*signal)();
        });
    };
    act(timeTravel, &MenuBarView::timeTravelRequested);
    act(newVolume, &MenuBarView::newVolumeRequested);
    act(open, &MenuBarView::openRequested);
    return padded(
        row({Item{timeTravel, 1}, Item{newVolume, 1}, Item{open, 1}}, 8, QMargins(padding, 8, padding, padding)));
}

QWidget *MenuBarView::foot()
{
    auto *version = new Label(AppState::appVersion(), Type::Caption, Theme::dText);
    auto *quit = new DarkTextButton;
    quit->setLabel(tr("Quit"), true);
    connect(quit, &QAbstractButton::clicked, this, &MenuBarView::quitRequested);
    QWidget *part = padded(row({m_engine, version, Stretch{}, quit}, 12, QMargins(padding, 0, padding, 0)));
    part->setFixedHeight(scaled(footHeight));
    return part;
}

/// While nobody looks nothing is drawn; opening the panel makes up for it.
void MenuBarView::renderIfVisible()
{
    if (isVisible()) {
        render();
    }
}

void MenuBarView::render()
{
    m_status->setText(overallText(overallState(*m_state)));
    const std::int64_t capacity = m_state->capacityBytes();
    m_planName->setText(m_state->planName());
    m_planLine->setText(planLine(*m_state));
    m_bar->setVisible(capacity > 0);
    if (capacity > 0) {
        m_bar->setFraction(static_cast<double>(m_state->allocatedBytes()) / static_cast<double>(capacity));
        m_bar->setValueText(planLine(*m_state));
    }
    m_engine->setText(engineMemoryLine(*m_state));
    m_list->setFixedHeight(m_list->heightOf(std::min(m_volumes->rowCount(), mostRows)));
    m_list->refresh();
    adjustSize();
    update();
}

void MenuBarView::showAt(const QPoint &global)
{
    render();
    const QScreen *screen = QGuiApplication::screenAt(global);
    const QRect room = (screen == nullptr ? QGuiApplication::primaryScreen() : screen)->availableGeometry();
    const QSize panel = size().shrunkBy(shadowMargins());
    const bool below = global.y() < room.center().y();
    QPoint corner(global.x() - panel.width() / 2,
                  below ? global.y() + gapToIcon : global.y() - gapToIcon - panel.height());
    corner.setX(std::clamp(corner.x(), room.left(), std::max(room.left(), room.right() + 1 - panel.width())));
    corner.setY(std::clamp(corner.y(), room.top(), std::max(room.top(), room.bottom() + 1 - panel.height())));
    move(corner - QPoint(shadowMargins().left(), shadowMargins().top()));
    show();
    raise();
    activateWindow();
}

/// A window of its own kind shares its activation with the program's others, so that only the focus tells.
void MenuBarView::focusMoved(const QWindow *window)
{
    const bool popup = window != nullptr && window->type() == Qt::Popup;
    if (window != windowHandle() && !popup) {
        hide();
    }
}

void MenuBarView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        hide();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void MenuBarView::resizeEvent(QResizeEvent *)
{
    if (!m_shadowed) {
        cutRoundCorners(this, radius);
    }
}

void MenuBarView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF panel = QRectF(rect()).marginsRemoved(shadowMargins());
    if (m_shadowed) {
        paintShadow(painter, panel, radius, sheetShadow);
    } else {
        painter.fillRect(rect(), Theme::dLine); // where the mask's steps lie outside the smooth corner
    }
    paintSurface(painter, panel, radius, Theme::dBg, Theme::dLine);
    const QRectF dot(panel.left() + 1 + padding, m_status->y() + lineHeight(Type::BodyMedium) / 2.0 - 4, 8, 8);
    const bool well = overallState(*m_state) == Overall::Protected;
    paintStateMark(painter, mirrored(*this, dot).center(), well ? Theme::accent : Theme::warnBright);
}

QMargins MenuBarView::shadowMargins() const
{
    return m_shadowed ? sheetShadow.margins() : QMargins();
}

} // namespace quillfen
