// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/volumes/newvolumemodel.h"

#include <QWidget>

#include <array>
#include <memory>

class QBoxLayout;

namespace quillfen {

class Button;
class InlineError;
class Label;
class ShareTile;
class Sheet;
class SizeField;
class Slider;
class TextField;
class Toggle;

/// The form that creates a volume; `present` puts it on a sheet over a window.
class NewVolumeSheet final : public QWidget {
    Q_OBJECT

public:
    explicit NewVolumeSheet(std::shared_ptr<NewVolumeModel> model, QWidget *parent = nullptr);

    /// Shows the form over `window`. Esc, "Cancel" and a created volume clear `showNewVolume`; whoever presents the
    /// sheet lets it leave then.
    static Sheet *present(QWidget *window, std::shared_ptr<AppState> state);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] QBoxLayout *sizeHead();
    [[nodiscard]] QWidget *shareBlock();
    void addButtons(QBoxLayout *foot);
    [[nodiscard]] NewVolumeForm edited() const;
    void setSize(int gigabytes);
    void submit();
    void change();
    void render();
    void renderSize();

    std::shared_ptr<NewVolumeModel> m_model;
    TextField *m_name = nullptr;
    SizeField *m_size = nullptr;
    Slider *m_slider = nullptr;
    Label *m_room = nullptr;
    std::array<ShareTile *, 3> m_shares{};
    Toggle *m_encrypt = nullptr;
    Toggle *m_mount = nullptr;
    QWidget *m_errorRow = nullptr;
    InlineError *m_error = nullptr;
    Button *m_cancel = nullptr;
    Button *m_create = nullptr;
    bool m_sizeChosen = false; ///< by the user; until then the size follows what the plan suggests
    Observer m_observer;
};

} // namespace quillfen
