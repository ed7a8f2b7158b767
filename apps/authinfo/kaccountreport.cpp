#include "kaccountreport.h"

#include "kdeskhivelib.h"
#include "knimboclientinstance.h"
#include "qcommjson.h"

#include <QDir>
#include <QTextStream>

namespace {

constexpr int kLabelWidth = 16;

void line(QTextStream& out, const char* label, const QString& value)
{
    const QString name = QString::fromLatin1(label);
    // No padding after a label whose value is empty: no trailing blanks.
    out << "  " << (value.isEmpty() ? name : name.leftJustified(kLabelWidth) + "  " + value)
        << '\n';
}

QString yesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

QString libraryState(const KDeskhiveLib& lib)
{
    if (lib.isLoaded())
        return QStringLiteral("loaded from %1").arg(QDir::toNativeSeparators(lib.fileName()));
    if (lib.fileName().isEmpty())
        return QStringLiteral("not found: no %1")
            .arg(QDir::toNativeSeparators(KDeskhiveLib::pluginDirectory()));
    return QStringLiteral("not loaded: %1").arg(lib.errorString());
}

} // namespace

void KAccountReport::print(QTextStream& out)
{
    const KDeskhiveLib& lib = *KDeskhiveLib::instance();
    const Json::Value info = KNimboClientInstance::userInfo();

    out << "Account\n";
    line(out, "Cloud library", libraryState(lib));
    line(out, "Signed in", yesNo(KNimboClientInstance::isLogined()));
    line(out, "Name", QComm::jsonObject2String(info, QStringLiteral("Name")));
    line(out, "Id", QComm::jsonObject2String(info, QStringLiteral("Id")));
    line(out, "Avatar", QComm::jsonObject2String(info, QStringLiteral("UserAvatarImagePath")));
    line(out, "Company account",
         yesNo(QComm::jsonGetBool(info, QStringLiteral("IsCompanyAccount"), false)));
    out.flush();
}
