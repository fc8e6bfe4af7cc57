#include "shell/Shell.h"

#include "layouts/kit/LastInput.h"
#include "platform/foundation/BackgroundTask.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/modal/InputGate.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QIcon>
#include <QPointingDevice>
#include <QQuickItem>
#include <QTouchEvent>

// Made by the build, one a QML module. Calling them keeps the linker from dropping the registrations.
void qml_register_types_Orvel_Account();
void qml_register_types_Orvel_App();
void qml_register_types_Orvel_Composers();
void qml_register_types_Orvel_Containers();
void qml_register_types_Orvel_Kit();
void qml_register_types_Orvel_Layouts_Account();
void qml_register_types_Orvel_Layouts_App();
void qml_register_types_Orvel_Layouts_Radio();
void qml_register_types_Orvel_Outlets();
void qml_register_types_Orvel_Radio();
void qml_register_types_Orvel_Screens();
void qml_register_types_Orvel_Table();

namespace orvel {

namespace {

constexpr QSize phone(375, 667);
constexpr QSize smallest(320, 320); // a phone on its side

void registerModules()
{
    qml_register_types_Orvel_Outlets();
    qml_register_types_Orvel_Table();
    qml_register_types_Orvel_Containers();
    qml_register_types_Orvel_Composers();
    qml_register_types_Orvel_App();
    qml_register_types_Orvel_Screens();
    qml_register_types_Orvel_Account();
    qml_register_types_Orvel_Radio();
    qml_register_types_Orvel_Kit();
    qml_register_types_Orvel_Layouts_App();
    qml_register_types_Orvel_Layouts_Account();
    qml_register_types_Orvel_Layouts_Radio();
}

void useFont()
{
    for (const char *weight : {"Regular", "Medium", "SemiBold", "Bold"})
        QFontDatabase::addApplicationFont(
            QStringLiteral(":/assets/fonts/Inter-%1.otf").arg(QLatin1String(weight)));
    // Emoji in colour, before another font draws them as lines.
    QFont::insertSubstitution(QStringLiteral("Inter"), QStringLiteral("Noto Color Emoji"));
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(15);
    QGuiApplication::setFont(font);
}

} // namespace

Shell::Shell(Window &window) : m_view(&m_engine, nullptr)
{
    registerModules();
    useFont();
    m_engine.addImportPath(QStringLiteral(":/qt/qml"));
    m_view.setTitle(QStringLiteral("Orvel Radio"));
    m_view.setIcon(QIcon(QStringLiteral(":/assets/images/app-icon.svg")));
    m_view.setResizeMode(QQuickView::SizeRootObjectToView);
    m_view.setColor(QColor(0x15, 0x12, 0x0d));
    m_view.setMinimumSize(smallest);
    m_view.resize(phone.boundedTo(m_view.screen()->availableSize()));
    m_view.setInitialProperties({{QStringLiteral("window"), QVariant::fromValue(&window)}});

    connect(&InputGate::shared(), &InputGate::closed, this, &Shell::letGoOfPresses);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &Shell::applicationStateChanged);
}

Shell::~Shell() = default;

bool Shell::show()
{
    m_view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Orvel/Layouts/App/MainLayout.qml")));
    if (m_view.status() != QQuickView::Ready)
        return false;
    m_view.show();
    return true;
}

// Forgets whatever is held down when the gate closes: letting go of it later chooses nothing. A text in the
// making stays in its field.
void Shell::letGoOfPresses()
{
    LastInput::commitComposition();
    if (QQuickItem *grabber = m_view.mouseGrabberItem())
        grabber->ungrabMouse();
    for (const QInputDevice *device : QInputDevice::devices()) {
        const auto *pointing = qobject_cast<const QPointingDevice *>(device);
        if (!pointing || pointing->type() != QInputDevice::DeviceType::TouchScreen)
            continue;
        QTouchEvent cancel(QEvent::TouchCancel, pointing);
        QCoreApplication::sendEvent(&m_view, &cancel);
    }
}

// A desktop window that merely lost the focus is still in the foreground.
void Shell::applicationStateChanged(Qt::ApplicationState state)
{
    const bool background = state == Qt::ApplicationSuspended || state == Qt::ApplicationHidden;
    if (background == m_inBackground)
        return;
    m_inBackground = background;
    setApplicationState(background ? ApplicationState::Background : ApplicationState::Active);
    NotificationCentre::defaultCentre().postNotification(background ? applicationDidEnterBackground
                                                                    : applicationWillEnterForeground);
}

} // namespace orvel
