// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "tokenscard.h"

#include "dialogs/dialogs.h"
#include "state/start.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/lists/cellrow.h"
#include "ui/lists/longlist.h"
#include "ui/parts/card.h"
#include "ui/parts/sectiontitle.h"
#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QSysInfo>

#include <algorithm>
#include <functional>
#include <utility>

namespace quillfen {

namespace {

constexpr int compact = 28;
constexpr int captionHeight = 32;
constexpr int rowHeight = 44;
constexpr int mostRows = 10; ///< before the list scrolls

/// Label, created, expires, and the room of the button.
std::shared_ptr<const std::vector<Column>> tokenColumns()
{
    return std::make_shared<const std::vector<Column>>(
        std::vector<Column>{{480, 120, 1}, {132, 90, 0}, {132, 90, 0}, {84, 84, 0}});
}

class TokenRow final : public CellRow {
    Q_DECLARE_TR_FUNCTIONS(TokenRow)

public:
    explicit TokenRow(const std::shared_ptr<const std::vector<Column>> &columns)
        : CellRow(columns), revoke(new Button(tr("Revoke"), DangerButtonStyle{})),
          m_label(new AgentLabel(QString(), Type::BodyMedium, Theme::heading)),
          m_created(new AgentLabel(QString(), Type::Body, Theme::text)),
          m_expires(new AgentLabel(QString(), Type::Body, Theme::text))
    {
        revoke->setControlHeight(compact);
        for (AgentLabel *const cell : {m_label, m_created, m_expires}) {
            addCell(cell);
        }
        addButton(revoke);
    }

    void setToken(const TokenTexts &texts)
    {
        token = texts;
        m_label->setText(texts.shown);
        m_created->setText(texts.created);
        m_expires->setText(texts.expires);
        setRowName(texts.shown, tr("Created %1, Expires %2").arg(texts.created, texts.expires));
    }

    TokenTexts token;
    Button *const revoke;

private:
    AgentLabel *m_label;
    AgentLabel *m_created;
    AgentLabel *m_expires;
};

} // namespace

class TokensCard::Rows final : public RowSource {
public:
    Rows(std::shared_ptr<const std::vector<Column>> columns, std::function<void(const TokenTexts &)> revoke)
        : m_columns(std::move(columns)), m_revoke(std::move(revoke)), m_computer(QSysInfo::machineHostName())
    {}

    Records tokens;

    [[nodiscard]] int rowCount() const override { return static_cast<int>(tokens.size()); }
    [[nodiscard]] QString rowKey(int row) const override { return str(tokens[row], "token_id"); }
    [[nodiscard]] QWidget *makeRow() override
    {
        auto *const made = new TokenRow(m_columns);
        QObject::connect(made->revoke, &QAbstractButton::clicked, made, [this, made] { m_revoke(made->token); });
        return made;
    }
    void fillRow(QWidget *widget, int row) override
    {
        static_cast<TokenRow *>(widget)->setToken(tokenTexts(tokens[row], m_computer));
    }

private:
    std::shared_ptr<const std::vector<Column>> m_columns;
    std::function<void(const TokenTexts &)> m_revoke;
    QString m_computer;
};

TokensCard::TokensCard(std::shared_ptr<AccountModel> model, QWidget *parent)
    : QWidget(parent), m_model(std::move(model)), m_columns(tokenColumns()),
      m_rows(std::make_unique<Rows>(m_columns, [this](const TokenTexts &token) { revokeSoon(token); })),
      m_list(new LongList(*m_rows, rowHeight, tr("API tokens"))), m_captions(captions()),
      m_observer(
          {&m_model->tokens}, [this] { render(); }, m_model->state().timing().frame)
{
    auto *const enrol = new Button(tr("Enrol another computer"), SecondaryButtonStyle{compact});
    auto *const create = new Button(tr("Create token"), SecondaryButtonStyle{compact});
    connect(enrol, &QAbstractButton::clicked, this, [this] { start(m_model->enrolComputer()); });
    // Questions are asked after the press: assistive technology that presses a button waits until that has returned.
    connect(create, &QAbstractButton::clicked, this, &TokensCard::askForLabel, Qt::QueuedConnection);

    auto *const card = new Card;
    card->band()->addLayout(row({new SectionTitle(tr("API tokens & command line")), Stretch{}, enrol, create}), 1);
    card->addRow(m_captions);
    card->addRow(m_list);
    setLayout(column({card}));
    render();
}

// The list asks its rows until it is gone.
TokensCard::~TokensCard()
{
    delete m_list;
}

QWidget *TokensCard::captions() const
{
    auto *const line = new CellRow(m_columns);
    for (const QString &caption : {tr("Label"), tr("Created"), tr("Expires")}) {
        line->addCell(new Label(caption, Type::CaptionMedium, Theme::text));
    }
    line->setFixedHeight(scaled(captionHeight));
    return line;
}

void TokensCard::askForLabel()
{
    const std::shared_ptr<AccountModel> model = m_model;
    const std::optional<QString> label = askText(this, tr("New token"), tr("A label, so you recognise it later."),
                                                 QString(), tr("Create"), tr("backup script on nas"));
    if (label) {
        start(model->createToken(*label));
    }
}

void TokensCard::revokeSoon(const TokenTexts &token)
{
    QMetaObject::invokeMethod(
        this, [this, token] { askToRevoke(token.id, token.label); }, Qt::QueuedConnection);
}

void TokensCard::askToRevoke(const QString &id, const QString &label)
{
    const std::shared_ptr<AccountModel> model = m_model;
    // The row may show another token by the time of the answer.
    const QString revoked = id;
    const bool agreed = confirm(this, tr("Revoke %1?").arg(label), tr("Whatever uses this token stops working now."),
                                tr("Revoke"), Destructive::Yes);
    if (agreed) {
        start(model->revokeToken(revoked));
    }
}

void TokensCard::render()
{
    m_rows->tokens = m_model->tokens();
    const int count = m_rows->rowCount();
    m_captions->setVisible(count > 0);
    m_list->setVisible(count > 0);
    m_list->setFixedHeight(m_list->heightOf(std::min(count, mostRows)));
    m_list->refresh();
}

} // namespace quillfen
