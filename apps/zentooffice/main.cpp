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
#include <QIcon>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTextStream>

#include <optional>

namespace {

// Exit status when the plug-in cannot be loaded, as authinfo's.
constexpr int kExitPluginError = 2;

// What the command line asks for.
struct KHostOptions
{
    QString screenshots; // the walk's folder; empty: the host as people use it
    QString profile;
    bool signedIn = false;
    bool verbose = false;
    QStringList documents;
};

KHostOptions parseCommandLine(const QCoreApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("The suite's window with the authorization plug-in loaded."));
    parser.addHelpOption();
    parser.addPositionalArgument(
        QStringLiteral("documents"),
        QStringLiteral("Document addresses (vexnimbo://type=open&fileid=..&displayname=..) or "
                       "files to open, each in a tab; a running host opens them instead."),
        QStringLiteral("[documents...]"));
    const QCommandLineOption screenshots(
        QLatin1String(KScreenshotPlatform::kOption),
        QStringLiteral("Walk through the states, save a PNG of each into dir, exit."),
        QStringLiteral("dir"));
    const QCommandLineOption profile(
        QStringLiteral("profile"),
        QStringLiteral("The host profile directory (default: $%1, else \"profile\" beside the "
                       "program).")
            .arg(QLatin1String(krt::hostcontrol::profileEnvironmentVariable())),
        QStringLiteral("dir"));
    const QCommandLineOption signedIn(
        QStringLiteral("signed-in"),
        QStringLiteral("Sign the cloud simulator's demo user in at start if nobody is."));
    const QCommandLineOption verbose(
        {QStringLiteral("v"), QStringLiteral("verbose")},
        QStringLiteral("Also print the debug notices of the plug-in and the host."));
    parser.addOptions({screenshots, profile, signedIn, verbose});
    parser.process(app);

    KHostOptions options;
    options.screenshots = parser.value(screenshots);
    options.profile = parser.value(profile);
    options.signedIn = parser.isSet(signedIn);
    options.verbose = parser.isSet(verbose);
    options.documents = parser.positionalArguments();
    return options;
}

// The documents among the arguments; the others are named at once.
QList<KDocumentRequest> documentsAmong(const QStringList& arguments, QTextStream& err)
{
    QList<KDocumentRequest> documents;
    for (const QString& argument : arguments) {
        const KDocumentRequest request =
            KDocumentRequest::fromArgument(argument, QDir::currentPath());
        if (request.isValid())
            documents << request;
        else
            err << "zentooffice: " << argument << ": " << request.error() << '\n';
    }
    err.flush();
    return documents;
}

// Whether this process is to be the profile's host; if not, the status to
// end with (the documents went to the running host, or it said why not).
std::optional<int> claimProfile(KSingleInstance& instance, const QList<KDocumentRequest>& documents,
                                QTextStream& err)
{
    QStringList forwarded;
    for (const KDocumentRequest& document : documents)
        forwarded << document.forwardable();
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
            err << "zentooffice: later starts cannot reach this one yet: " << instance.errorString()
                << '\n';
        break;
    }
    return std::nullopt;
}

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

int runScreenshotWalk(KZentoOfficeHost* host, const QString& dir, const QString& statePath,
                      QTextStream& err)
{
    KScreenshotWalk screenshots(host, dir, statePath, err);
    const bool ok = screenshots.run();
    QTextStream out(stdout);
    for (const QString& path : screenshots.written())
        out << path << '\n';
    return ok ? 0 : 1;
}

int runHost(KZentoOfficeHost* host, KSingleInstance* instance, const KHostOptions& options,
            const QList<KDocumentRequest>& documents)
{
    if (options.signedIn) {
        INimboClient* client = KDeskhiveClient::client();
        if (client && !client->getUserInfo()["IsLogined"].asBool())
            client->login(QVariant());
    }
    QObject::connect(instance, &KSingleInstance::argumentsReceived, host,
                     &KZentoOfficeHost::onArgumentsReceived);
    KZentoOfficeWindow* window = host->newWindow(true);
    window->resize(1060, 700);
    window->show();
    host->openDocuments(documents);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    // Screenshots need no display.
    KScreenshotPlatform::chooseFor(argc, argv);
    KxApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zentooffice"));
    // The desktop entry's name and icon: the desktop ties the windows to it.
    QGuiApplication::setDesktopFileName(QStringLiteral("example.zentooffice.ZentoOffice"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/zentooffice/icon.png")));
    const KHostOptions options = parseCommandLine(app);
    // The plug-in's categories and the host's own hold back their debug
    // notices unless asked; the stand-in host's and Qt's are quiet without
    // -v.
    QLoggingCategory::setFilterRules(
        options.verbose ? QStringLiteral("auth.*.debug=true\nzentooffice.debug=true")
                        : QStringLiteral("*.debug=false"));

    QTextStream err(stderr);
    QString error;
    if (!options.profile.isEmpty() && !krt::hostcontrol::loadProfile(options.profile, &error)) {
        err << "zentooffice: " << error << '\n';
        return 1;
    }
    const bool walk = !options.screenshots.isEmpty();
    const QList<KDocumentRequest> documents = documentsAmong(options.documents, err);
    KSingleInstance instance(QDir(krt::hostcontrol::profileDir()).canonicalPath());
    if (!walk) {
        if (const std::optional<int> status = claimProfile(instance, documents, err))
            return *status;
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

    const QDir here(QCoreApplication::applicationDirPath());
    KAuthPluginLoader plugin(here.filePath(QStringLiteral("libauthplugin.so")));
    IKAuthorizationHandler* handler = plugin.load();
    if (!handler) {
        err << "zentooffice: cannot use the plug-in " << plugin.fileName() << ": "
            << plugin.errorString() << '\n';
        return kExitPluginError;
    }
    krt::hostcontrol::setHandler(handler);
    const KHostCommandRegistration hostCommands;

    KZentoOfficeHost host;
#ifdef ZENTO_HAS_WEB_MODULE
    if (!host.loadWebModule(here.filePath(QStringLiteral("libhostweb.so"))))
        err << "zentooffice: no Welcome page: " << host.webModuleError() << '\n';
#endif
    if (walk)
        return runScreenshotWalk(&host, options.screenshots, statePath, err);
    return runHost(&host, &instance, options, documents);
}
