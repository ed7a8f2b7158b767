#ifndef KXWEBMIMETYPES_H
#define KXWEBMIMETYPES_H

#include <QSet>
#include <QString>
#include <QStringList>

// The mime types the registered web plug-in items declare, lower case, each
// once: what the web views (KxAuthWebView::availableMimeTypes) and the
// bridge answer, whatever the engine. Collected the first time something is
// registered and never again: items registered later are not added.
class KxWebMimeTypes
{
public:
    static QStringList available();
    static bool isAvailable(const QString& type);

private:
    static void fill();

    static QSet<QString> m_mimeTypes;
};

#endif // KXWEBMIMETYPES_H
