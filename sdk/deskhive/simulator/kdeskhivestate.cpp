#include "kdeskhivestate.h"

#include <QDir>

#include <json/value.h>

#include <string>

namespace {

bool boolMember(const Json::Value& root, const char* key)
{
    const Json::Value& value = root[key];
    return value.isBool() && value.asBool();
}

// QString::fromUtf8 drops a byte-order mark at the start of its input; a
// name beginning with U+FEFF would lose one on every read and write of the
// state file. Leading marks are counted out and put back.
QString textOf(const std::string& text)
{
    static const std::string kMark = "\xEF\xBB\xBF";
    std::string::size_type start = 0;
    while (text.compare(start, kMark.size(), kMark) == 0)
        start += kMark.size();
    const auto rest = static_cast<int>(text.size() - start);
    return QString(static_cast<int>(start / kMark.size()), QChar(0xFEFF)) +
           QString::fromUtf8(text.data() + start, rest);
}

QString stringMember(const Json::Value& root, const char* key)
{
    const Json::Value& value = root[key];
    return value.isString() ? textOf(value.asString()) : QString();
}

Json::Value stringValue(const QString& text)
{
    return Json::Value(text.toStdString());
}

} // namespace

KDeskhiveState KDeskhiveState::fromJson(const Json::Value& root, const QString& baseDir)
{
    KDeskhiveState state;
    if (!root.isObject() || !boolMember(root, "IsLogined"))
        return state;
    state.logined = true;
    state.companyAccount = boolMember(root, "IsCompanyAccount");
    state.name = stringMember(root, "Name");
    state.id = stringMember(root, "Id");
    const QString avatar = stringMember(root, "UserAvatarImagePath");
    if (!avatar.isEmpty())
        state.avatarPath = QDir::cleanPath(QDir(baseDir).absoluteFilePath(avatar));
    return state;
}

KDeskhiveState KDeskhiveState::demoUser(const QString& avatarPath)
{
    KDeskhiveState state;
    state.logined = true;
    state.name = QStringLiteral("Demo User");
    state.id = QStringLiteral("demo-0001");
    state.avatarPath = avatarPath;
    return state;
}

Json::Value KDeskhiveState::userInfo() const
{
    Json::Value info(Json::objectValue);
    info["IsLogined"] = logined;
    info["IsCompanyAccount"] = companyAccount;
    info["UserAvatarImagePath"] = stringValue(avatarPath);
    info["Name"] = stringValue(name);
    info["Id"] = stringValue(id);
    return info;
}

bool KDeskhiveState::operator==(const KDeskhiveState& other) const
{
    return logined == other.logined && companyAccount == other.companyAccount &&
           avatarPath == other.avatarPath && name == other.name && id == other.id;
}
