// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/platform.h"

#include <QProcess>
#include <QStringList>

#import <AppKit/AppKit.h>

namespace quillfen::platform {

void showFolder(const QString &path)
{
    [[NSWorkspace sharedWorkspace] openURL:[NSURL fileURLWithPath:path.toNSString()]];
}

void revealFile(const QString &path)
{
    [[NSWorkspace sharedWorkspace] activateFileViewerSelectingURLs:@[ [NSURL fileURLWithPath:path.toNSString()] ]];
}

std::optional<QString> interfaceAddress(const QString &name)
{
    QProcess tool;
    tool.start(QStringLiteral("/usr/sbin/ipconfig"), {QStringLiteral("getifaddr"), name});
    // The tool exits at once; the bound is for a system in trouble.
    if (!tool.waitForStarted(500) || !tool.waitForFinished(500)) {
        return std::nullopt;
    }
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

QStringList lanInterfaces()
{
    return {QStringLiteral("en0"), QStringLiteral("en1")};
}

} // namespace quillfen::platform
