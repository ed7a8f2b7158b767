#include "khostweb.h"

#include <knetworkstatemonitor.h>
#include <kxwebdlg.h>
#include <kxwebresources.h>

#include <QUrl>

KHostWeb* KHostWeb::instance()
{
    static KHostWeb module;
    return &module;
}

QDialog* KHostWeb::createWebDialog(const QUrl& url, QWidget* parent)
{
    return new KxWebDlg(url, parent, offlinePage());
}

QUrl KHostWeb::offlinePage()
{
    return QUrl(kxGetWebResMuiFile(QStringLiteral("offline.html")), QUrl::TolerantMode);
}

void KHostWeb::setNetworkAvailable(bool available)
{
    KNetworkStateMonitor::instance()->setNetworkAvailable(available);
}

bool KHostWeb::isNimboOffLineMode()
{
    return KNetworkStateMonitor::instance()->isNimboOffLineMode();
}

extern "C" Q_DECL_EXPORT IKHostWeb* GetHostWeb()
{
    return KHostWeb::instance();
}
