// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPointer>
#include <QWidget>

#include <vector>

class QBoxLayout;

namespace quillfen {

class Fade;
class Scrim;
class ScrollArea;

/// How far a form may reach over its column at both sides: for a field whose text stands in line with the others' edge.
inline constexpr int sheetOverhang = 8;

/// A form over its window: a scrim over everything and a panel 504 wide, 52 from the top (24 in low windows). The form
/// scrolls when the window is too low for it, the foot with the buttons stays. Focus starts in the form's first field,
/// keeps inside, and goes back to where it was. The window owns it.
class Sheet final : public QWidget {
    Q_OBJECT

public:
    /// Takes over `content`, whose accessible name becomes the sheet's, and whose layout keeps `sheetOverhang` at its
    /// sides.
    Sheet(QWidget *window, QWidget *content);
    ~Sheet() override;

    /// The row of buttons at the right, left to right; takes no room while empty.
    [[nodiscard]] QBoxLayout *foot() const noexcept { return m_footLayout; }
    /// Gives the focus back, fades out, then deletes itself.
    void leave();

Q_SIGNALS:
    /// Esc has been pressed. The sheet stays until its owner lets it leave.
    void dismissed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();
    void focusFirst();
    void keepFocus(QWidget *now);
    void takeOver();
    void giveBack();
    void giveFocusBack();
    [[nodiscard]] QRect panelRect() const;
    [[nodiscard]] bool takesFocus(const QWidget *widget) const;
    [[nodiscard]] QWidget *nextFocus(QWidget *from, bool forward) const;

    QPointer<Scrim> m_scrim;
    QPointer<QWidget> m_before;               ///< had the focus when the sheet came
    QPointer<QWidget> m_inside;               ///< had it last within the sheet
    std::vector<QPointer<QWidget>> m_beneath; ///< what assistive technology does not see meanwhile
    QWidget *m_form;                          ///< the content and its margins
    ScrollArea *m_scroll;
    QWidget *m_footBand;
    QBoxLayout *m_footLayout;
    Fade *m_fade;
    bool m_leaving = false;
};

} // namespace quillfen
