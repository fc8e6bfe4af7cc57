#include "platform/ui/composers/ComposeViewController.h"

#include "platform/system/SystemServices.h"
#include "platform/ui/containers/Window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QUrl>

namespace orvel {

ComposeViewController::ComposeViewController(ServiceType serviceType) : m_serviceType(serviceType)
{
    serviceName.setText(serviceType == ServiceType::Facebook ? QStringLiteral("Facebook")
                                                             : QStringLiteral("Twitter"));
    imageName.setText(QStringLiteral("Photo"));
    imageName.setHidden(true);
    imageNote.setText(QStringLiteral("Elle sera copiée : collez-la dans votre message."));
    cancelButton.setTarget([this](Button &) { finish(ComposeResult::Cancelled); });
    sendButton.setTarget([this](Button &) { send(); });
}

void ComposeViewController::setInitialText(const QString &text) { textView.setText(text); }

void ComposeViewController::addURL(const QString &url)
{
    if (urlLabel.text().isEmpty())
        urlLabel.setText(url);
}

void ComposeViewController::addImage(const QImage &image)
{
    if (!imageView.image().isNull() || image.isNull())
        return;
    imageView.setImage(image);
    imageName.setHidden(false);
}

void ComposeViewController::setCompletionHandler(std::function<void(ComposeResult)> handler)
{
    m_completionHandler = std::move(handler);
}

QString ComposeViewController::sharePage() const
{
    const auto escaped = [](const QString &text) {
        return QString::fromLatin1(QUrl::toPercentEncoding(text));
    };
    const bool facebook = m_serviceType == ServiceType::Facebook;
    QStringList query;
    if (!textView.text().isEmpty())
        query << (facebook ? QStringLiteral("quote=") : QStringLiteral("text=")) + escaped(textView.text());
    if (!urlLabel.text().isEmpty())
        query << (facebook ? QStringLiteral("u=") : QStringLiteral("url=")) + escaped(urlLabel.text());
    return (facebook ? QStringLiteral("https://www.facebook.com/sharer/sharer.php?")
                     : QStringLiteral("https://twitter.com/intent/tweet?")) +
           query.join(u'&');
}

void ComposeViewController::send()
{
    if (m_finished)
        return;
    if (!SystemServices::current().openURL(sharePage())) {
        Window::showAlert(serviceName.text(),
                          QStringLiteral("Aucun navigateur ne peut ouvrir la page de partage."),
                          {QStringLiteral("OK")});
        return;
    }
    if (!imageView.image().isNull() && qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        QGuiApplication::clipboard()->setImage(imageView.image());
    finish(ComposeResult::Done);
}

void ComposeViewController::finish(ComposeResult result)
{
    if (std::exchange(m_finished, true))
        return;
    const std::shared_ptr<ViewController> self = shared_from_this();
    const std::function<void(ComposeResult)> handler = std::move(m_completionHandler);
    dismissViewController(true);
    if (handler)
        handler(result);
}

} // namespace orvel
