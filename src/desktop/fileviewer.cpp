// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/fileviewer.h"

#include "desktop/platform.h"

#include <QDesktopServices>

#include <optional>
#include <utility>

namespace quillfen {

namespace {

std::optional<FileViewerOverride::Viewer> & override()
{
    static std::optional<FileViewerOverride::Viewer> viewer;
    return viewer;
}

} // namespace

FileViewerOverride::FileViewerOverride(Viewer viewer)
{
    override() = std::move(viewer);
}

FileViewerOverride::~FileViewerOverride()
{
    override().reset();
}

void showFolder(const QString &path)
{
    if (override()) {
        override()->showFolder(path);
    } else {
        platform::showFolder(path);
    }
}

void revealFile(const QString &path)
{
    if (override()) {
        override()->revealFile(path);
    } else {
        platform::revealFile(path);
    }
}

bool openLink(const QUrl &url)
{
    const bool isWeb =
        url.isValid() && (url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http"));
    if (!isWeb) {
        return false;
    }
    if (override()) {
        override()->openLink(url);
        return true;
    }
    return QDesktopServices::openUrl(url);
}

} // namespace quillfen
