#include "kxwebmimetypes.h"

#include "ikxwebpluginfactoryitem.h"
#include "kxwebpluginfactoryitemregister.h"

QSet<QString> KxWebMimeTypes::m_mimeTypes;

QStringList KxWebMimeTypes::available()
{
    if (m_mimeTypes.isEmpty())
        fill();
    return m_mimeTypes.values();
}

bool KxWebMimeTypes::isAvailable(const QString& type)
{
    if (m_mimeTypes.isEmpty())
        fill();
    return m_mimeTypes.contains(type.toLower());
}

// With nothing registered the set stays empty, and the next call looks again.
void KxWebMimeTypes::fill()
{
    // A copy: an item may register or unregister others while it answers.
    const QList<IKxWebPluginFactoryItem*> items = getWebPluginFactoryItems();
    for (IKxWebPluginFactoryItem* item : items) {
        const QList<KxWebPluginMimeType> mimeTypes = item->plugin().mimeTypes;
        for (const KxWebPluginMimeType& mimeType : mimeTypes)
            m_mimeTypes.insert(mimeType.name.toLower());
    }
}
