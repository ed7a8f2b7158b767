// zentooffice: the reference host. It loads the authorization plug-in from
// its own directory the way the suite does, hands the handler to the host,
// registers the host's own commands and loads its web module (a module of
// the suite that uses the plug-in's web dialog). Its main windows carry the
// title area of the host profile's command tree (the user-centre button
// with the account menu), documents in tabs and a developer panel; the
// account follows the cloud simulator's state file (addons/deskhive/
// state.json, or DESKHIVE_STATE) as a person or the panel edits it.
//
// Arguments: document addresses (vexnimbo://...) and file paths open in
// tabs. One host runs per user and profile; a second start hands its
// arguments to the first and ends.
//
// With --screenshots DIR it walks through the states instead
// (KScreenshotWalk) on a state file of its own, saves one PNG each and
// exits; without a display it uses the offscreen platform.

#include "kauthpluginloader.h"
#include "kdeskhiveclient.h"
#include "kdocumentrequest.h"
#include "khostcommandregistration.h"
#include "kscreenshotplatform.h"
#include "kscreenshotwalk.h"
#include "ksingleinstance.h"
#include "kzentoofficehost.h"
#include "kzentoofficewindow.h"

#include <deskhive/nimboclient.h>
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
// A state file of the walk's own beside a copy of the demo user's picture,
// so that the walk never touches the one a person edits.
QString prepareWalkState(const QTemporaryDir& dir)
{
    QFile::copy(KDeskhiveClient::demoAvatarPath(), dir.filePath(QStringLiteral("avatar.png")));
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
    KScreenshotPlatform::chooseFor(argc, argv);
    KxApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zentooffice"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("The suite's window with the authorization plug-in loaded."));
    parser.addHelpOption();
    parser.addPositionalArgument(
        QStringLiteral("documents"),
        QStringLiteral("Document addresses (vexnimbo://type=open&fileid=..&displayname=..) or "
                       "files to open, each in a tab; a running host opens them instead."),
        QStringLiteral("[documents...]"));
    const QCommandLineOption screenshotsOption(
        QLatin1String(KScreenshotPlatform::kOption),
        QStringLiteral("Walk through the states, save a PNG of each into dir, exit."),
        QStringLiteral("dir"));
    const QCommandLineOption profileOption(
        QStringLiteral("profile"),
        QStringLiteral("The host profile directory (default: $%1, else \"profile\" beside the "
                       "program).")
            .arg(QLatin1String(krt::hostcontrol::profileEnvironmentVariable())),
        QStringLiteral("dir"));
    const QCommandLineOption signedInOption(
        QStringLiteral("signed-in"),
        QStringLiteral("Sign the cloud simulator's demo user in at start if nobody is."));
    const QCommandLineOption verboseOption(
        {QStringLiteral("v"), QStringLiteral("verbose")},
        QStringLiteral("Also print the debug notices of the plug-in and the host."));
    parser.addOption(screenshotsOption);
    parser.addOption(profileOption);
    parser.addOption(signedInOption);
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
    const bool walk = parser.isSet(screenshotsOption);

    // Arguments that are no documents are said at once; the rest open.
    QList<KDocumentRequest> documents;
    QStringList forwarded;
    const QStringList arguments = parser.positionalArguments();
    for (const QString& argument : arguments) {
        const KDocumentRequest request =
            KDocumentRequest::fromArgument(argument, QDir::currentPath());
        if (request.isValid()) {
            documents << request;
            forwarded << request.forwardable();
        } else {
            err << "zentooffice: " << argument << ": " << request.error() << '\n';
        }
    }
    err.flush();

    KSingleInstance instance(QDir(krt::hostcontrol::profileDir()).canonicalPath());
    if (!walk) {
        switch (instance.start(forwarded)) {
        case KSingleInstance::Forwarded:
            return 0;
        case KSingleInstance::Unanswered:
            err << "zentooffice: " << instance.errorString() << '\n';
            return 1;
        case KSingleInstance::Alone:
            err << "zentooffice: running on its own: " << instance.errorString() << '\n';
            break;
        case KSingleInstance::Primary:
            if (!instance.errorString().isEmpty())
                err << "zentooffice: later starts cannot reach this one yet: "
                    << instance.errorString() << '\n';
            break;
        }
    }

    // Before the plug-in first reaches the cloud simulator, which reads the
    // variable then.
    QTemporaryDir walkState;
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
    const KHostCommandRegistration hostCommands;

    KZentoOfficeHost host;
    if (!host.loadWebModule(
            QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("libhostweb.so"))))
        err << "zentooffice: no Welcome page: " << host.webModuleError() << '\n';

    if (walk) {
        KScreenshotWalk screenshots(&host, parser.value(screenshotsOption), statePath, err);
        const bool ok = screenshots.run();
        QTextStream out(stdout);
        for (const QString& path : screenshots.written())
            out << path << '\n';
        return ok ? 0 : 1;
    }

    if (parser.isSet(signedInOption)) {
        INimboClient* client = KDeskhiveClient::client();
        if (client && !client->getUserInfo()["IsLogined"].asBool())
            client->login(QVariant());
    }
    QObject::connect(&instance, &KSingleInstance::argumentsReceived, &host,
                     &KZentoOfficeHost::onArgumentsReceived);
    KZentoOfficeWindow* window = host.newWindow(true);
    window->resize(1060, 700);
    window->show();
    host.openDocuments(documents);
    return app.exec();
}
