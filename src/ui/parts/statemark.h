// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QPointF>
#include <QWidget>

class QPainter;

namespace quillfen {

class AgentLabel;

/// Paints the mark that stands before a state's text: a filled 8-px dot, or a ring where `colour` is `Theme::muted`, so
/// that colour is never the only sign.
void paintStateMark(QPainter &painter, const QPointF &centre, const QColor &colour);

/// What a state lies on; some colours are readable as text on some surfaces only.
enum class StateSurface { Window, Card, Selection };

/// The colour of the text beside a mark of `colour`.
[[nodiscard]] QColor stateTextColour(const QColor &colour, StateSurface surface);

/// A state mark and its text on one line. The text elides; the mark is decoration.
class StateText final : public QWidget {
    Q_OBJECT

public:
    StateText(const QString &text, const QColor &colour, QWidget *parent = nullptr);

    void setState(const QString &text, const QColor &colour);
    void setSurface(StateSurface surface);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    AgentLabel *m_label;
    QColor m_colour;
    StateSurface m_surface = StateSurface::Window;
};

} // namespace quillfen
