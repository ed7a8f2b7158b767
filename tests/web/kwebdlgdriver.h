#ifndef KWEBDLGDRIVER_H
#define KWEBDLGDRIVER_H

#include <QObject>
#include <QUrl>
#include <QVariant>

#include <functional>

class KxWebDlg;
class KxAuthWebView;
class QWebFrame;

namespace AuthTest {

class KTestEnvironment;

// The host as a web suite's test starts: reset, with fixed installation
// facts (channel "mc-test", version "12.1.0.17890", hardware id "hd-42"),
// and the cloud simulator's user signed out. False without the simulator.
bool resetWebHost(const KTestEnvironment& env);

// What one exec() of a web dialog did.
struct KExecRecord
{
    int result = -1;
    int shows = 0; // Show events during the run
};

// exec() blocks, so the test runs inside it: whenShown is called once the
// dialog is visible (queued after its first Show event, inside the modal
// run). If the dialog is still open afterwards it is closed with
// done(closeWith). Checks in whenShown record their failure and return;
// the dialog is closed all the same.
KExecRecord execShown(KxWebDlg& dialog, const std::function<void()>& whenShown = {},
                      int closeWith = 1);

KxAuthWebView* webView(KxWebDlg& dialog);
QWebFrame* mainFrame(KxWebDlg& dialog);
// Runs script in the dialog's page.
QVariant js(KxWebDlg& dialog, const QString& script);
// Clicks the centre of the page's first element matching selector.
bool clickElement(KxWebDlg& dialog, const QString& selector);

} // namespace AuthTest

#endif // KWEBDLGDRIVER_H
