#pragma once

#include "platform/ui/containers/ViewController.h"
#include "platform/ui/outlets/Button.h"
#include "platform/ui/outlets/ImageView.h"
#include "platform/ui/outlets/Label.h"
#include "platform/ui/outlets/Outlet.h"
#include "platform/ui/outlets/TextView.h"

namespace orvel {

enum class ServiceType { Facebook, Twitter };
enum class ComposeResult { Cancelled = 0, Done = 1 };

// A share sheet: lets the user finish a text and hands it, with its first URL, to the service's public share
// page in the system's browser. Such a page takes no picture: the first one goes to the clipboard. It
// dismisses itself, then calls its completion handler. Main thread.
class ComposeViewController : public orvel::ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made in C++")
public:
    explicit ComposeViewController(ServiceType serviceType);

    ServiceType serviceType() const { return m_serviceType; }
    void setInitialText(const QString &text);
    void addURL(const QString &url);
    void addImage(const QImage &image);
    void setCompletionHandler(std::function<void(ComposeResult)> handler);

    // Returns the address of the share page with what would be shared now.
    QString sharePage() const;

    OUTLET(Label, serviceName);
    OUTLET(TextView, textView);
    OUTLET(Label, urlLabel);
    OUTLET(ImageView, imageView);
    // Hidden without a picture.
    OUTLET(Label, imageName);
    // Where the picture goes.
    OUTLET(Label, imageNote);
    OUTLET(Button, cancelButton);
    OUTLET(Button, sendButton);

private:
    void send();
    void finish(ComposeResult result);

    ServiceType m_serviceType;
    std::function<void(ComposeResult)> m_completionHandler;
    bool m_finished = false;
};

} // namespace orvel
