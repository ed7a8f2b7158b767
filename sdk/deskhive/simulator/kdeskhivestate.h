#ifndef KDESKHIVESTATE_H
#define KDESKHIVESTATE_H

#include <QString>
#include <QStringList>

namespace Json {
class Value;
}

// The account as the simulator holds it. Nobody signed in has no name, id,
// avatar or company flag: those are kept empty whenever logined is false,
// so two signed-out states always compare equal.
class KDeskhiveState
{
public:
    bool logined = false;
    bool companyAccount = false;
    QString avatarPath;
    QString name;
    QString id;

    // Reads the members of a state file's root object. Members of the wrong
    // type count as absent; a relative avatar path is taken relative to
    // baseDir. A root that is not an object means signed out.
    static KDeskhiveState fromJson(const Json::Value& root, const QString& baseDir);
    static KDeskhiveState demoUser(const QString& avatarPath);

    // The client's user information: every member present, also signed
    // out. It is also what the simulator writes back into its state file.
    Json::Value userInfo() const;

    bool operator==(const KDeskhiveState& other) const;
    bool operator!=(const KDeskhiveState& other) const { return !(*this == other); }
};

#endif // KDESKHIVESTATE_H
