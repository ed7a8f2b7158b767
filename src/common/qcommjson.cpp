#include "qcommjson.h"

#include <json/json.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

Json::Value member(const Json::Value& object, const QString& key, const Json::Value& fallback)
{
    const QByteArray name = key.toUtf8();
    return object.get(name.constData(), name.constData() + name.size(), fallback);
}

// QString::fromUtf8 drops a byte-order mark at the start of its input, so
// a text beginning with U+FEFF would lose it each time it is read. Leading
// marks are counted out and put back.
QString textOf(const char* begin, const char* end)
{
    static constexpr char kMark[] = "\xEF\xBB\xBF";
    int marks = 0;
    while (end - begin >= 3 && std::equal(kMark, kMark + 3, begin)) {
        begin += 3;
        ++marks;
    }
    return QString(marks, QChar(0xFEFF)) + QString::fromUtf8(begin, static_cast<int>(end - begin));
}

QString textOf(const std::string& text)
{
    return textOf(text.data(), text.data() + text.size());
}

Json::Value stringValue(const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    return Json::Value(utf8.constData(), utf8.constData() + utf8.size());
}

// Truncation toward zero; from 2^63 up through the unsigned range. Values
// beyond what 64 bits hold saturate instead of being undefined.
unsigned long long realToUint64(double real)
{
    constexpr double kTwo63 = 9223372036854775808.0;
    constexpr double kTwo64 = 18446744073709551616.0;
    if (std::isnan(real))
        return 0;
    if (real >= kTwo64)
        return std::numeric_limits<unsigned long long>::max();
    if (real >= kTwo63)
        return static_cast<unsigned long long>(real);
    if (real < -kTwo63)
        return static_cast<unsigned long long>(std::numeric_limits<long long>::min());
    return static_cast<unsigned long long>(static_cast<long long>(real));
}

} // namespace

namespace QComm {

QString jsonValue2String(const Json::Value& value, const QString& defaultValue)
{
    switch (value.type()) {
    case Json::intValue:
        return QString::number(value.asLargestInt());
    case Json::uintValue:
        return QString::number(value.asLargestUInt());
    case Json::realValue:
        return QString::number(value.asDouble(), 'g', 6);
    case Json::stringValue: {
        const char* begin = nullptr;
        const char* end = nullptr;
        value.getString(&begin, &end);
        return textOf(begin, end);
    }
    case Json::booleanValue:
        return value.asBool() ? QStringLiteral("true") : QStringLiteral("false");
    case Json::objectValue:
        // The compact text callers log and compare, its line end included.
        return QString::fromStdString(Json::FastWriter().write(value));
    case Json::nullValue:
    case Json::arrayValue:
        break;
    }
    return defaultValue;
}

std::string jsonValue2StdString(const Json::Value& value, const QString& defaultValue)
{
    return jsonValue2String(value, defaultValue).toStdString();
}

unsigned long long jsonValue2uint64(const Json::Value& value, unsigned long long defaultValue)
{
    switch (value.type()) {
    case Json::intValue:
        return static_cast<unsigned long long>(value.asLargestInt());
    case Json::uintValue:
        return value.asLargestUInt();
    case Json::realValue:
        return realToUint64(value.asDouble());
    case Json::stringValue:
        // Not a base-10 unsigned number: 0, as toULongLong reports it.
        return QString::fromStdString(value.asString()).toULongLong(nullptr, 10);
    default:
        return defaultValue;
    }
}

QString jsonObject2String(const Json::Value& object, const QString& key,
                          const QString& defaultValue)
{
    if (!object.isObject())
        return defaultValue;
    return jsonValue2String(member(object, key, stringValue(defaultValue)), defaultValue);
}

unsigned long long jsonObject2Unint64(const Json::Value& object, const QString& key,
                                      unsigned long long defaultValue)
{
    if (!object.isObject())
        return defaultValue;
    return jsonValue2uint64(member(object, key, Json::Value()), defaultValue);
}

bool jsonGetBool(const Json::Value& object, const QString& key, bool defaultValue)
{
    if (!object.isObject())
        return defaultValue;
    const Json::Value value = member(object, key, Json::Value(defaultValue));
    // The library refuses texts and containers by throwing; they keep the default.
    if (!value.isConvertibleTo(Json::booleanValue))
        return defaultValue;
    return value.asBool();
}

QString jsonGetString(const Json::Value& object, const QString& key, const QString& defaultValue)
{
    if (!object.isObject())
        return defaultValue;
    const Json::Value value = member(object, key, stringValue(defaultValue));
    if (!value.isConvertibleTo(Json::stringValue))
        return defaultValue;
    return textOf(value.asString());
}

QString jsonArray2String(const Json::Value& array, unsigned int index, const QString& defaultValue)
{
    if (!array.isArray())
        return defaultValue;
    return jsonValue2String(array.get(index, stringValue(defaultValue)), defaultValue);
}

QByteArray toByteArray(const QString& text)
{
    return text.toUtf8();
}

} // namespace QComm
