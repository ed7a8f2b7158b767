#ifndef AUTHCOMMON_QCOMMJSON_H
#define AUTHCOMMON_QCOMMJSON_H

#include "authcommon_export.h"

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

AUTHCOMMON_EXPORT QString jsonValue2String(const Json::Value& value,
                                           const QString& defaultValue = QString());
AUTHCOMMON_EXPORT std::string jsonValue2StdString(const Json::Value& value,
                                                  const QString& defaultValue = QString());
AUTHCOMMON_EXPORT unsigned long long jsonValue2uint64(const Json::Value& value,
                                                      unsigned long long defaultValue = 0);

AUTHCOMMON_EXPORT QString jsonObject2String(const Json::Value& object, const QString& key,
                                            const QString& defaultValue = QString());
AUTHCOMMON_EXPORT unsigned long long jsonObject2Unint64(const Json::Value& object,
                                                        const QString& key,
                                                        unsigned long long defaultValue = 0);
AUTHCOMMON_EXPORT bool jsonGetBool(const Json::Value& object, const QString& key,
                                   bool defaultValue = false);
AUTHCOMMON_EXPORT QString jsonGetString(const Json::Value& object, const QString& key,
                                        const QString& defaultValue = QString());
AUTHCOMMON_EXPORT QString jsonArray2String(const Json::Value& array, unsigned int index,
                                           const QString& defaultValue = QString());

AUTHCOMMON_EXPORT QByteArray toByteArray(const QString& text);

} // namespace QComm

#endif // AUTHCOMMON_QCOMMJSON_H
