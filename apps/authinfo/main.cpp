// authinfo: a command-line host. It loads the authorization plug-in the way
// the suite does and prints what the plug-in answers.

#include "kaccountreport.h"
#include "kauthpluginloader.h"
#include "kcommandreport.h"
#include "kdiagnosticsreport.h"
#include "kinforeport.h"

#include <vexlite/hostcontrol.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QTextStream>

namespace {

// Exit status when the diagnostics found directories that cannot be created.
constexpr int kExitDiagnosticsProblem = 1;
// Exit status when the plug-in cannot be loaded, distinct from usage errors.
constexpr int kExitPluginError = 2;

QString defaultPluginPath()
{
    return QDir(QCoreApplication::applicationDirPath())
        .filePath(QStringLiteral("libauthplugin.so"));
}

// What the command line asks for.
struct Request
{
    QString plugin;
    bool profileGiven = false; // else the default profile
    QString profile;
    QStringList keys;
    bool account = false;
    bool diagnostics = false;
    bool commands = false;
    QStringList commandNames;
    bool verbose = false;

    // Nothing chosen: the whole table and every report.
    bool everything() const
    {
        return keys.isEmpty() && !account && !diagnostics && !commands && commandNames.isEmpty();
    }
};

// The command line, or the usage and exit for --help and mistakes.
Request parseCommandLine(const QCoreApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Loads the authorization plug-in as the suite does and prints its answers "
                       "for information keys (by default every Product and Server key)."));
    parser.addHelpOption();
    const QCommandLineOption pluginOption(
        QStringLiteral("plugin"), QStringLiteral("The plug-in to load (default: beside authinfo)."),
        QStringLiteral("path"), defaultPluginPath());
    const QCommandLineOption profileOption(
        QStringLiteral("profile"),
        QStringLiteral("The host profile directory (default: $%1, else \"profile\" beside "
                       "authinfo).")
            .arg(QLatin1String(krt::hostcontrol::profileEnvironmentVariable())),
        QStringLiteral("dir"));
    const QCommandLineOption accountOption(
        QStringLiteral("account"),
        QStringLiteral("Print the account report: the cloud library and the signed-in user."));
    const QCommandLineOption diagnosticsOption(
        QStringLiteral("diagnostics"),
        QStringLiteral("Print the cloud client's diagnostics: identity, user agents, data "
                       "directories."));
    const QCommandLineOption verboseOption(
        {QStringLiteral("v"), QStringLiteral("verbose")},
        QStringLiteral("Also print the debug notices of the plug-in and its helpers."));
    const QCommandLineOption commandsOption(
        QStringLiteral("commands"),
        QStringLiteral("List the command classes the plug-in registered with the host."));
    const QCommandLineOption commandOption(
        QStringLiteral("command"),
        QStringLiteral("Pass a named command (such as OpenUserCenter) through the handler and "
                       "print the result, the addresses it opened and the suite user name. "
                       "May be given more than once."),
        QStringLiteral("name"));
    parser.addOptions({pluginOption, profileOption, accountOption, diagnosticsOption,
                       commandsOption, commandOption, verboseOption});
    parser.addPositionalArgument(QStringLiteral("key"), QStringLiteral("Information keys to ask."),
                                 QStringLiteral("[key...]"));
    parser.process(app);

    Request request;
    request.plugin = parser.value(pluginOption);
    request.profileGiven = parser.isSet(profileOption);
    request.profile = parser.value(profileOption);
    request.keys = parser.positionalArguments();
    request.account = parser.isSet(accountOption);
    request.diagnostics = parser.isSet(diagnosticsOption);
    request.commands = parser.isSet(commandsOption);
    request.commandNames = parser.values(commandOption);
    request.verbose = parser.isSet(verboseOption);
    return request;
}

// The parts asked for, keys first, commands last, a blank line between
// two; the exit status.
int printReports(const Request& request, QTextStream& out)
{
    const bool everything = request.everything();
    int status = 0;
    bool first = true;
    const auto section = [&]() {
        if (!first)
            out << '\n';
        first = false;
    };
    if (everything || !request.keys.isEmpty()) {
        section();
        KInfoReport::print(out, request.keys.isEmpty() ? KInfoReport::defaultKeys() : request.keys);
    }
    if (everything || request.account) {
        section();
        KAccountReport::print(out);
    }
    if (everything || request.diagnostics) {
        section();
        if (!KDiagnosticsReport::print(out))
            status = kExitDiagnosticsProblem;
    }
    if (request.commands) {
        section();
        KCommandReport::printClasses(out);
    }
    for (const QString& name : request.commandNames) {
        section();
        KCommandReport::run(out, name);
    }
    return status;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("authinfo"));
    const Request request = parseCommandLine(app);
    // Debug notices would interleave with the report on the terminal; asked
    // for, the plug-in's and its helpers' show whatever their default.
    QLoggingCategory::setFilterRules(request.verbose ? QStringLiteral("auth.*.debug=true")
                                                     : QStringLiteral("*.debug=false"));

    QTextStream out(stdout);
    QTextStream err(stderr);
    QString error;
    if (request.profileGiven && !krt::hostcontrol::loadProfile(request.profile, &error)) {
        err << "authinfo: " << error << '\n';
        return kExitPluginError;
    }

    KAuthPluginLoader loader(request.plugin);
    IKAuthorizationHandler* handler = loader.load();
    if (!handler) {
        err << "authinfo: cannot use plug-in " << loader.fileName() << ": " << loader.errorString()
            << '\n';
        return kExitPluginError;
    }
    krt::hostcontrol::setHandler(handler);
    const int status = printReports(request, out);
    krt::hostcontrol::setHandler(nullptr);
    return status;
}
