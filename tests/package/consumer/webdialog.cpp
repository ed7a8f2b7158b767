// The module's pages in the plug-in's web dialog, derived from it across
// the library's boundary, with a native object of the module's registered
// for them.

// Include guards a module may well use for headers of its own (see main.cpp).
#define IKXWEBPLUGINFACTORYITEM_H
#define KXNIMBOCUSTOMFRAMEDLG_H
#define KXWEBDLG_H
#define KXWEBPLUGINFACTORYITEMREGISTER_H
#define KXWEBRESOURCES_H

#include "webdialog.h"

#include <ikxwebpluginfactoryitem.h>
#include <kxwebdlg.h>
#include <kxwebpluginfactoryitemregister.h>
#include <kxwebresources.h>

#include <QShowEvent>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

namespace {

const char kMimeType[] = "application/x-zento-consumer";

// A kind of native object the module's pages embed, registered the way the
// suite's modules do: a static register beside the item.
class ConsumerItem : public IKxWebPluginFactoryItem
{
public:
    QObject* create(const QString&, const QUrl&, const QStringList&, const QStringList&) override
    {
        return nullptr;
    }
    QWebPluginFactory::Plugin plugin() override
    {
        QWebPluginFactory::MimeType type;
        type.name = QLatin1String(kMimeType);
        QWebPluginFactory::Plugin plugin;
        plugin.name = QStringLiteral("consumer");
        plugin.mimeTypes << type;
        return plugin;
    }
};
const KxWebPluginFactoryItemRegister registered(new ConsumerItem);

// Derived across the library's boundary: the page's bridge reaches the
// override, and the dialog closes itself once it is on screen.
class ConsumerDialog : public KxWebDlg
{
public:
    using KxWebDlg::KxWebDlg;

    QString version() override { return QStringLiteral("consumer"); }

    QSize shownSize;

protected:
    void showEvent(QShowEvent* event) override
    {
        KxWebDlg::showEvent(event);
        shownSize = size();
        QTimer::singleShot(0, this, [this] { accept(); });
    }
};

// The page asks the bridge and shows the answers as its title, which the
// dialog takes over.
QUrl writePage(const QTemporaryDir& dir)
{
    QFile page(dir.filePath(QStringLiteral("page.html")));
    if (!page.open(QIODevice::WriteOnly))
        return QUrl();
    page.write(QByteArray("<script>document.title = [zentoctx.isMimeTypeAvailable('") + kMimeType +
               "'), zentoctx.isMimeTypeAvailable('application/x-other'), zentoctx.version()]"
               ".join(' ');</script>");
    return QUrl::fromLocalFile(page.fileName());
}

} // namespace

void useWebDialog(QTextStream& out)
{
    const QString offline = kxGetWebResMuiFile(QStringLiteral("offline.html"));
    out << "offline page: " << offline << '\n';

    const QTemporaryDir dir;
    ConsumerDialog dialog(writePage(dir), nullptr, QUrl(offline));
    dialog.resize(480, 320);
    out << "dialog classes: " << dialog.metaObject()->className() << " < "
        << dialog.metaObject()->superClass()->className() << '\n';
    QWidget* widget = &dialog;
    out << "cast to the base: " << (dynamic_cast<KxNimboCustomFrameDlg*>(widget) ? "yes" : "no")
        << '\n';
    const int result = dialog.exec();
    out << "dialog: " << (result == QDialog::Accepted ? "accepted" : "rejected") << ", shown "
        << dialog.shownSize.width() << 'x' << dialog.shownSize.height() << '\n';
    out << "page saw: " << dialog.windowTitle() << '\n';
}
