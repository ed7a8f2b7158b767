#include "kscreenshotplatform.h"

#include <QByteArray>
#include <QtGlobal>

bool KScreenshotPlatform::requested(int argc, char** argv)
{
    // Before QCoreApplication: the arguments as the shell gave them.
    const QByteArray option = QByteArray("--") + kOption;
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == option || argument.startsWith(option + '='))
            return true;
    }
    return false;
}

void KScreenshotPlatform::chooseFor(int argc, char** argv)
{
    const bool hasDisplay =
        !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (requested(argc, argv) && !hasDisplay && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}
