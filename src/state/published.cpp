// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/published.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>

namespace quillfen {

using std::chrono::steady_clock;

PublishedBase::~PublishedBase()
{
    for (Observer *const observer : m_observers) {
        observer->forget(this);
    }
}

void PublishedBase::willChange()
{
    Q_ASSERT_X(!qApp || QThread::currentThread() == qApp->thread(), "Published",
               "the state belongs to the main thread");
    ++m_version;
    // Announcing only starts timers. No view's code runs in here, so the list cannot change under this walk.
    for (Observer *const observer : m_observers) {
        observer->announced();
    }
}

Observer::Observer(std::initializer_list<const PublishedBase *> fields, std::function<void()> render,
                   std::chrono::milliseconds frame)
    : m_fields(fields), m_render(std::move(render)), m_frame(frame)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { this->render(); });
    for (const PublishedBase *const field : m_fields) {
        field->m_observers.push_back(this);
    }
}

Observer::~Observer()
{
    for (const PublishedBase *const field : m_fields) {
        std::erase(field->m_observers, this);
    }
}

void Observer::announced()
{
    if (m_timer.isActive()) {
        return;
    }
    // Rounded up: a timer that fires a moment early would make two renders of one frame.
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(m_nextFrame - steady_clock::now());
    m_timer.start(std::max(wait, std::chrono::milliseconds(0)));
}

void Observer::forget(const PublishedBase *field)
{
    std::erase(m_fields, field);
}

void Observer::render()
{
    m_nextFrame = steady_clock::now() + m_frame;
    // The render may be the end of the view, and with it of this object: it runs from a copy.
    const std::function<void()> run = m_render;
    run();
}

} // namespace quillfen
