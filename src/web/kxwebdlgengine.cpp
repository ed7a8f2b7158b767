#include "kxwebdlgengine.h"

#include <QFile>

KxWebDlgEngine::KxWebDlgEngine(QObject* parent)
    : QObject(parent)
{
    // The module is a static library: its resources are there only once
    // something asks for them.
    Q_INIT_RESOURCE(web);
}

QString KxWebDlgEngine::script(const QString& name)
{
    QFile file(QStringLiteral(":/auth_plugin/web/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
