#ifndef KAUTHPLUGINLOADER_H
#define KAUTHPLUGINLOADER_H

#include <QLibrary>
#include <QString>

class IKAuthorizationHandler;

// Loads an authorization plug-in the way the suite does: QLibrary on a
// path, then the handler from its one exported entry point.
class KAuthPluginLoader
{
public:
    explicit KAuthPluginLoader(const QString& path);

    // The handler, or null with errorString() saying what went wrong.
    IKAuthorizationHandler* load();
    QString errorString() const { return m_error; }
    QString fileName() const;

private:
    QLibrary m_library;
    QString m_error;
};

#endif // KAUTHPLUGINLOADER_H
