// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/paint/svgpath.h"

#include <QtMath>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

namespace quillfen {

namespace {

bool isCommand(char character)
{
    return std::string_view("MmLlHhVvCcSsAaZz").find(character) != std::string_view::npos;
}

bool isRelative(char command)
{
    return command >= 'a';
}

/// An arc from one point to another as SVG gives it, without a rotation: two radii, and which of the four ways.
struct Arc {
    QPointF radii;
    bool large = false;
    bool clockwise = false;
};

/// The centre's offset from the middle between both ends, for ends that are `half` away from it.
QPointF centreOffset(const Arc &arc, const QPointF &half)
{
    const QPointF squares(arc.radii.x() * arc.radii.x(), arc.radii.y() * arc.radii.y());
    const qreal spread = squares.x() * half.y() * half.y() + squares.y() * half.x() * half.x();
    const qreal share = std::sqrt(std::max(0.0, squares.x() * squares.y() / spread - 1.0));
    const qreal side = arc.large == arc.clockwise ? -share : share;
    return {side * arc.radii.x() * half.y() / arc.radii.y(), -side * arc.radii.y() * half.x() / arc.radii.x()};
}

/// The ellipse's piece from the angle `start`, where the path stands, in curves of a quarter turn at most. `arcTo`
/// would begin with a line to where it has computed the start itself, which turns a round cap out of its direction.
void addCurves(QPainterPath &path, const QPointF &centre, const QPointF &radii, qreal start, qreal sweep)
{
    const int pieces = static_cast<int>(std::ceil(std::abs(sweep) / M_PI_2 - 1e-9));
    const qreal step = sweep / pieces;
    const qreal reach = 4.0 / 3.0 * std::tan(step / 4);
    for (int piece = 0; piece < pieces; ++piece) {
        const qreal from = start + piece * step;
        const qreal to = from + step;
        const QPointF begin(std::cos(from), std::sin(from));
        const QPointF end(std::cos(to), std::sin(to));
        const auto at = [&](qreal x, qreal y) { return centre + QPointF(radii.x() * x, radii.y() * y); };
        path.cubicTo(at(begin.x() - reach * begin.y(), begin.y() + reach * begin.x()),
                     at(end.x() + reach * end.y(), end.y() - reach * end.x()), at(end.x(), end.y()));
    }
}

void addArc(QPainterPath &path, Arc arc, const QPointF &to)
{
    const QPointF half = (path.currentPosition() - to) / 2.0;
    if (half.isNull() || arc.radii.x() <= 0 || arc.radii.y() <= 0) {
        path.lineTo(to);
        return;
    }
    // Radii too small for the distance grow until they reach.
    const qreal reach = std::hypot(half.x() / arc.radii.x(), half.y() / arc.radii.y());
    arc.radii *= std::max(1.0, reach);

    const QPointF offset = centreOffset(arc, half);
    const QPointF centre = path.currentPosition() - half + offset;
    const auto angle = [&](const QPointF &end) {
        return std::atan2((end.y() - offset.y()) / arc.radii.y(), (end.x() - offset.x()) / arc.radii.x());
    };
    const qreal start = angle(half);
    qreal sweep = angle(-half) - start;
    if (arc.clockwise && sweep < 0) {
        sweep += 2 * M_PI;
    } else if (!arc.clockwise && sweep > 0) {
        sweep -= 2 * M_PI;
    }
    addCurves(path, centre, arc.radii, start, sweep);
}

class PathReader final {
public:
    explicit PathReader(std::string_view data) : m_at(data.data()), m_end(data.data() + data.size()) {}

    QPainterPath read()
    {
        char command = 'M';
        while (m_good && !atEnd()) {
            if (isCommand(*m_at)) {
                command = *m_at++;
            } else if (command == 'M' || command == 'm') {
                command = command == 'M' ? 'L' : 'l'; // more points after the first are lines
            }
            step(command);
        }
        return m_path;
    }

private:
    bool atEnd()
    {
        while (m_at != m_end && (*m_at == ' ' || *m_at == ',' || *m_at == '\n')) {
            ++m_at;
        }
        return m_at == m_end;
    }

    qreal number()
    {
        qreal value = 0;
        if (atEnd()) {
            m_good = false;
            return value;
        }
        const auto [end, error] = std::from_chars(m_at, m_end, value);
        m_good = m_good && error == std::errc();
        m_at = end;
        return value;
    }

    /// Flags may stand together, without anything between them.
    bool flag()
    {
        m_good = m_good && !atEnd() && (*m_at == '0' || *m_at == '1');
        return m_good && *m_at++ == '1';
    }

    QPointF pair()
    {
        const qreal x = number();
        return {x, number()};
    }

    QPointF point(char command) { return pair() + (isRelative(command) ? m_path.currentPosition() : QPointF()); }

    void step(char command)
    {
        const QPointF from = m_path.currentPosition();
        const QPointF base = isRelative(command) ? from : QPointF();
        const QPointF lastControl = std::exchange(m_control, std::nullopt).value_or(from);
        switch (command) {
        case 'M':
        case 'm':
            m_path.moveTo(point(command));
            break;
        case 'L':
        case 'l':
            m_path.lineTo(point(command));
            break;
        case 'H':
        case 'h':
            m_path.lineTo(base.x() + number(), from.y());
            break;
        case 'V':
        case 'v':
            m_path.lineTo(from.x(), base.y() + number());
            break;
        case 'C':
        case 'c':
            curve(point(command), command);
            break;
        case 'S':
        case 's':
            curve(2 * from - lastControl, command);
            break;
        case 'A':
        case 'a':
            arc(command);
            break;
        default:
            m_path.closeSubpath();
            break;
        }
    }

    void curve(const QPointF &first, char command)
    {
        const QPointF second = point(command);
        m_path.cubicTo(first, second, point(command));
        m_control = second;
    }

    void arc(char command)
    {
        Arc shape;
        shape.radii = pair();
        m_good = number() == 0 && m_good; // upright
        shape.large = flag();
        shape.clockwise = flag();
        const QPointF to = point(command);
        if (m_good) {
            addArc(m_path, shape, to);
        }
    }

    const char *m_at;
    const char *m_end;
    bool m_good = true;
    QPainterPath m_path;
    std::optional<QPointF> m_control; ///< of the curve before, which a smooth one mirrors
};

} // namespace

QPainterPath svgPath(std::string_view data)
{
    return PathReader(data).read();
}

} // namespace quillfen
