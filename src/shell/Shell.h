#pragma once

#include "platform/ui/containers/Window.h"

#include <QQmlEngine>
#include <QQuickView>

namespace orvel {

// Draws a Window: the engine with the layouts, the font, and the window on the screen. Main thread.
class Shell : public QObject
{
    Q_OBJECT
public:
    explicit Shell(Window &window);
    ~Shell() override;

    // Returns false when the layout could not be made; the log has the reason.
    bool show();
    QQuickWindow &quickWindow() { return m_view; }

private:
    void letGoOfPresses();
    void applicationStateChanged(Qt::ApplicationState state);

    QQmlEngine m_engine;
    QQuickView m_view;
    bool m_inBackground = false;
};

} // namespace orvel
