// A program of the suite in miniature, for what a test process cannot show
// about itself: answers that depend on where the program lives and what it
// is called, and process-wide copies taken on first use. It runs the
// operations of its command line in order and prints one JSON line for each.
//
//   commprobe [--no-app] OPERATION [OPERAND...] [OPERATION [OPERAND...]...]
//
// A bare name calls the helper of that name; "--" operations set the process
// up or combine several helpers. An unknown operation or missing operands
// end the probe with status 2.

#include "common/kingorelongtimedetecthelper.h"
#include "common/qcommcloudnodes.h"
#include "common/qcommfiletypes.h"
#include "common/qcommidentity.h"
#include "common/qcommmanualroaming.h"
#include "common/qcommopenfile.h"
#include "common/qcommprocess.h"
#include "common/qcommstores.h"
#include "common/qcommsyncswitches.h"

#include <vexlite/hostcontrol.h>

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThreadPool>

#include <cstdio>
#include <cstring>
#include <memory>

namespace {

QJsonValue lists(const QStringList& zento, const QStringList& tabix, const QStringList& slidex,
                 const QStringList& pdf)
{
    return QJsonObject{{"zento", QJsonArray::fromStringList(zento)},
                       {"tabix", QJsonArray::fromStringList(tabix)},
                       {"slidex", QJsonArray::fromStringList(slidex)},
                       {"pdf", QJsonArray::fromStringList(pdf)}};
}

QString text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

// Runs the operation at args[at], moving at past its operands; an undefined
// value for an unknown operation or missing operands.
QJsonValue runOperation(const QStringList& args, int& at)
{
    const QString op = args.at(at++);
    const auto take = [&](int count) {
        if (at + count > args.size())
            return false;
        at += count;
        return true;
    };
    const auto operand = [&](int back) { return args.at(at - back); };

    using namespace QComm;
    // Set-up and combined operations.
    if (op == "--name" && take(1)) {
        QCoreApplication::setApplicationName(operand(1));
        return QJsonValue::Null;
    }
    if (op == "--overseas" && take(1)) {
        krt::hostcontrol::setOverseasVersion(operand(1) == "true");
        return QJsonValue::Null;
    }
    if (op == "--write" && take(2)) {
        writeNimboRegValue(operand(2), operand(1));
        return QJsonValue::Null;
    }
    if (op == "--lists")
        return lists(getZentoOpenAllSupportTypeList(), getTabixOpenAllSupportTypeList(),
                     getSlidexOpenAllSupportTypeList(), getPdfOpenAllSupportType());
    if (op == "--support-list") {
        QStringList zento, slidex, tabix, pdf;
        getZentoSupportList(zento, slidex, tabix, pdf);
        return lists(zento, tabix, slidex, pdf);
    }
    if (op == "--apptype" && take(1))
        return getAppTypeBySuffix(operand(1));
    if (op == "--vex" && take(1))
        return checkIsVexSupport(operand(1));
    if (op == "--check" && take(2))
        return checkIsZentoSupport(operand(2), operand(1));
    if (op == "--open-vex" && take(2))
        return QJsonArray{openFileByVexCommand(operand(2), operand(1)),
                          openFileByVex(operand(2), operand(1))};
    if (op == "--open-exe" && take(1))
        return QJsonArray{openFileByLaunchExeCommand(operand(1)), openFileByLaunchExe(operand(1))};
    if (op == "--launch" && take(1)) {
        launchZentocloudsvr(operand(1));
        QThreadPool::globalInstance()->waitForDone();
        return QJsonValue::Null;
    }
    if (op == "--guard") {
        KIngoreLongTimeDetectHelper guard(true);
        return QJsonValue::Null;
    }

    // Helpers called by their own names, answering as text.
    if (op == "deviceID")
        return deviceID();
    if (op == "langID")
        return QString::number(langID());
    if (op == "getNimboCfgsValue" && take(2))
        return getNimboCfgsValue(operand(2), operand(1)).toString();
    if (op == "getWebKitUserAgent" && take(3))
        return getWebKitUserAgent(operand(3) == "1", operand(2), operand(1));
    if (op == "getUserAgent")
        return getUserAgent();
    if (op == "cloudFileNodeName" && take(1))
        return cloudFileNodeName(static_cast<CloudFileNodeType>(operand(1).toInt()));
    if (op == "isDesktopSyncEnable")
        return text(isDesktopSyncEnable());
    if (op == "isV5MetadataEnable")
        return text(isV5MetadataEnable());
    if (op == "getManualRoamingFiles" && take(1))
        return QJsonArray::fromStringList(getManualRoamingFiles(operand(1)));
    return QJsonValue::Undefined;
}

} // namespace

int main(int argc, char** argv)
{
    // "--no-app" first: run without an application object, as code called
    // before the host has one does.
    const bool withApp = argc < 2 || std::strcmp(argv[1], "--no-app") != 0;
    std::unique_ptr<QCoreApplication> app;
    if (withApp)
        app = std::make_unique<QCoreApplication>(argc, argv);

    QStringList args;
    for (int i = withApp ? 1 : 2; i < argc; ++i)
        args.append(QString::fromLocal8Bit(argv[i]));

    for (int at = 0; at < args.size();) {
        const QString op = args.at(at);
        const QJsonValue result = runOperation(args, at);
        if (result.isUndefined()) {
            std::fprintf(stderr, "commprobe: bad operation %s\n", qPrintable(op));
            return 2;
        }
        const QByteArray line = QJsonDocument(QJsonArray{result}).toJson(QJsonDocument::Compact);
        std::printf("%s\n", line.constData());
    }
    return 0;
}
