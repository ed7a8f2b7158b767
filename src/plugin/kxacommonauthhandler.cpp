#include "kxacommonauthhandler.h"

#include "kxjumpurl.h"
#include "kxopenurl.h"

#include <vexlite/kqtcompat.h>
#include <vexlite/krtconfigs.h>
#include <vexlite/krti18n.h>
#include <vexlite/krtproduct.h>

namespace {

// Source mask for product values: every layer but the user's own, so a
// user cannot re-brand the product or redirect its pages.
constexpr unsigned kProductSources = 0x1B;

const char kTrContext[] = "vex_vexcomm";
const char kProductName[] = "Zento Office";
const char kThanksTo[] =
    "This product includes the FreeType font engine (The FreeType Project, www.freetype.org); "
    "Chinese word segmentation, phonetic annotation and simplified/traditional Chinese "
    "conversion technology from the information retrieval research centre of a university; "
    "and the Hunspell spell checker (hunspell.github.io). We thank their authors.";

QString jumpText(const char* page)
{
    return kxGetJumpUrl(QLatin1String(page)).toString();
}

// A configured value of any text wins, the empty one included.
QVariant configuredFirst(const QString& key, const char* page)
{
    const QVariant configured = krt::configs::getValue(key, kProductSources);
    if (!KQtCompat::isNull(configured))
        return configured.toString();
    return jumpText(page);
}

// A configured value wins only when it has text; otherwise the catalogue's.
QVariant configuredOrTranslated(const QString& key, const char* sourceText, const char* id)
{
    const QVariant configured = krt::configs::getValue(key, kProductSources);
    if (!KQtCompat::isNull(configured) && !configured.toString().isEmpty())
        return configured;
    return krt::kCachedTr(kTrContext, sourceText, id, -1);
}

} // namespace

QVariant KXaCommonAuthHandler::productInfo(const QString& key, const QString& group,
                                           const QString& name)
{
    if (name == QLatin1String("VexName"))
        return configuredOrTranslated(key, kProductName, "_vex_vexProductName");
    if (name == QLatin1String("VexThanksTo"))
        return configuredOrTranslated(key, kThanksTo, "_vex_vexThanksTo_PRO");
    if (name == QLatin1String("Url/EmbeddedEULA"))
        return jumpText("eula_embedded");
    if (name == QLatin1String("Url/EULA"))
        return jumpText("eula");
    if (name == QLatin1String("Url/OnlineLanguagePacksConfig"))
        return jumpText("online_language_packs_config");
    if (name == QLatin1String("Url/LauncherPage"))
        return kxGetJumpUrl(QStringLiteral("launcher_page"));
    if (name == QLatin1String("HomePage"))
        return configuredFirst(key, "home_page");
    if (name == QLatin1String("UserFeedbackPage"))
        return configuredFirst(key, "user_feedback_page");
    if (name == QLatin1String("HelpPage"))
        return configuredFirst(key, "help_page");
    // The international edition has its own support channels, answered by
    // the host's configuration instead.
    if (name == QLatin1String("TechSupportUrl") && !krt::product::isOverseasVersion())
        return configuredFirst(key, "technical_support_page");
    return KCommonAuthHandler::productInfo(key, group, name);
}

QVariant KXaCommonAuthHandler::serverInfo(const QString& key, const QString& group,
                                          const QString& name)
{
    if (name == QLatin1String("ReinstallServer"))
        return jumpText("latest_package");
    return KCommonAuthHandler::serverInfo(key, group, name);
}

bool KXaCommonAuthHandler::prehook(const QString& name, void* data)
{
    if (name == QLatin1String("OpenUserCenter"))
        kxOpenAutoLoginUrl(krt::product::getString(QStringLiteral("PersonalCenterUrl")));
    // Every command, handled or not, goes on through the common handler.
    return KCommonAuthHandler::prehook(name, data);
}
