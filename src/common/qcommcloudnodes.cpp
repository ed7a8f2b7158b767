#include "qcommcloudnodes.h"

#include "qcommstores.h"

#include <vexlite/krtproduct.h>

#include <QByteArray>

namespace {

// The edition decides, not the interface language; it is asked each time.
QString byEdition(const QString& international, const QString& domestic)
{
    return krt::product::isOverseasVersion() ? international : domestic;
}

QString roamingName()
{
    const QString fallback = QStringLiteral("自动备份同步");
    const QString stored = QComm::readNimboRegValue(
        QStringLiteral("NimboRoamingName"), QString::fromLatin1(fallback.toUtf8().toBase64()));
    // The value is Base64 of UTF-8; the decoder is lenient, and whatever it
    // yields is read up to its first zero byte.
    const QString name = QString::fromUtf8(QByteArray::fromBase64(stored.toUtf8()).constData());
    return name.isEmpty() ? fallback : name;
}

QString topLevelName(QComm::CloudFileNodeType type)
{
    using namespace QComm;
    switch (type) {
    case NodeMyCloud:
        return byEdition(QStringLiteral("My Cloud"), QStringLiteral("我的云文档"));
    case NodeTeamDocument:
        return byEdition(QStringLiteral("Team Document"), QStringLiteral("团队文档"));
    case NodeRoamingDocument:
        return byEdition(QStringLiteral("Roaming Document"), QStringLiteral("漫游文档"));
    case NodeCloudBackup:
        return byEdition(QStringLiteral("Cloud Backup"), QStringLiteral("云端备份"));
    case NodeAutoUploadDocument:
        return byEdition(QStringLiteral("Auto Upload Document"), QStringLiteral("自动上传文档"));
    case NodeShareToMe:
        return byEdition(QStringLiteral("Share To Me"), QStringLiteral("共享给我"));
    case NodeShareWithMe:
        return byEdition(QStringLiteral("Share With Me"), QStringLiteral("与我共享"));
    case NodeMyShare:
        return byEdition(QStringLiteral("My Share"), QStringLiteral("我的分享"));
    case NodeShareLink:
        return byEdition(QStringLiteral("Share Link"), QStringLiteral("分享链接"));
    case NodeDesktopBackup:
        return byEdition(QStringLiteral("Desktop Backup"), QStringLiteral("桌面文档"));
    case NodeWeChatDocument:
        return QStringLiteral("微信文档");
    case NodeTencentDocument:
        return QStringLiteral("腾讯文档");
    case NodeApplications:
        return QStringLiteral("应用");
    case NodeBackupCenter:
        return QStringLiteral("备份中心");
    case NodeCloudDisk:
        return QStringLiteral("Zento网盘");
    case NodeZentoCloudDocument:
        return byEdition(QStringLiteral("My Cloud"), QStringLiteral("Zento云文档"));
    default:
        return QString();
    }
}

QString spaceName(QComm::CloudFileNodeType type)
{
    using namespace QComm;
    switch (type) {
    case NodePersonalSpace:
        return byEdition(QStringLiteral("Personal Space"), QStringLiteral("私人空间"));
    case NodeRoamingBox:
        return byEdition(QStringLiteral("Roaming Box"), QStringLiteral("漫游箱"));
    case NodeDocumentRoaming:
        return byEdition(QStringLiteral("Document Roaming"), QStringLiteral("文档漫游"));
    case NodeNimboAddress:
        return byEdition(QStringLiteral("My Nimbo Address"), QStringLiteral("我收到的Nimbo地址"));
    case NodeAutoUploaded:
        return byEdition(QStringLiteral("Auto Uploaded"), QStringLiteral("我的设备"));
    case NodeRoamingName: {
        static const QString name = roamingName();
        return name;
    }
    case NodeEnterpriseDocument:
        return QStringLiteral("企业文档");
    case NodeDesktop:
        return QStringLiteral("桌面");
    default:
        return QString();
    }
}

QString localSourceName(QComm::CloudFileNodeType type)
{
    using namespace QComm;
    switch (type) {
    case NodeMyDocuments:
        return byEdition(QStringLiteral("Invalid"), QStringLiteral("我的文档"));
    case NodeRadarBackup:
        return QStringLiteral("雷达备份");
    case NodeMyDesktop:
        return QStringLiteral("我的桌面");
    case NodeWeChatReceived:
        return QStringLiteral("微信接收");
    case NodeQQReceived:
        return QStringLiteral("QQ接收");
    case NodeMyDownloads:
        return QStringLiteral("我的下载");
    default:
        return QString();
    }
}

} // namespace

namespace QComm {

QString cloudFileNodeName(CloudFileNodeType type)
{
    if (type >= NodeMyCloud && type <= NodeZentoCloudDocument)
        return topLevelName(type);
    if (type >= NodePersonalSpace && type <= NodeDesktop)
        return spaceName(type);
    if (type >= NodeMyDocuments && type <= NodeMyDownloads)
        return localSourceName(type);
    if (type == NodeIntroduction)
        return byEdition(QStringLiteral("Cloud Document Introduction"),
                         QStringLiteral("云文档使用简介"));
    return QString();
}

} // namespace QComm
