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

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("authinfo"));

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
    parser.addOption(pluginOption);
    parser.addOption(profileOption);
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
    parser.addOption(accountOption);
    parser.addOption(diagnosticsOption);
    parser.addOption(commandsOption);
    parser.addOption(commandOption);
    parser.addOption(verboseOption);
    parser.addPositionalArgument(QStringLiteral("key"), QStringLiteral("Information keys to ask."),
                                 QStringLiteral("[key...]"));
    parser.process(app);
    // Debug notices would interleave with the report on the terminal; the
    // plug-in's own categories say nothing below warnings unless asked.
    QLoggingCategory::setFilterRules(parser.isSet(verboseOption)
                                         ? QStringLiteral("auth.*.debug=true")
                                         : QStringLiteral("*.debug=false"));

    QTextStream out(stdout);
    QTextStream err(stderr);

    if (parser.isSet(profileOption)) {
        QString error;
        if (!krt::hostcontrol::loadProfile(parser.value(profileOption), &error)) {
            err << "authinfo: " << error << '\n';
            return kExitPluginError;
        }
    }

    KAuthPluginLoader loader(parser.value(pluginOption));
    IKAuthorizationHandler* handler = loader.load();
    if (!handler) {
        err << "authinfo: cannot use plug-in " << loader.fileName() << ": " << loader.errorString()
            << '\n';
        return kExitPluginError;
    }
    krt::hostcontrol::setHandler(handler);

    // Nothing chosen: the whole table and every report. Chosen keys,
    // reports and commands: those alone, keys first, commands last.
    const QStringList keys = parser.positionalArguments();
    const bool account = parser.isSet(accountOption);
    const bool diagnostics = parser.isSet(diagnosticsOption);
    const bool commands = parser.isSet(commandsOption);
    const QStringList commandNames = parser.values(commandOption);
    const bool everything =
        keys.isEmpty() && !account && !diagnostics && !commands && commandNames.isEmpty();
    int status = 0;
    bool first = true;
    const auto section = [&]() {
        if (!first)
            out << '\n';
        first = false;
    };
    if (everything || !keys.isEmpty()) {
        section();
        KInfoReport::print(out, keys.isEmpty() ? KInfoReport::defaultKeys() : keys);
    }
    if (everything || account) {
        section();
        KAccountReport::print(out);
    }
    if (everything || diagnostics) {
        section();
        if (!KDiagnosticsReport::print(out))
            status = kExitDiagnosticsProblem;
    }
    if (commands) {
        section();
        KCommandReport::printClasses(out);
    }
    for (const QString& name : commandNames) {
        section();
        KCommandReport::run(out, name);
    }

    krt::hostcontrol::setHandler(nullptr);
    return status;
}
