// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/statusarea.h"

#include "shell/platform.h"
#include "ui/icons.h"
#include "ui/theme.h"

#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

namespace quillfen {

namespace {

QIcon statusIcon()
{
    QIcon icon;
    for (const qreal scale : {1.0, 2.0, 3.0}) {
        icon.addPixmap(iconPixmap(Icon::TrayTemplate, 16, Theme::muted, scale));
    }
    icon.setIsMask(true);
    return icon;
}

} // namespace

StatusArea::StatusArea(QObject *parent) : QObject(parent) {}

StatusArea::~StatusArea() = default;

void StatusArea::open()
{
    platform::whenStatusAreaExists(*this, [this] { show(); });
}

bool StatusArea::isShown()
{
    if (m_icon == nullptr && QSystemTrayIcon::isSystemTrayAvailable()) {
        show();
    }
    return m_icon != nullptr;
}

void StatusArea::show()
{
    if (m_icon != nullptr) {
        return;
    }
    m_menu = std::make_unique<QMenu>();
    m_menu->addAction(tr("Open Quillfen"), this, &StatusArea::openRequested);
    m_menu->addAction(tr("About Quillfen"), this, &StatusArea::aboutRequested);
    m_menu->addSeparator();
    m_menu->addAction(tr("Quit"), this, &StatusArea::quitRequested);

    m_icon = std::make_unique<QSystemTrayIcon>(statusIcon());
    m_icon->setToolTip(QStringLiteral("Quillfen"));
    m_icon->setContextMenu(m_menu.get());
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger) {
            Q_EMIT openRequested();
        }
    });
    m_icon->show();
}

} // namespace quillfen
