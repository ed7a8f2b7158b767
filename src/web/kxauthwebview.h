#ifndef KXAUTHWEBVIEW_H
#define KXAUTHWEBVIEW_H

#include <QSet>
#include <QString>
#include <QStringList>
#include <QWebView>

// The web view of the library's dialogs. Its page at construction has
// plug-ins switched on and a KxWebPluginFactory, so pages can embed the
// registered items' objects by mime type. Both belong to that page: a page
// installed later with setPage() has neither.
class KxAuthWebView : public QWebView
{
    Q_OBJECT

public:
    explicit KxAuthWebView(QWidget* parent = nullptr);

    // The mime types the registered items declare, lower case, each once.
    // Collected the first time something is registered and never again:
    // items registered later are not added.
    static QStringList availableMimeTypes();
    static bool isMimeTypeAvailable(const QString& type);

private:
    static void fillMimeTypes();

    static QSet<QString> m_mimeTypes;
};

#endif // KXAUTHWEBVIEW_H
