#include "qcommfiletypes.h"

#include "qcommstores.h"

namespace {

struct SupportLists
{
    QStringList zento;
    QStringList tabix;
    QStringList slidex;
    QStringList pdf;
};

QStringList readList(const char* key, const char* builtin)
{
    QString text = QComm::readNimboRegValue(QLatin1String(key), QString());
    if (text.isEmpty())
        text = QLatin1String(builtin);
    return text.split(QLatin1Char(';'), Qt::KeepEmptyParts);
}

// The lists as a consumer sees them on its first call.
SupportLists currentLists()
{
    return {QComm::getZentoOpenAllSupportTypeList(), QComm::getTabixOpenAllSupportTypeList(),
            QComm::getSlidexOpenAllSupportTypeList(), QComm::getPdfOpenAllSupportType()};
}

bool holds(const QStringList& list, const QString& suffix)
{
    return list.contains(suffix, Qt::CaseInsensitive);
}

bool isType(const QString& appType, const char* name)
{
    return appType.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

} // namespace

namespace QComm {

QStringList getZentoOpenAllSupportTypeList()
{
    static const QStringList list =
        readList("usercenter/allsupporttype/zentoopen",
                 "zento;zentt;doc;docx;dot;rtf;txt;htm;html;mht;mhtml;uof;xml;docm;zentos");
    return list;
}

QStringList getTabixOpenAllSupportTypeList()
{
    static const QStringList list =
        readList("usercenter/allsupporttype/tabixopen",
                 "tabix;tabixt;xls;xlsx;xlsm;xlsb;xlam;xltx;xltm;xls;xlt;xla;xlw;odc;uxdc;txt;xml;"
                 "htm;html;mht;mhtml;dbf;uof;prn;csv;tabixs;mdb;accdb;dqy;dbc;udl;dsn;odc;db;slk;"
                 "tabixx;xlk;dif");
    return list;
}

QStringList getSlidexOpenAllSupportTypeList()
{
    static const QStringList list =
        readList("usercenter/allsupporttype/slidexopen",
                 "deckr;deckrt;pptx;ppt;pptm;ppsx;pps;ppsm;potx;pot;potm;wpd;uof;deckrs");
    return list;
}

QStringList getPdfOpenAllSupportType()
{
    return readList("usercenter/allsupporttype/pdfopen", "pdf;epub;mobi");
}

void getZentoSupportList(QStringList& zento, QStringList& slidex, QStringList& tabix,
                         QStringList& pdf)
{
    static const SupportLists lists = currentLists();
    zento = lists.zento;
    slidex = lists.slidex;
    tabix = lists.tabix;
    pdf = lists.pdf;
}

QString getAppTypeBySuffix(const QString& suffix)
{
    static const SupportLists lists = currentLists();
    // Extensions several applications open go to the first in this order.
    if (holds(lists.zento, suffix))
        return QStringLiteral("zento");
    if (holds(lists.tabix, suffix))
        return QStringLiteral("tabix");
    if (holds(lists.slidex, suffix))
        return QStringLiteral("slidex");
    if (holds(lists.pdf, suffix))
        return QStringLiteral("pdf");
    return QString();
}

bool checkIsZentoSupport(const QString& appType, const QString& suffix)
{
    static const SupportLists lists = currentLists();
    const bool any = isType(appType, "nimbo");
    return ((any || isType(appType, "zento")) && holds(lists.zento, suffix)) ||
           ((any || isType(appType, "tabix")) && holds(lists.tabix, suffix)) ||
           ((any || isType(appType, "slidex")) && holds(lists.slidex, suffix)) ||
           ((any || isType(appType, "pdf")) && holds(lists.pdf, suffix));
}

bool checkIsVexSupport(const QString& suffix)
{
    static const SupportLists lists = currentLists();
    return holds(lists.zento, suffix) || holds(lists.tabix, suffix) ||
           holds(lists.slidex, suffix) || holds(lists.pdf, suffix);
}

} // namespace QComm
