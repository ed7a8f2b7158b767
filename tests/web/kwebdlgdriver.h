#ifndef KWEBDLGDRIVER_H
#define KWEBDLGDRIVER_H

#include <QObject>
#include <QRect>
#include <QUrl>
#include <QVariant>

#include <functional>

class KxWebDlg;
class KxWebDlgEngine;
class QWidget;

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

// What follows hides the web engine, so one suite runs on either.
KxWebDlgEngine* webEngine(KxWebDlg& dialog);
QWidget* webView(KxWebDlg& dialog);
// Runs script in the dialog's page, as a whole program in the page's global
// scope, and gives its value; where that is a Promise (as every bridge
// call's is on QtWebEngine), the value it resolves with. Null after a
// script error.
QVariant js(KxWebDlg& dialog, const QString& script);
// The text of the page's first element matching selector, its place in the
// view, and a click on its centre (false where it has no area).
QString pageText(KxWebDlg& dialog, const QString& selector);
QRect elementRect(KxWebDlg& dialog, const QString& selector);
bool clickElement(KxWebDlg& dialog, const QString& selector);
// Where the page takes keys and clicks.
QWidget* inputWidget(KxWebDlg& dialog);
// Pop-up pages of the dialog's page alive now, and the most it keeps.
int popupCount(KxWebDlg& dialog);
int maxPopups();

} // namespace AuthTest

#endif // KWEBDLGDRIVER_H
