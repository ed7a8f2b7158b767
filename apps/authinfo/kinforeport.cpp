#include "kinforeport.h"

#include <vexlite/krtauth.h>

#include <QTextStream>
#include <QUrl>

QStringList KInfoReport::defaultKeys()
{
    return {
        QStringLiteral("Product/VexName"),
        QStringLiteral("Product/VexThanksTo"),
        QStringLiteral("Product/Url/EmbeddedEULA"),
        QStringLiteral("Product/Url/EULA"),
        QStringLiteral("Product/Url/OnlineLanguagePacksConfig"),
        QStringLiteral("Product/Url/LauncherPage"),
        QStringLiteral("Product/HomePage"),
        QStringLiteral("Product/UserFeedbackPage"),
        QStringLiteral("Product/HelpPage"),
        QStringLiteral("Product/TechSupportUrl"),
        QStringLiteral("Server/ReinstallServer"),
    };
}

void KInfoReport::print(QTextStream& out, const QStringList& keys)
{
    int keyWidth = 0;
    for (const QString& key : keys)
        keyWidth = qMax(keyWidth, key.size());

    for (const QString& key : keys) {
        const QVariant value = krt::auth::getInfo(key);
        const QString type =
            value.isValid() ? QString::fromLatin1(value.typeName()) : QStringLiteral("null");
        const QString text =
            value.userType() == QMetaType::QUrl ? value.toUrl().toString() : value.toString();
        out << key.leftJustified(keyWidth) << "  " << type.leftJustified(8) << "  " << text << '\n';
    }
    out.flush();
}
