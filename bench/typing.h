// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QThread>
#include <QWidget>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace quillfen::bench {

/// Notes when a widget was last painted.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget *widget) { widget->installEventFilter(this); }

    /// Runs the main loop until the widget has been painted since `begin`; how long after it that was.
    double secondsFrom(std::chrono::steady_clock::time_point begin)
    {
        m_painted = false;
        while (!m_painted) {
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        }
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_painted = m_painted || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool m_painted = false;
};

/// The times of one benchmark. The median is the figure to read: on a busy machine single samples hold other programs'
/// turns.
class Samples {
public:
    explicit Samples(benchmark::State &run) : m_run(run) {}
    ~Samples()
    {
        std::ranges::sort(m_seconds);
        if (!m_seconds.empty()) {
            m_run.counters["median_ms"] = m_seconds[m_seconds.size() / 2] * 1e3;
            m_run.counters["p95_ms"] = m_seconds[m_seconds.size() * 95 / 100] * 1e3;
        }
    }
    Samples(const Samples &) = delete;
    Samples &operator=(const Samples &) = delete;

    void add(double seconds)
    {
        m_seconds.push_back(seconds);
        m_run.SetIterationTime(seconds);
    }

private:
    benchmark::State &m_run;
    std::vector<double> m_seconds;
};

/// Between two keys of a fast typist more than a frame goes by; without the pause every second key would be measured
/// with the rest of its predecessor's frame.
inline void rest()
{
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(20);
    while (std::chrono::steady_clock::now() < until) {
        QCoreApplication::processEvents();
        QThread::usleep(500);
    }
}

inline void type(QWidget *field, QChar letter)
{
    const int key = letter == u'\b' ? static_cast<int>(Qt::Key_Backspace) : letter.toUpper().unicode();
    QCoreApplication::postEvent(field, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, QString(letter)));
}

inline const QString &typed()
{
    // A number and its taking back: from all volumes to a third of them, to one, and all the way back. Every key
    // changes what is shown; one that does not would leave nothing to paint.
    static const QString keys = QStringLiteral("1234\b\b\b\b");
    return keys;
}

} // namespace quillfen::bench
