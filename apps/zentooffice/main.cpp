// zentooffice: the reference host. It loads the authorization plug-in from
// its own directory the way the suite does, hands the handler to the host
// and shows a main window whose title area comes from the host profile's
// command tree: the user-centre button with the account menu, following
// the cloud simulator's state file (addons/deskhive/state.json, or
// DESKHIVE_STATE) as a person edits it.
//
// With --screenshots DIR it walks through the account states instead
// (KScreenshotWalk) on a state file of its own, saves one PNG each and
// exits; that works without a display.

#include "kauthpluginloader.h"
#include "kscreenshotwalk.h"
#include "kzentoofficewindow.h"

#include <vex/kxapplication.h>
#include <vexlite/hostcontrol.h>

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

// Exit status when the plug-in cannot be loaded, as authinfo's.
constexpr int kExitPluginError = 2;
const char kScreenshotsOption[] = "screenshots";

bool wantsScreenshots(int argc, char** argv)
{
    const QByteArray option = QByteArray("--") + kScreenshotsOption;
    for (int i = 1; i < argc; ++i) {
        if (QByteArray(argv[i]) == option || QByteArray(argv[i]).startsWith(option + '='))
            return true;
    }
    return false;
}

// A state file of the walk's own beside a copy of the demo user's picture,
// so that the walk never touches the one a person edits.
QString prepareWalkState(const QTemporaryDir& dir)
{
    const QString simulator =
        QCoreApplication::applicationDirPath() + QStringLiteral("/addons/deskhive");
    QFile::copy(simulator + QStringLiteral("/avatar.png"),
                dir.filePath(QStringLiteral("avatar.png")));
    const QString state = dir.filePath(QStringLiteral("state.json"));
    QFile file(state);
    if (file.open(QIODevice::WriteOnly))
        file.write("{}");
    return state;
}

// The offscreen platform says for every window that it cannot do what a
// window manager would; the walk does not need it to.
QtMessageHandler g_defaultHandler = nullptr;
void quietOffscreenNotices(QtMsgType type, const QMessageLogContext& context,
                           const QString& message)
{
    if (type == QtWarningMsg && message.startsWith(QLatin1String("This plugin does not support")))
        return;
    g_defaultHandler(type, context, message);
}

} // namespace

int main(int argc, char* argv[])
{
    // Screenshots need no display.
    if (wantsScreenshots(argc, argv) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    KxApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zentooffice"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("The suite's window with the authorization plug-in loaded."));
    parser.addHelpOption();
    const QCommandLineOption screenshotsOption(
        QLatin1String(kScreenshotsOption),
        QStringLiteral("Walk through the account states, save a PNG of each into dir, exit."),
        QStringLiteral("dir"));
    const QCommandLineOption profileOption(
        QStringLiteral("profile"),
        QStringLiteral("The host profile directory (default: $%1, else \"profile\" beside the "
                       "program).")
            .arg(QLatin1String(krt::hostcontrol::profileEnvironmentVariable())),
        QStringLiteral("dir"));
    const QCommandLineOption verboseOption(
        {QStringLiteral("v"), QStringLiteral("verbose")},
        QStringLiteral("Also print the debug notices of the plug-in and the host."));
    parser.addOption(screenshotsOption);
    parser.addOption(profileOption);
    parser.addOption(verboseOption);
    parser.process(app);
    if (!parser.isSet(verboseOption))
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));

    QTextStream err(stderr);
    if (parser.isSet(profileOption)) {
        QString error;
        if (!krt::hostcontrol::loadProfile(parser.value(profileOption), &error)) {
            err << "zentooffice: " << error << '\n';
            return 1;
        }
    }

    // Before the plug-in first reaches the cloud simulator, which reads the
    // variable then.
    QTemporaryDir walkState;
    const bool walk = parser.isSet(screenshotsOption);
    QString statePath;
    if (walk) {
        if (QGuiApplication::platformName() == QLatin1String("offscreen"))
            g_defaultHandler = qInstallMessageHandler(quietOffscreenNotices);
        statePath = prepareWalkState(walkState);
        qputenv("DESKHIVE_STATE", QFile::encodeName(statePath));
    }

    KAuthPluginLoader plugin(
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("libauthplugin.so")));
    IKAuthorizationHandler* handler = plugin.load();
    if (!handler) {
        err << "zentooffice: cannot use the plug-in " << plugin.fileName() << ": "
            << plugin.errorString() << '\n';
        return kExitPluginError;
    }
    krt::hostcontrol::setHandler(handler);

    if (walk) {
        KScreenshotWalk screenshots(parser.value(screenshotsOption), statePath, err);
        const bool ok = screenshots.run();
        QTextStream out(stdout);
        for (const QString& path : screenshots.written())
            out << path << '\n';
        return ok ? 0 : 1;
    }

    KZentoOfficeWindow window;
    window.show();
    return app.exec();
}
