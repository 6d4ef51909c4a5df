// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/aboutpanel.h"

#include "shell/process/product.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/parts/brand.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

namespace quillfen {

namespace {

constexpr int markSize = 64;
constexpr int panelWidth = 360;
constexpr int padding = 28;

AgentLabel *centred(const QString &text, Type type, const QColor &colour)
{
    auto *label = new AgentLabel(text, type, colour);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

AboutPanel::AboutPanel(const QString &applicationVersion, const QString &version, QWidget *parent)
    : PanelWindow(tr("About Quillfen"), parent)
{
    setFixedWidth(panelWidth);

    auto *credits = new Label(product::webSite(), Type::Caption, Theme::text);
    credits->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *close = new Button(tr("Close"), SecondaryButtonStyle{});
    close->setDefault(true);
    connect(close, &QAbstractButton::clicked, this, &QDialog::accept);

    setLayout(column({Item{new BrandMark(markSize), 0, Qt::AlignHCenter}, Space{16},
                      centred(QStringLiteral("Quillfen"), Type::Title, Theme::heading), Space{4},
                      centred(tr("Version %1").arg(applicationVersion), Type::Body, Theme::heading),
                      centred(version, Type::Body, Theme::text), Space{12}, Item{credits, 0, Qt::AlignHCenter},
                      Space{20}, Item{close, 0, Qt::AlignHCenter}},
                     0, QMargins(padding, padding, padding, padding)));
}

} // namespace quillfen
