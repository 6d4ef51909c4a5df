// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/drawing.h"

#include "ui/paint/svgpath.h"

#include <QColor>
#include <QPainter>

#include <array>
#include <charconv>
#include <optional>
#include <vector>

namespace quillfen {

namespace {

/// One tag, `<rect x="2" …/>`: between the angle brackets.
class Tag final {
public:
    explicit Tag(std::string_view text) : m_text(text) {}

    [[nodiscard]] bool isEnd() const { return m_text.starts_with('/'); }
    [[nodiscard]] bool hasContent() const { return !m_text.ends_with('/'); }
    [[nodiscard]] std::string_view name() const { return m_text.substr(0, m_text.find_first_of(" /")); }

    [[nodiscard]] std::optional<std::string_view> text(std::string_view attribute) const
    {
        for (std::size_t at = m_text.find(attribute); at != std::string_view::npos;
             at = m_text.find(attribute, at + 1)) {
            const std::string_view rest = m_text.substr(at + attribute.size());
            if (m_text[at - 1] == ' ' && rest.starts_with("=\"")) {
                return rest.substr(2, rest.find('"', 2) - 2);
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] qreal number(std::string_view attribute) const
    {
        const std::string_view digits = text(attribute).value_or("0");
        qreal value = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), value);
        return value;
    }

private:
    std::string_view m_text;
};

template <std::size_t Count>
std::array<qreal, Count> numbers(std::string_view text)
{
    std::array<qreal, Count> all{};
    const char *at = text.data();
    const char *const end = at + text.size();
    for (qreal &each : all) {
        while (at != end && *at != '-' && *at != '.' && (*at < '0' || *at > '9')) {
            ++at;
        }
        at = std::from_chars(at, end, each).ptr;
    }
    return all;
}

/// How a shape is painted; groups hand it on to their contents. Begins as SVG has it.
struct Look {
    QBrush fill = QColor(Qt::black);
    QPen stroke{Qt::NoBrush, 1.0, Qt::NoPen, Qt::FlatCap, Qt::SvgMiterJoin};
    Qt::FillRule rule = Qt::WindingFill;
    QTransform place;
};

std::optional<QColor> colourOf(std::string_view text)
{
    const QColor colour(QLatin1StringView(text.data(), static_cast<qsizetype>(text.size())));
    return text == "none" ? std::nullopt : std::optional(colour);
}

/// "translate(16 16) scale(3.5)"
QTransform placeOf(std::string_view text)
{
    const auto [x, y, factor] = numbers<3>(text);
    return QTransform::fromTranslate(x, y).scale(factor, factor);
}

Look lookOf(const Tag &tag, Look look)
{
    if (const auto fill = tag.text("fill")) {
        const std::optional<QColor> colour = colourOf(*fill);
        look.fill = colour ? QBrush(*colour) : QBrush(Qt::NoBrush);
    }
    if (const auto stroke = tag.text("stroke")) {
        const std::optional<QColor> colour = colourOf(*stroke);
        look.stroke.setStyle(colour ? Qt::SolidLine : Qt::NoPen);
        look.stroke.setColor(colour.value_or(Qt::black));
    }
    if (tag.text("stroke-width")) {
        look.stroke.setWidthF(tag.number("stroke-width"));
    }
    if (const auto cap = tag.text("stroke-linecap")) {
        look.stroke.setCapStyle(*cap == "round" ? Qt::RoundCap : Qt::FlatCap);
    }
    if (const auto join = tag.text("stroke-linejoin")) {
        look.stroke.setJoinStyle(*join == "round" ? Qt::RoundJoin : Qt::SvgMiterJoin);
    }
    if (const auto rule = tag.text("fill-rule")) {
        look.rule = *rule == "evenodd" ? Qt::OddEvenFill : Qt::WindingFill;
    }
    if (const auto place = tag.text("transform")) {
        look.place = placeOf(*place) * look.place;
    }
    return look;
}

QPainterPath shapeOf(const Tag &tag)
{
    QPainterPath shape;
    if (tag.name() == "path") {
        shape = svgPath(tag.text("d").value_or(""));
    } else if (tag.name() == "rect") {
        const QRectF rect(tag.number("x"), tag.number("y"), tag.number("width"), tag.number("height"));
        shape.addRoundedRect(rect, tag.number("rx"), tag.number("rx"));
    } else if (tag.name() == "circle") {
        shape.addEllipse(QPointF(tag.number("cx"), tag.number("cy")), tag.number("r"), tag.number("r"));
    }
    return shape;
}

QTransform placeOfBox(std::string_view box, const QSizeF &size)
{
    const auto [x, y, width, height] = numbers<4>(box);
    return QTransform::fromTranslate(-x, -y) * QTransform::fromScale(size.width() / width, size.height() / height);
}

void paintShape(QPainter &painter, const Tag &tag, const Look &look)
{
    QPainterPath shape = shapeOf(tag);
    shape.setFillRule(look.rule);
    painter.setTransform(look.place);
    painter.setBrush(look.fill);
    painter.setPen(look.stroke);
    painter.drawPath(shape);
}

} // namespace

void paintDrawing(QPainter &painter, std::string_view source, const QSizeF &size)
{
    std::vector<Look> looks(1);
    for (std::size_t at = source.find('<'); at != std::string_view::npos; at = source.find('<', at + 1)) {
        const Tag tag(source.substr(at + 1, source.find('>', at) - at - 1));
        if (tag.isEnd()) {
            looks.pop_back();
            continue;
        }
        Look look = lookOf(tag, looks.back());
        if (const auto box = tag.text("viewBox")) {
            look.place = placeOfBox(*box, size);
        }
        paintShape(painter, tag, look);
        if (tag.hasContent()) {
            looks.push_back(look);
        }
    }
    painter.resetTransform();
}

} // namespace quillfen
