// authinfo: a command-line host. It loads the authorization plug-in the way
// the suite does and prints what the plug-in answers.

#include "kauthpluginloader.h"
#include "kdiagnosticsreport.h"
#include "kinforeport.h"

#include <vexlite/hostcontrol.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QTextStream>

namespace {

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
    const QCommandLineOption diagnosticsOption(
        QStringLiteral("diagnostics"),
        QStringLiteral("Print the cloud client's diagnostics (identity, user agents, data "
                       "directories) instead of the whole table; keys given are still asked."));
    parser.addOption(pluginOption);
    parser.addOption(profileOption);
    parser.addOption(diagnosticsOption);
    parser.addPositionalArgument(QStringLiteral("key"), QStringLiteral("Information keys to ask."),
                                 QStringLiteral("[key...]"));
    parser.process(app);

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

    // The whole table comes with the diagnostics after it; chosen keys alone.
    const QStringList keys = parser.positionalArguments();
    const bool diagnostics = keys.isEmpty() || parser.isSet(diagnosticsOption);
    if (!keys.isEmpty() || !parser.isSet(diagnosticsOption))
        KInfoReport::print(out, keys.isEmpty() ? KInfoReport::defaultKeys() : keys);
    if (diagnostics) {
        if (!parser.isSet(diagnosticsOption))
            out << '\n';
        KDiagnosticsReport::print(out);
    }

    krt::hostcontrol::setHandler(nullptr);
    return 0;
}
