// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/SupportPresenting.h"

#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>

#include <functional>

// Keeps the one support window: opening it again brings the same window
// forward; closing it runs what the opener asked for, once.
class SupportWindowPresenter final : public SupportPresenting
{
public:
    static constexpr const char *tipAddress = "https://quillmere.tools/tonbrook/tip";
    static constexpr const char *channelAddress = "https://t.me/quillmeretools";

    void setEngine(QQmlEngine *engine) { m_engine = engine; }

    void showSupport() override { showWindow({}); }
    void showWindow(std::function<void()> completion);

    QQuickWindow *window() const { return m_window; }

private:
    QPointer<QQmlEngine> m_engine;
    QPointer<QQuickWindow> m_window;
    std::function<void()> m_completion;
};
