#ifndef KCOMMANDFACTORYITEM_H
#define KCOMMANDFACTORYITEM_H

#include "kxplugintranslator.h"

#include <vex/kcommandfactory.h>
#include <vex/kcommandfactoryitembase.h>

#include <QDebug>
#include <QObject>
#include <QString>

// Makes Command known to the host's command factory under its class name
// for as long as the item lives, bound to the host window class Window it
// needs. Items are static objects: they register when the library loads
// and unregister when it unloads.
template <typename Command, typename Window>
class KCommandFactoryItem : public KCommandFactoryItemBase
{
public:
    KCommandFactoryItem(const QString& className, const QString& windowClassName)
        : KCommandFactoryItemBase(className)
        , m_windowClassName(windowClassName)
    {
        KCommandFactory::registerCommand(this);
    }

    ~KCommandFactoryItem() { KCommandFactory::unregisterCommand(this); }

    KCommandFactoryItem(const KCommandFactoryItem&) = delete;
    KCommandFactoryItem& operator=(const KCommandFactoryItem&) = delete;

    // A new Command on the window and parent, in that order, or null with a
    // warning when host is not a Window.
    KCommand* createInstance(QObject* host, QObject* parent) override
    {
        if (auto* window = static_cast<Window*>(Window::staticMetaObject.cast(host))) {
            // Before the command sets its texts.
            kxInstallPluginTranslator();
            return new Command(window, parent);
        }
        qWarning().noquote() << className() << "need a host" << m_windowClassName;
        return nullptr;
    }

private:
    QString m_windowClassName;
};

#endif // KCOMMANDFACTORYITEM_H
