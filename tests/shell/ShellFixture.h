#pragma once

#include "platform/ui/containers/Window.h"
#include "shell/Shell.h"

#include <QQuickItem>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>

namespace orvel::test {

// A window on the offscreen screen, and somebody's mouse and keyboard.
struct ShellFixture : testing::Test
{
    Window screens;
    Shell shell{screens};

    QQuickWindow &window() { return shell.quickWindow(); }
    void show()
    {
        EXPECT_TRUE(shell.show());
        window().resize(375, 667);
        screens.makeKeyAndVisible();
        window().requestActivate();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&window(), key, modifiers);
    }
    static void look(QQuickItem *item, const std::function<void(QQuickItem *)> &see)
    {
        if (!item->isVisible())
            return;
        see(item);
        for (QQuickItem *child : item->childItems())
            look(child, see);
    }
    // What is shown with a text that starts so, the last of several; there must be one. `kind`: a class it is
    // of.
    QQuickItem *itemWith(const QString &text, const char *kind = "QQuickAbstractButton")
    {
        QQuickItem *found = nullptr;
        look(window().contentItem(), [&](QQuickItem *item) {
            if (item->inherits(kind) && item->property("text").toString().startsWith(text))
                found = item;
        });
        if (!found)
            qFatal("Nothing bears %s", qPrintable(text));
        return found;
    }
    QPoint centreOf(const QString &text)
    {
        const QQuickItem *item = itemWith(text);
        return item->mapToScene(item->boundingRect().center()).toPoint();
    }
    void tap(QPoint at) { QTest::mouseClick(&window(), Qt::LeftButton, {}, at); }
    void drag(QPoint from, QPoint to, int milliseconds = 100)
    {
        QTest::mousePress(&window(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= 20; ++step)
            QTest::mouseMove(&window(), from + (to - from) * step / 20, milliseconds / 20);
        QTest::mouseRelease(&window(), Qt::LeftButton, {}, to);
    }
};

} // namespace orvel::test
