#include "shell/Application.h"

#include <QGuiApplication>

int main(int argc, char *argv[])
{
    orvel::Application::prepare();
    QGuiApplication app(argc, argv);
    orvel::Application application(orvel::StationConfiguration::compiledIn());
    return application.start() ? QGuiApplication::exec() : 1;
}
