// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/process/oneprocess.h"

#include <QByteArray>

#include <map>
#include <string>

namespace quillfen {

/// The door of a session without a bus: a lock file says who is first (flock(2)), a Unix-domain socket beside it takes
/// the wishes of the others (unix(7)). Both lie in a folder that only this user can enter.
class SocketDoor final : public Door {
    Q_OBJECT

public:
    explicit SocketDoor(std::string folder, QObject *parent = nullptr);
    ~SocketDoor() override;

    /// $XDG_RUNTIME_DIR/quillfen, or a folder of this user's own below $TMPDIR or /tmp.
    [[nodiscard]] static std::string defaultFolder();
    /// A folder that cannot be made, or that somebody else could enter, makes every process the first.
    [[nodiscard]] Claim claim(const Wish &wish) override;

private:
    [[nodiscard]] bool makeFolder() const;
    [[nodiscard]] bool lock();
    void listen();
    void accept();
    [[nodiscard]] bool receive(int visitor);
    [[nodiscard]] Claim handOver(const Wish &wish) const;

    std::string m_folder;
    int m_lock = -1;
    int m_listening = -1;
    std::map<int, QByteArray> m_lines; ///< what has come in, of each visitor
};

} // namespace quillfen
