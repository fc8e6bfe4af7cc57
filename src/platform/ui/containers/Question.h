#pragma once

#include <QObject>
#include <QQmlEngine>
#include <functional>
#include <memory>

namespace orvel {

// Is told which button of an alert or an action sheet was clicked.
template<class Asked>
class QuestionDelegate
{
public:
    virtual ~QuestionDelegate() = default;
    virtual void clickedButtonAtIndex(Asked &question, int buttonIndex) = 0;
};

// The common part of an alert and an action sheet. It stands in front of everything else until one of its
// buttons is clicked, and reports to its delegate which one. The delegate is not kept alive. Main thread.
class Question : public QObject, public std::enable_shared_from_this<Question>
{
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QString title MEMBER m_title CONSTANT)
public:
    const QString &title() const { return m_title; }

    // Takes the question away, then reports to the delegate. A second click has no effect.
    Q_INVOKABLE void click(int buttonIndex);

Q_SIGNALS:
    // Emitted once, before the delegate is called: the question is to go.
    void clicked();

protected:
    // `self` is the alert or sheet that the delegate is given.
    template<class Self, class Delegate>
    Question(Self &self, const QString &title, std::weak_ptr<Delegate> delegate)
        : m_title(title), m_tellDelegate([&self, delegate = std::move(delegate)](int buttonIndex) {
            if (const std::shared_ptr<Delegate> told = delegate.lock())
                told->clickedButtonAtIndex(self, buttonIndex);
        })
    {
        QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
    }

private:
    QString m_title;
    std::function<void(int buttonIndex)> m_tellDelegate; // empty once it was clicked
};

} // namespace orvel
