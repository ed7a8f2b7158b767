#ifndef KXAUTHWEBVIEW_H
#define KXAUTHWEBVIEW_H

#include "kxwebmimetypes.h"

#include <QWebView>

// The web view of the library's dialogs on QtWebKit. Its page at
// construction has plug-ins switched on and a KxWebPluginFactory, so pages
// can embed the registered items' objects by mime type. Both belong to that
// page: a page installed later with setPage() has neither.
class KxAuthWebView : public QWebView
{
    Q_OBJECT

public:
    explicit KxAuthWebView(QWidget* parent = nullptr);

    // The mime types the registered items declare (see KxWebMimeTypes).
    static QStringList availableMimeTypes() { return KxWebMimeTypes::available(); }
    static bool isMimeTypeAvailable(const QString& type)
    {
        return KxWebMimeTypes::isAvailable(type);
    }
};

#endif // KXAUTHWEBVIEW_H
