#include "kxplugintranslator.h"

#include "pluginlogging.h"

#include <vexlite/krti18n.h>

#include <QCoreApplication>
#include <QThread>
#include <QTranslator>

namespace {

struct KPluginCatalogue
{
    // Its destructor takes it out of the application again, at unload.
    QTranslator translator;
    QString language;
    bool checked = false;
    bool installed = false;
};

KPluginCatalogue& catalogue()
{
    static KPluginCatalogue instance;
    return instance;
}

} // namespace

bool kxInstallPluginTranslator()
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || QThread::currentThread() != app->thread())
        return false;
    KPluginCatalogue& c = catalogue();
    const QLocale locale = krt::i18n::uiLocale();
    if (c.checked && c.language == locale.name())
        return c.installed;

    if (c.installed)
        QCoreApplication::removeTranslator(&c.translator);
    c.checked = true;
    c.language = locale.name();
    c.installed = c.translator.load(locale, QStringLiteral("authplugin"), QStringLiteral("_"),
                                    QStringLiteral(":/auth_plugin/i18n")) &&
                  QCoreApplication::installTranslator(&c.translator);
    qCDebug(lcAuthPlugin, "catalogue for %s: %s", qUtf8Printable(c.language),
            c.installed ? "installed" : "none");
    return c.installed;
}
