// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProxyStyle>

class QApplication;

namespace quillfen {

/// What Qt's own widgets look like in the house: thin scroll bars, dark tooltips, light popups and menus, and no focus
/// rectangles (see FocusRing). Everything else is painted by its own class.
class HouseStyle final : public QProxyStyle {
    Q_OBJECT

public:
    HouseStyle();

    using QProxyStyle::polish;
    void polish(QWidget *widget) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *returned) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                         const QWidget *widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                                       const QWidget *widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
};

/// Gives the program the style, the palette and the base font of the house. Once, before the first window.
void applyHouseLook(QApplication &application);

} // namespace quillfen
