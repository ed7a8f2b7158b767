#ifndef IKHOSTWEB_H
#define IKHOSTWEB_H

#include <QtGlobal>

class QDialog;
class QUrl;
class QWidget;

// The reference host's web module: a module of the suite in its own shared
// library that uses the plug-in's exported classes (the web dialog
// KxWebDlg, the network monitor KNetworkStateMonitor) the way the suite's
// other modules do. The host loads it with QLibrary after the plug-in and
// reaches it through this interface alone, so the host program itself has
// no link-time tie to the plug-in and still starts (and says so) when the
// plug-in is missing.
//
// The order of the virtual operations is the module's binary interface.
class IKHostWeb
{
public:
    // The plug-in's web dialog on url, with the library's offline page as
    // its fallback; owned by the caller. exec() runs it.
    virtual QDialog* createWebDialog(const QUrl& url, QWidget* parent) = 0;
    // The library's offline page for the interface language.
    virtual QUrl offlinePage() = 0;
    // The suite's network flag in the plug-in's monitor, and what the
    // monitor makes of it.
    virtual void setNetworkAvailable(bool available) = 0;
    virtual bool isNimboOffLineMode() = 0;

protected:
    ~IKHostWeb() = default;
};

// The module's one entry point, "GetHostWeb": the module's object, alive
// until the module is unloaded.
extern "C" {
typedef IKHostWeb* (*GetHostWebFunc)();
}

#endif // IKHOSTWEB_H
