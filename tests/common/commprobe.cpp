// commprobe: calls helpers of the common library in a process of its own and
// prints one line per call, so suites can see what a fresh process (empty
// caches, its own application directory) gets.
//
//   commprobe CALL [ARG...] [CALL [ARG...]...]
//
// Unknown calls or missing arguments end the probe with status 2.

#include "common/qcommcloudnodes.h"
#include "common/qcommidentity.h"
#include "common/qcommmanualroaming.h"
#include "common/qcommsyncswitches.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <cstdio>
#include <functional>
#include <map>

namespace {

using Call = std::function<QString(const QStringList& args)>;

struct Entry
{
    int arity;
    Call call;
};

QString yesNo(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

const std::map<QString, Entry>& calls()
{
    using namespace QComm;
    static const std::map<QString, Entry> table{
        {"deviceID", {0, [](const QStringList&) { return deviceID(); }}},
        {"langID", {0, [](const QStringList&) { return QString::number(langID()); }}},
        {"getNimboCfgsValue",
         {2, [](const QStringList& a) { return getNimboCfgsValue(a[0], a[1]).toString(); }}},
        {"getWebKitUserAgent",
         {3, [](const QStringList& a) { return getWebKitUserAgent(a[0] == "1", a[1], a[2]); }}},
        {"getUserAgent", {0, [](const QStringList&) { return getUserAgent(); }}},
        {"cloudFileNodeName",
         {1,
          [](const QStringList& a) {
              return cloudFileNodeName(static_cast<CloudFileNodeType>(a[0].toInt()));
          }}},
        {"isDesktopSyncEnable",
         {0, [](const QStringList&) { return yesNo(isDesktopSyncEnable()); }}},
        {"isV5MetadataEnable", {0, [](const QStringList&) { return yesNo(isV5MetadataEnable()); }}},
        {"getManualRoamingFiles",
         {1,
          [](const QStringList& a) {
              return QString::fromUtf8(
                  QJsonDocument(QJsonArray::fromStringList(getManualRoamingFiles(a[0])))
                      .toJson(QJsonDocument::Compact));
          }}},
    };
    return table;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QStringList args = QCoreApplication::arguments().mid(1);
    while (!args.isEmpty()) {
        const QString name = args.takeFirst();
        const auto found = calls().find(name);
        if (found == calls().end() || args.size() < found->second.arity) {
            std::fprintf(stderr, "commprobe: bad call %s\n", qPrintable(name));
            return 2;
        }
        const QString line = found->second.call(args.mid(0, found->second.arity)) + '\n';
        args = args.mid(found->second.arity);
        std::fputs(line.toUtf8().constData(), stdout);
    }
    return 0;
}
