// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/SupportWindowPresenter.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

void SupportWindowPresenter::showWindow(std::function<void()> completion)
{
    if (m_window) {
        m_window->raise();
        m_window->requestActivate();
        return;
    }
    if (!m_engine)
        return;
    QQmlComponent component(m_engine, QUrl(QStringLiteral("qrc:/Tonbrook/Ui/SupportWindow.qml")));
    auto *window = qobject_cast<QQuickWindow *>(component.createWithInitialProperties(
        {{QStringLiteral("tipAddress"), QString::fromLatin1(tipAddress)},
         {QStringLiteral("channelAddress"), QString::fromLatin1(channelAddress)}}));
    if (!window) {
        qWarning("support window: %s", qPrintable(component.errorString()));
        return;
    }
    m_window = window;
    m_completion = std::move(completion);
    // Closing a window hides it: that is when it is done with.
    QObject::connect(window, &QQuickWindow::visibleChanged, window, [this, window](bool visible) {
        if (visible)
            return;
        if (auto done = std::exchange(m_completion, {}))
            done();
        window->deleteLater();
    });
    window->show();
    window->raise();
    window->requestActivate();
}
