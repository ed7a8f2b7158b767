// A module of the suite that shows a page of the service in the plug-in's
// web dialog, the way the suite's other modules do: it links libauthplugin
// for the exported KxWebDlg and the library's offline page. The stall
// measurement loads it once the plug-in is in the process, so that loading
// the plug-in stays part of what it measures.

#include <kxwebdlg.h>
#include <kxwebresources.h>

#include <QEvent>
#include <QTimer>

namespace {

// Closes the dialog a while after it has appeared, as a person would.
class KCloseWhenShown : public QObject
{
public:
    KCloseWhenShown(KxWebDlg* dialog, int afterMs)
        : m_dialog(dialog)
        , m_afterMs(afterMs)
    {
        dialog->installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Show)
            QTimer::singleShot(m_afterMs, m_dialog, [this] { m_dialog->accept(); });
        return false;
    }

private:
    KxWebDlg* m_dialog;
    int m_afterMs;
};

} // namespace

// Shows url in the web dialog (the library's offline page when url is
// empty), with the offline page as the fallback, and closes it closeAfterMs
// after it appeared. Returns the dialog's result.
extern "C" Q_DECL_EXPORT int kxShowWebDialog(const char* url, int closeAfterMs)
{
    const QUrl offline(kxGetWebResMuiFile(QStringLiteral("offline.html")));
    KxWebDlg dialog(url && *url ? QUrl(QString::fromUtf8(url)) : offline, nullptr, offline);
    KCloseWhenShown closer(&dialog, closeAfterMs);
    return dialog.exec();
}
