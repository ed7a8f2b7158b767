#include "qcommopenfile.h"

#include "kopencommand.h"
#include "qcommfiletypes.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <optional>

namespace {

QString suiteBundlePath()
{
    const QString dir = QCoreApplication::applicationDirPath();
    // Helpers live in the main bundle's SharedSupport folder.
    const QLatin1String marker = QCoreApplication::applicationName() == QLatin1String("zentooffice")
                                     ? QLatin1String("/Contents/MacOS")
                                     : QLatin1String("/Contents/SharedSupport");
    const int at = dir.indexOf(marker);
    return at < 0 ? dir : dir.left(at);
}

QString vexScheme(const QString& suffix)
{
    const QString appType = QComm::getAppTypeBySuffix(suffix);
    QStringList zento, slidex, tabix, pdf;
    QComm::getZentoSupportList(zento, slidex, tabix, pdf);
    if (appType == QLatin1String("zento") || zento.contains(suffix))
        return QStringLiteral("vexzento");
    if (appType == QLatin1String("tabix") || tabix.contains(suffix))
        return QStringLiteral("vextabix");
    if (appType == QLatin1String("slidex") || slidex.contains(suffix))
        return QStringLiteral("vexslidex");
    if (appType == QLatin1String("pdf") || pdf.contains(suffix))
        return QStringLiteral("vexpdf");
    return QString();
}

std::optional<KOpenCommand> vexCommand(const QString& fileId, const QString& fileName)
{
    QString bundle = suiteBundlePath();
    if (bundle.isEmpty())
        return std::nullopt;

    const int dot = fileName.lastIndexOf(QLatin1Char('.'));
    const QString suffix = dot < 0 ? QString() : fileName.mid(dot + 1).toLower();
    QString scheme = vexScheme(suffix);
    // Every document goes through the cloud client, which knows the
    // application itself; the choice above is deliberately not used.
    scheme = QStringLiteral("vexnimbo");
    if (scheme.isEmpty())
        return std::nullopt;

    bundle = QDir::toNativeSeparators(bundle);
    if (!QFileInfo::exists(bundle))
        return std::nullopt;

    const QString displayName = QString::fromLatin1(fileName.toUtf8().toBase64());
    const QString url =
        QStringLiteral("%1://type=open&fileid=%2&displayname=%3").arg(scheme, fileId, displayName);
    return KOpenCommand::forSuite(bundle, url);
}

std::optional<KOpenCommand> launchExeCommand(const QString& path)
{
    const QString bundle = suiteBundlePath();
    if (bundle.isEmpty())
        return std::nullopt;
    return KOpenCommand::forSuite(bundle, path);
}

} // namespace

namespace QComm {

bool openFileByVex(const QString& fileId, const QString& fileName)
{
    const auto command = vexCommand(fileId, fileName);
    return command && command->run();
}

bool openFileByLaunchExe(const QString& path)
{
    const auto command = launchExeCommand(path);
    return command && command->run();
}

QString openFileByVexCommand(const QString& fileId, const QString& fileName)
{
    const auto command = vexCommand(fileId, fileName);
    return command ? command->text() : QString();
}

QString openFileByLaunchExeCommand(const QString& path)
{
    const auto command = launchExeCommand(path);
    return command ? command->text() : QString();
}

} // namespace QComm
