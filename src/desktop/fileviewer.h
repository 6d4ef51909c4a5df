// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QUrl>

#include <functional>

namespace quillfen {

/// Shows the contents of a folder in the desktop's file viewer. Returns at once; main thread.
void showFolder(const QString &path);

/// Opens the folder of a file in the desktop's file viewer, with the file selected. Returns at once; main thread.
void revealFile(const QString &path);

/// Opens a link in the browser. Only http and https links are opened: the address comes from outside. False for others.
bool openLink(const QUrl &url);

/// What the three functions above do instead for as long as it lives. Tests only.
class FileViewerOverride final {
public:
    struct Viewer {
        std::function<void(QString)> showFolder;
        std::function<void(QString)> revealFile;
        std::function<void(QUrl)> openLink;
    };

    explicit FileViewerOverride(Viewer viewer);
    ~FileViewerOverride();
    FileViewerOverride(const FileViewerOverride &) = delete;
    FileViewerOverride &operator=(const FileViewerOverride &) = delete;
};

} // namespace quillfen
