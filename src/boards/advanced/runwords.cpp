// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "runwords.h"

#include <QCoreApplication>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

QString words(const char *text)
{
    return QCoreApplication::translate("AdvancedView", text);
}

QString sizeWords(const OutputText &text)
{
    const QString lines =
        text.lines() == 1 ? words("1 line") : words("%1 lines").arg(QLocale().toString(qulonglong{text.lines()}));
    const auto bytes = static_cast<qint64>(text.bytes().size());
    const bool isSmall = bytes < 10'000;
    return isSmall ? lines : lines + u" · "_s + QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace

QString durationWords(std::chrono::milliseconds duration)
{
    const auto milliseconds = static_cast<qlonglong>(duration.count());
    if (milliseconds < 1'000) {
        return words("%1 ms").arg(milliseconds);
    }
    if (milliseconds < 60'000) {
        return words("%1 s").arg(static_cast<double>(milliseconds) / 1'000.0, 0, 'f', 1);
    }
    return words("%1 min %2 s").arg(milliseconds / 60'000).arg(milliseconds / 1'000 % 60);
}

QString outcomeLine(const RunOutcome &outcome)
{
    if (outcome.method.isEmpty() && outcome.text->bytes().empty()) {
        return {};
    }
    const QString amount = outcome.failed ? words("failed") : sizeWords(*outcome.text);
    return outcome.method + u" · "_s + durationWords(outcome.took) + u" · "_s + amount;
}

QString statusLine(const ConsoleSession &session)
{
    const QSet<QString> &running = session.running();
    if (running.isEmpty()) {
        return outcomeLine(session.outcome());
    }
    const QString first = running.contains(session.picked()) ? session.picked() : *running.constBegin();
    return words("Running %1…").arg(first);
}

} // namespace quillfen
