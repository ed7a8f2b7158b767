// A program of the suite in miniature, for what a test process cannot show
// about itself: answers that depend on where the program lives and what it
// is called, and process-wide copies taken on first use. It runs the
// operations of its command line in order and prints one JSON line with a
// text for each; "--no-app" first runs it without an application object.
// An unknown operation or missing operands end it with status 2.

#include "kingorelongtimedetecthelper.h"
#include "qcommcloudnodes.h"
#include "qcommfiletypes.h"
#include "qcommidentity.h"
#include "qcommopenfile.h"
#include "qcommprocess.h"
#include "qcommstores.h"
#include "qcommsyncswitches.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>
#include <QThreadPool>

#include <cstdio>
#include <optional>

namespace {

QString text(bool value)
{
    return value ? "true" : "false";
}

// The four lists, each joined as stored, in the order zento, tabix, slidex, pdf.
QString joined(const QList<QStringList>& lists)
{
    QStringList texts;
    for (const QStringList& list : lists)
        texts.append(list.join(';'));
    return texts.join('|');
}

// Runs the operation at args[at], moving at past its operands.
std::optional<QString> runOperation(const QStringList& args, int& at)
{
    using namespace QComm;
    const QString op = args.at(at++);
    const auto take = [&](int count) { return (at += count) <= args.size(); };
    const auto arg = [&](int back) { return args.at(at - back); };

    if (op == "--name" && take(1))
        QCoreApplication::setApplicationName(arg(1));
    else if (op == "--write" && take(2))
        writeNimboRegValue(arg(2), arg(1));
    else if (op == "--launch" && take(1)) {
        launchZentocloudsvr(arg(1));
        QThreadPool::globalInstance()->waitForDone();
    } else if (op == "--barrier" && take(2)) {
        // Probes started together meet here: each leaves its mark in the
        // folder and goes on once count marks are there.
        const QDir dir(arg(2));
        QFile(dir.filePath(QString::number(QCoreApplication::applicationPid())))
            .open(QIODevice::WriteOnly);
        const QDeadlineTimer deadline(30000);
        while (dir.entryList(QDir::Files).size() < arg(1).toInt() && !deadline.hasExpired())
            QThread::usleep(200);
    } else if (op == "--guard") {
        KIngoreLongTimeDetectHelper guard(true);
    } else if (op == "--lists")
        return joined({getZentoOpenAllSupportTypeList(), getTabixOpenAllSupportTypeList(),
                       getSlidexOpenAllSupportTypeList(), getPdfOpenAllSupportType()});
    else if (op == "--support-list") {
        QStringList zento, slidex, tabix, pdf;
        getZentoSupportList(zento, slidex, tabix, pdf);
        return joined({zento, tabix, slidex, pdf});
    } else if (op == "--apptype" && take(1))
        return getAppTypeBySuffix(arg(1));
    else if (op == "--vex" && take(1))
        return text(checkIsVexSupport(arg(1)));
    else if (op == "--check" && take(2))
        return text(checkIsZentoSupport(arg(2), arg(1)));
    else if (op == "--open-vex" && take(2))
        return text(openFileByVex(arg(2), arg(1))) + ' ' + openFileByVexCommand(arg(2), arg(1));
    else if (op == "--open-exe" && take(1))
        return text(openFileByLaunchExe(arg(1))) + ' ' + openFileByLaunchExeCommand(arg(1));
    else if (op == "deviceID")
        return deviceID();
    else if (op == "langID")
        return QString::number(langID());
    else if (op == "getWebKitUserAgent" && take(3))
        return getWebKitUserAgent(arg(3) == "nimbo", arg(2), arg(1));
    else if (op == "getUserAgent")
        return getUserAgent();
    else if (op == "cloudFileNodeName")
        return cloudFileNodeName(NodeRoamingName);
    else if (op == "syncSwitches")
        return text(isDesktopSyncEnable()) + ' ' + text(isV5MetadataEnable());
    else
        return std::nullopt;
    return QString();
}

} // namespace

int main(int argc, char** argv)
{
    const bool withApp = argc < 2 || QByteArray(argv[1]) != "--no-app";
    std::optional<QCoreApplication> app;
    if (withApp)
        app.emplace(argc, argv);
    QStringList args;
    for (int i = withApp ? 1 : 2; i < argc; ++i)
        args.append(QString::fromLocal8Bit(argv[i]));
    for (int at = 0; at < args.size();) {
        const std::optional<QString> result = runOperation(args, at);
        if (!result)
            return std::fprintf(stderr, "commprobe: bad operation %d\n", at), 2;
        std::printf("%s\n",
                    QJsonDocument(QJsonArray{*result}).toJson(QJsonDocument::Compact).data());
    }
    return 0;
}
