// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace quillfen {

void copyText(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

void copySecret(const QString &secret)
{
    QGuiApplication::clipboard()->setMimeData(secretForClipboard(secret).release());
}

std::unique_ptr<QMimeData> secretForClipboard(const QString &secret)
{
    auto data = std::make_unique<QMimeData>();
    data->setText(secret);
    // The marks that clipboard managers look for: KDE's and GNOME's on Linux, nspasteboard.org's on macOS.
    data->setData(QStringLiteral("x-kde-passwordManagerHint"), QByteArrayLiteral("secret"));
    data->setData(QStringLiteral("application/x-nspasteboard-concealed-type"), QByteArrayLiteral("1"));
    return data;
}

} // namespace quillfen
