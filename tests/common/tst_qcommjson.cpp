// Typed reads out of JSON replies: every type of value, missing members and
// containers of the wrong kind.

#include "common/qcommjson.h"

#include <json/json.h>

#include <QtTest>

#include <cmath>
#include <limits>

Q_DECLARE_METATYPE(Json::Value)

namespace {

Json::Value parse(const char* text)
{
    Json::Value value;
    Json::CharReaderBuilder builder;
    std::string errors;
    std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    const std::string s(text);
    if (!reader->parse(s.data(), s.data() + s.size(), &value, &errors))
        qFatal("bad test JSON %s: %s", text, errors.c_str());
    return value;
}

using ull = unsigned long long;
constexpr ull kMax = std::numeric_limits<ull>::max();

} // namespace

class TestQCommJson : public QObject
{
    Q_OBJECT

private slots:
    void valueToString_data()
    {
        QTest::addColumn<Json::Value>("value");
        QTest::addColumn<QString>("expected");

        const QString d = "dflt";
        QTest::newRow("null") << Json::Value() << d;
        QTest::newRow("int") << Json::Value(42) << "42";
        QTest::newRow("negative int") << Json::Value(-7) << "-7";
        QTest::newRow("int64 max") << Json::Value(Json::Int64(std::numeric_limits<qint64>::max()))
                                   << "9223372036854775807";
        QTest::newRow("int64 min") << Json::Value(Json::Int64(std::numeric_limits<qint64>::min()))
                                   << "-9223372036854775808";
        QTest::newRow("uint") << Json::Value(4294967295u) << "4294967295";
        QTest::newRow("uint64 max") << Json::Value(Json::UInt64(kMax)) << "18446744073709551615";
        QTest::newRow("real 0.1") << Json::Value(0.1) << "0.1";
        QTest::newRow("real, six significant digits") << Json::Value(1234567.0) << "1.23457e+06";
        QTest::newRow("real, whole") << Json::Value(2.0) << "2";
        QTest::newRow("real, small") << Json::Value(1e-7) << "1e-07";
        QTest::newRow("string") << Json::Value(u8"h\u00e9llo \u4e16\u754c")
                                << QString::fromUtf8(u8"h\u00e9llo \u4e16\u754c");
        QTest::newRow("empty string is not the default") << Json::Value("") << "";
        QTest::newRow("string with zero byte")
            << Json::Value(std::string("a\0b", 3)) << QString::fromUtf8("a\0b", 3);
        QTest::newRow("true") << Json::Value(true) << "true";
        QTest::newRow("false") << Json::Value(false) << "false";
        QTest::newRow("array") << parse("[1, 2]") << d;
        QTest::newRow("empty array") << Json::Value(Json::arrayValue) << d;
        QTest::newRow("object, compact with line end")
            << parse(R"({ "b": "x", "a": 1 })") << "{\"a\":1,\"b\":\"x\"}\n";
        QTest::newRow("empty object") << Json::Value(Json::objectValue) << "{}\n";
    }

    void valueToString()
    {
        QFETCH(Json::Value, value);
        QFETCH(QString, expected);

        QCOMPARE(QComm::jsonValue2String(value, "dflt"), expected);
        QCOMPARE(QComm::jsonValue2StdString(value, "dflt"), expected.toStdString());
    }

    void valueToUint64_data()
    {
        QTest::addColumn<Json::Value>("value");
        QTest::addColumn<ull>("expected");

        QTest::newRow("int") << Json::Value(42) << 42ull;
        QTest::newRow("negative int wraps") << Json::Value(-1) << kMax;
        QTest::newRow("int64 min") << Json::Value(Json::Int64(std::numeric_limits<qint64>::min()))
                                   << 9223372036854775808ull;
        QTest::newRow("uint64 max") << Json::Value(Json::UInt64(kMax)) << kMax;
        QTest::newRow("real truncated") << Json::Value(3.9) << 3ull;
        QTest::newRow("negative real toward zero") << Json::Value(-3.9) << ull(-3);
        QTest::newRow("real 2^63") << Json::Value(9223372036854775808.0) << 9223372036854775808ull;
        QTest::newRow("real 1e19") << Json::Value(1e19) << 10000000000000000000ull;
        QTest::newRow("real beyond 64 bits saturates") << Json::Value(1e30) << kMax;
        QTest::newRow("real NaN") << Json::Value(std::nan("")) << 0ull;
        QTest::newRow("string") << Json::Value("42") << 42ull;
        QTest::newRow("string max") << Json::Value("18446744073709551615") << kMax;
        QTest::newRow("string overflow") << Json::Value("18446744073709551616") << 0ull;
        QTest::newRow("string not a number") << Json::Value("x") << 0ull;
        QTest::newRow("string negative") << Json::Value("-1") << 0ull;
        QTest::newRow("string hexadecimal") << Json::Value("0x10") << 0ull;
        QTest::newRow("empty string") << Json::Value("") << 0ull;
        QTest::newRow("bool") << Json::Value(true) << 77ull;
        QTest::newRow("null") << Json::Value() << 77ull;
        QTest::newRow("array") << parse("[1]") << 77ull;
        QTest::newRow("object") << parse(R"({"a": 1})") << 77ull;
    }

    void valueToUint64()
    {
        QFETCH(Json::Value, value);
        QFETCH(ull, expected);

        QCOMPARE(QComm::jsonValue2uint64(value, 77), expected);
    }

    void objectMembers_data()
    {
        QTest::addColumn<Json::Value>("object");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("asString");    // jsonObject2String
        QTest::addColumn<QString>("libString");   // jsonGetString
        QTest::addColumn<ull>("asUint64");        // jsonObject2Unint64, default 9
        QTest::addColumn<bool>("asBoolDefFalse"); // jsonGetBool, default false
        QTest::addColumn<bool>("asBoolDefTrue");  // jsonGetBool, default true

        const Json::Value user = parse(u8R"({ "Name": "Ann", "Id": "12", "n": 5, "r": 0.5,
            "IsLogined": true, "off": false, "zero": 0, "nil": null, "list": [1],
            "obj": { "k": "v" }, "\u540d\u5b57": "\u5f20\u4e09" })");
        const QString d = "dflt";
        QTest::newRow("text") << user << "Name"
                              << "Ann"
                              << "Ann" << 0ull << false << true;
        QTest::newRow("numeric text") << user << "Id"
                                      << "12"
                                      << "12" << 12ull << false << true;
        QTest::newRow("integer") << user << "n"
                                 << "5"
                                 << "5" << 5ull << true << true;
        QTest::newRow("real") << user << "r"
                              << "0.5"
                              << "0.5" << 0ull << true << true;
        QTest::newRow("true") << user << "IsLogined"
                              << "true"
                              << "true" << 9ull << true << true;
        QTest::newRow("false") << user << "off"
                               << "false"
                               << "false" << 9ull << false << false;
        QTest::newRow("zero") << user << "zero"
                              << "0"
                              << "0" << 0ull << false << false;
        // A member that is there but null: the library's own reading of null.
        QTest::newRow("null member") << user << "nil" << d << "" << 9ull << false << false;
        QTest::newRow("array member") << user << "list" << d << d << 9ull << false << true;
        QTest::newRow("object member") << user << "obj"
                                       << "{\"k\":\"v\"}\n"
                                       << d << 9ull << false << true;
        QTest::newRow("missing") << user << "Missing" << d << d << 9ull << false << true;
        QTest::newRow("key is case-sensitive") << user << "name" << d << d << 9ull << false << true;
        QTest::newRow("non-ASCII key")
            << user << QString::fromUtf8(u8"\u540d\u5b57") << QString::fromUtf8(u8"\u5f20\u4e09")
            << QString::fromUtf8(u8"\u5f20\u4e09") << 0ull << false << true;
        QTest::newRow("null container")
            << Json::Value() << "Name" << d << d << 9ull << false << true;
        QTest::newRow("array container")
            << parse(R"([{"Name": "Ann"}])") << "Name" << d << d << 9ull << false << true;
        QTest::newRow("text container")
            << Json::Value("Name") << "Name" << d << d << 9ull << false << true;
    }

    void objectMembers()
    {
        QFETCH(Json::Value, object);
        QFETCH(QString, key);
        QFETCH(QString, asString);
        QFETCH(QString, libString);
        QFETCH(ull, asUint64);
        QFETCH(bool, asBoolDefFalse);
        QFETCH(bool, asBoolDefTrue);

        QCOMPARE(QComm::jsonObject2String(object, key, "dflt"), asString);
        QCOMPARE(QComm::jsonGetString(object, key, "dflt"), libString);
        QCOMPARE(QComm::jsonObject2Unint64(object, key, 9), asUint64);
        QCOMPARE(QComm::jsonGetBool(object, key, false), asBoolDefFalse);
        QCOMPARE(QComm::jsonGetBool(object, key, true), asBoolDefTrue);
    }

    void libraryFormatsNumbersForGetString()
    {
        // jsonGetString leaves number formatting to the library; the other
        // reader keeps six significant digits.
        const Json::Value object = parse(R"({"r": 1234567.0})");
        QCOMPARE(QComm::jsonObject2String(object, "r"), QString("1.23457e+06"));
        QCOMPARE(QComm::jsonGetString(object, "r"), QString("1234567.0"));
    }

    void arrayElements_data()
    {
        QTest::addColumn<Json::Value>("array");
        QTest::addColumn<uint>("index");
        QTest::addColumn<QString>("expected");

        const Json::Value list = parse(R"([1, "a", null, 0.25, {"k": 1}, [2]])");
        QTest::newRow("number") << list << 0u << "1";
        QTest::newRow("text") << list << 1u << "a";
        QTest::newRow("null element") << list << 2u << "dflt";
        QTest::newRow("real") << list << 3u << "0.25";
        QTest::newRow("object element") << list << 4u << "{\"k\":1}\n";
        QTest::newRow("array element") << list << 5u << "dflt";
        QTest::newRow("past the end") << list << 6u << "dflt";
        QTest::newRow("far past the end") << list << 4000000000u << "dflt";
        QTest::newRow("empty array") << Json::Value(Json::arrayValue) << 0u << "dflt";
        QTest::newRow("object, not an array") << parse(R"({"0": "x"})") << 0u << "dflt";
        QTest::newRow("null, not an array") << Json::Value() << 0u << "dflt";
        QTest::newRow("text, not an array") << Json::Value("abc") << 0u << "dflt";
    }

    void arrayElements()
    {
        QFETCH(Json::Value, array);
        QFETCH(uint, index);
        QFETCH(QString, expected);

        QCOMPARE(QComm::jsonArray2String(array, index, "dflt"), expected);
    }

    void byteArrayIsUtf8()
    {
        QCOMPARE(QComm::toByteArray(QString::fromUtf8(u8"\u00e9\u4e16")),
                 QByteArray("\xc3\xa9\xe4\xb8\x96"));
        QVERIFY(QComm::toByteArray(QString()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestQCommJson)
#include "tst_qcommjson.moc"
