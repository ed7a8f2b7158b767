#include "kwebdialogscenes.h"

#include "klocalserviceserver.h"

#include <kxwebdlg.h>
#include <kxwebresources.h>

#include <vexlite/hostcontrol.h>

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QEventLoop>
#include <QImage>
#include <QTcpServer>
#include <QTextStream>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

// An address nothing answers: a port that was free a moment ago.
QUrl unreachableUrl()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return QUrl(QStringLiteral("http://127.0.0.1:%1/service").arg(server.serverPort()));
}

// The launcher page of the service's local stand-in, the one the reference
// host serves, on a server started on first use.
QUrl launcherPageUrl()
{
    static KLocalServiceServer* server = [] {
        auto* started = new KLocalServiceServer(QCoreApplication::instance());
        started->listen();
        return started;
    }();
    return QUrl(server->jumpBase().toString() + QStringLiteral("/launcher_page"));
}

// Runs whenShown once the dialog is on screen (after its page loaded),
// inside its modal run, then closes it.
class ShownHook : public QObject
{
public:
    ShownHook(QDialog* dialog, std::function<void()> whenShown)
        : m_dialog(dialog)
        , m_whenShown(std::move(whenShown))
    {
        dialog->installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Show && !m_done) {
            m_done = true;
            QTimer::singleShot(0, this, [this] {
                m_whenShown();
                m_dialog->accept();
            });
        }
        return false;
    }

private:
    QDialog* m_dialog;
    std::function<void()> m_whenShown;
    bool m_done = false;
};

// Some engines (QtWebEngine) paint a page a while after it loaded, and in
// steps: waits (five seconds at most) until the dialog's picture has stayed
// the same for ten looks a hundredth of a second apart.
void waitForPaint(QDialog* dialog)
{
    QImage last;
    for (int same = 0, looks = 0; same < 10 && looks < 500; ++looks) {
        QEventLoop loop;
        QTimer::singleShot(10, &loop, &QEventLoop::quit);
        loop.exec();
        const QImage image = dialog->grab().toImage();
        same = image == last ? same + 1 : 0;
        last = image;
    }
}

bool shoot(QDialog* dialog, const QString& path, QTextStream& err)
{
    bool saved = false;
    ShownHook hook(dialog, [&] {
        waitForPaint(dialog);
        QImage image(dialog->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        dialog->render(&image);
        saved = image.save(path);
    });
    dialog->exec();
    if (!saved)
        err << "widgetgallery: cannot write " << path << '\n';
    return saved;
}

} // namespace

namespace KWebDialogScenes {

bool available()
{
    return true;
}

QDialog* createServiceDialog(QWidget* parent)
{
    return new KxWebDlg(launcherPageUrl(), parent,
                        QUrl(kxGetWebResMuiFile(QStringLiteral("offline.html"))));
}

QDialog* createOfflineDialog(QWidget* parent)
{
    return new KxWebDlg(unreachableUrl(), parent,
                        QUrl(kxGetWebResMuiFile(QStringLiteral("offline.html"))));
}

bool writeScreenshots(const QString& dir, QTextStream& err)
{
    const QString language = krt::hostcontrol::language();
    bool ok = true;
    for (const char* code : {"en_US", "zh_CN"}) {
        krt::hostcontrol::setLanguage(QLatin1String(code));
        const QString suffix = code[0] == 'e' ? QStringLiteral("en") : QStringLiteral("zh_CN");
        const std::unique_ptr<QDialog> service(createServiceDialog(nullptr));
        ok &= shoot(service.get(),
                    QDir(dir).filePath(QStringLiteral("webdlg-service-%1.png").arg(suffix)), err);
        const std::unique_ptr<QDialog> offline(createOfflineDialog(nullptr));
        ok &= shoot(offline.get(),
                    QDir(dir).filePath(QStringLiteral("webdlg-offline-%1.png").arg(suffix)), err);
    }
    krt::hostcontrol::setLanguage(language);
    return ok;
}

} // namespace KWebDialogScenes
