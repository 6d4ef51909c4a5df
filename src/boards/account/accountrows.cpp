// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "accountrows.h"

#include "engineoperations.h"

#include "state/format.h"

#include <QCoreApplication>

#include <algorithm>

namespace quillfen {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(Account)
};

constexpr QLatin1StringView appPrefix("desktop:");
constexpr QLatin1StringView commandPrefix("cli:");

/// A computer may be named with its domain on one side and without it on the other.
QStringView hostOf(QStringView name)
{
    const qsizetype dot = name.indexOf(u'.');
    return dot < 0 ? name : name.left(dot);
}

bool namesComputer(QStringView name, const QString &computer)
{
    return !hostOf(name).isEmpty() && hostOf(name).compare(hostOf(computer), Qt::CaseInsensitive) == 0;
}

QString orDash(const QString &value)
{
    return value.isEmpty() ? u"—"_s : value;
}

EngineTexts::Offer offerOf(const EngineTexts &texts, const Activity &activity)
{
    using Offer = EngineTexts::Offer;
    if (activity.find(EngineOperation::stopSafely) != nullptr) {
        return Offer::Stop;
    }
    if (activity.find(EngineOperation::setUp) != nullptr) {
        return Offer::SetUp;
    }
    if (activity.find(EngineOperation::startUp) != nullptr) {
        return Offer::Start;
    }
    return texts.running ? Offer::Stop : texts.exists ? Offer::Start : Offer::SetUp;
}

} // namespace

QString tokenLabel(const QString &label, const QString &computer)
{
    const QStringView text(label);
    if (text.startsWith(appPrefix) && namesComputer(text.mid(appPrefix.size()), computer)) {
        return Words::tr("This Mac (app)");
    }
    if (text.startsWith(commandPrefix) && namesComputer(text.mid(commandPrefix.size()), computer)) {
        return Words::tr("This Mac (quill command)");
    }
    return label;
}

TokenTexts tokenTexts(const Record &token, const QString &computer)
{
    TokenTexts texts;
    texts.id = str(token, "token_id");
    texts.label = str(token, "label");
    texts.shown = tokenLabel(texts.label, computer);
    texts.created = shortDate(str(token, "created_at"));
    const QString expires = str(token, "expires_at");
    texts.expires = expires.isEmpty() ? Words::tr("Never") : shortDate(expires);
    return texts;
}

EngineTexts engineTexts(const Record &engine, const Activity &activity)
{
    EngineTexts texts;
    const QString status = str(engine, "status");
    const QString limactl = str(engine, "limactl");
    texts.exists = !status.isEmpty();
    texts.running = status == "Running"_L1;
    texts.status = texts.exists ? status : Words::tr("Not set up");
    texts.memory = orDash(str(engine, "memory"));
    texts.disk = orDash(str(engine, "disk"));
    texts.docker = orDash(str(engine, "docker"));
    texts.engine = limactl.isEmpty() ? orDash(limactl) : Words::tr("limactl %1").arg(limactl);
    texts.offer = offerOf(texts, activity);
    return texts;
}

bool isUp(const QString &status)
{
    return status.startsWith("Up"_L1);
}

bool isClosing(const Record &account)
{
    return str(account, "state") == "closing"_L1;
}

double allocatedShare(const AppState &state)
{
    const std::int64_t capacity = state.capacityBytes();
    return capacity <= 0 ? 0.0 : static_cast<double>(state.allocatedBytes()) / static_cast<double>(capacity);
}

} // namespace quillfen
