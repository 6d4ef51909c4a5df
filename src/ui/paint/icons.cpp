// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/icons.h"

#include "ui/drawings.h"
#include "ui/paint/drawing.h"

#include <QCoreApplication>
#include <QHash>
#include <QPainter>

#include <array>
#include <cmath>
#include <string_view>

namespace quillfen {
namespace {

/// The source of one drawing; a name without a file does not compile.
consteval std::string_view drawing(std::string_view name)
{
    for (const drawings::Drawing &each : drawings::all) {
        if (each.name == name) {
            return each.source;
        }
    }
    throw "no drawing of that name";
}

/// In the order of `Icon`.
constexpr std::array sources{drawing("drive"),        drawing("drive-clock"),
                             drawing("clock-back"),   drawing("calendar-clock"),
                             drawing("box"),          drawing("person-circle"),
                             drawing("server-rack"),  drawing("terminal"),
                             drawing("check-circle"), drawing("check-circle-fill"),
                             drawing("warning"),      drawing("warning-fill"),
                             drawing("key"),          drawing("key-slash"),
                             drawing("search"),       drawing("radio-on"),
                             drawing("radio-off"),    drawing("plus"),
                             drawing("copy"),         drawing("folder-reveal"),
                             drawing("eye"),          drawing("eye-off"),
                             drawing("chevron-down"), drawing("chevron-right"),
                             drawing("calendar"),     drawing("win-close"),
                             drawing("win-minimise"), drawing("win-maximise"),
                             drawing("win-restore"),  drawing("tray-template")};
static_assert(sources.size() == static_cast<std::size_t>(Icon::TrayTemplate) + 1);

/// In the order of `Artwork`.
constexpr std::array artworks{drawing("wordmark-light"), drawing("wordmark-dark"), drawing("brandmark"),
                              drawing("app-icon")};

/// Icons and artworks share one cache; an artwork has no colour to choose.
struct Key {
    std::string_view source;
    QSize pixels;
    qreal scale;
    QRgb colour = 0;

    bool operator==(const Key &) const = default;
};

std::size_t qHash(const Key &key, std::size_t seed)
{
    // Each source is one constant, so its address tells it apart.
    return qHashMulti(seed, static_cast<const void *>(key.source.data()), key.pixels.width(), key.pixels.height(),
                      key.scale, key.colour);
}

QHash<Key, QPixmap> &cache()
{
    static QHash<Key, QPixmap> pictures;
    return pictures;
}

/// Pictures must not outlive the application they were made for.
void clearCacheAtTheEnd()
{
    static const bool registered = [] {
        qAddPostRoutine([] { cache().clear(); });
        return true;
    }();
    Q_UNUSED(registered)
}

QPixmap drawn(const QByteArray &source, const QSize &pixels, qreal opacity)
{
    QPixmap picture(pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(opacity);
    paintDrawing(painter, {source.constData(), static_cast<std::size_t>(source.size())}, pixels);
    return picture;
}

QPixmap drawn(const Key &key)
{
    QByteArray source(key.source.data(), static_cast<qsizetype>(key.source.size()));
    if (key.colour == 0) {
        return drawn(source, key.pixels, 1.0);
    }
    const QColor colour = QColor::fromRgba(key.colour);
    const QByteArray name = colour.name(QColor::HexRgb).toLatin1();
    source.replace("currentColor", name);
    source.replace("#000000", name); // the tray's template is drawn in black
    return drawn(source, key.pixels, colour.alphaF());
}

QPixmap kept(const Key &key)
{
    clearCacheAtTheEnd();
    QPixmap &slot = cache()[key];
    if (slot.isNull()) {
        slot = drawn(key);
        slot.setDevicePixelRatio(key.scale);
    }
    return slot;
}

/// On whole device pixels: in between them a picture would be resampled into a blur.
void paintOnPixels(QPainter &painter, const QPointF &at, const QPixmap &picture)
{
    const QTransform &device = painter.deviceTransform();
    const QPointF there = device.map(at);
    painter.drawPixmap(device.inverted().map(QPointF(std::round(there.x()), std::round(there.y()))), picture);
}

} // namespace

QPixmap iconPixmap(Icon icon, int size, const QColor &colour, qreal devicePixelRatio)
{
    const QSize pixels = (QSizeF(size, size) * devicePixelRatio).toSize();
    return kept({sources.at(static_cast<std::size_t>(icon)), pixels, devicePixelRatio, colour.rgba()});
}

void paintIcon(QPainter &painter, Icon icon, const QRectF &rect, const QColor &colour)
{
    const qreal side = std::floor(std::min(rect.width(), rect.height()));
    paintOnPixels(painter, rect.center() - QPointF(side, side) / 2.0,
                  iconPixmap(icon, static_cast<int>(side), colour, painter.deviceTransform().m11()));
}

QPixmap artworkPixmap(Artwork artwork, QSize size, qreal devicePixelRatio)
{
    const QSize pixels = (QSizeF(size) * devicePixelRatio).toSize();
    return kept({artworks.at(static_cast<std::size_t>(artwork)), pixels, devicePixelRatio});
}

void paintArtwork(QPainter &painter, Artwork artwork, const QRectF &rect)
{
    paintOnPixels(painter, rect.topLeft(),
                  artworkPixmap(artwork, rect.size().toSize(), painter.deviceTransform().m11()));
}

} // namespace quillfen
