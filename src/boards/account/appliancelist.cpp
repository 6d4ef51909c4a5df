// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "appliancelist.h"

#include "accountrows.h"

#include "ui/accessible.h"
#include "ui/layout.h"
#include "ui/parts/statemark.h"
#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>

#include <algorithm>

namespace quillfen {

namespace {

constexpr int rowHeight = 28;
constexpr int mostRows = 8;      ///< before the list scrolls
constexpr int statusWidth = 184; ///< "Exited (0) 40 seconds ago"
constexpr QMargins sides{16, 0, 16, 0};

class ApplianceRow final : public QWidget {
public:
    ApplianceRow()
        : m_container(new AgentLabel(QString(), Type::Mono, Theme::heading)),
          m_status(new StateText(QString(), Theme::muted))
    {
        setRole(this, QAccessible::ListItem);
        m_container->setElideMode(Qt::ElideMiddle);
        m_status->setSurface(StateSurface::Card);
        m_status->setFixedWidth(scaled(statusWidth));
        setLayout(row({Item{m_container, 1}, m_status}, 12, sides));
    }

    void setAppliance(const QString &container, const QString &status)
    {
        setAccessibleName(madeVisible(QStringLiteral("%1, %2").arg(container, status)));
        m_container->setText(container);
        m_status->setState(status, isUp(status) ? Theme::ok : Theme::muted);
    }

protected:
    /// Nothing stands between these rows, which are as close as those of the values beside them.
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(rect(), Theme::panel2); }

private:
    AgentLabel *m_container;
    StateText *m_status;
};

} // namespace

class ApplianceList::Rows final : public RowSource {
public:
    Records appliances;

    [[nodiscard]] int rowCount() const override { return static_cast<int>(appliances.size()); }
    [[nodiscard]] QString rowKey(int row) const override { return str(appliances[row], "container"); }
    [[nodiscard]] QWidget *makeRow() override { return new ApplianceRow; }
    void fillRow(QWidget *widget, int row) override
    {
        const Record &appliance = appliances[row];
        static_cast<ApplianceRow *>(widget)->setAppliance(str(appliance, "container"), str(appliance, "status"));
    }
};

ApplianceList::ApplianceList(QWidget *parent)
    : QWidget(parent), m_rows(std::make_unique<Rows>()), m_list(new LongList(*m_rows, rowHeight, tr("Appliances")))
{
    setLayout(column({m_list, Stretch{}}));
    m_list->setFixedHeight(0);
}

// The list asks its rows until it is gone.
ApplianceList::~ApplianceList()
{
    delete m_list;
}

void ApplianceList::setAppliances(const Records &appliances)
{
    m_rows->appliances = appliances;
    const int count = m_rows->rowCount();
    m_list->setFixedHeight(m_list->heightOf(std::min(count, mostRows)));
    // There are no buttons to stop at: what is out of view is reached through the list itself.
    m_list->setFocusPolicy(count > mostRows ? Qt::TabFocus : Qt::NoFocus);
    m_list->refresh();
}

} // namespace quillfen
