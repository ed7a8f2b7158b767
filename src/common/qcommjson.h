#ifndef QCOMMJSON_H
#define QCOMMJSON_H

#include <QByteArray>
#include <QString>

#include <string>

namespace Json {
class Value;
}

// Typed reads out of the cloud service's JSON replies. None of them throws:
// a missing member, a container of the wrong kind or a value without a
// conversion gives the caller's default.
namespace QComm {

QString jsonValue2String(const Json::Value& value, const QString& defaultValue = QString());
std::string jsonValue2StdString(const Json::Value& value, const QString& defaultValue = QString());
unsigned long long jsonValue2uint64(const Json::Value& value, unsigned long long defaultValue = 0);

QString jsonObject2String(const Json::Value& object, const QString& key,
                          const QString& defaultValue = QString());
unsigned long long jsonObject2Unint64(const Json::Value& object, const QString& key,
                                      unsigned long long defaultValue = 0);
bool jsonGetBool(const Json::Value& object, const QString& key, bool defaultValue = false);
QString jsonGetString(const Json::Value& object, const QString& key,
                      const QString& defaultValue = QString());
QString jsonArray2String(const Json::Value& array, unsigned int index,
                         const QString& defaultValue = QString());

QByteArray toByteArray(const QString& text);

} // namespace QComm

#endif // QCOMMJSON_H
