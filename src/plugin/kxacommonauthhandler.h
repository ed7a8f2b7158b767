#ifndef KXACOMMONAUTHHANDLER_H
#define KXACOMMONAUTHHANDLER_H

#include "kcommonauthhandler.h"

// The handler the plug-in hands to the host: product names and the
// addresses of the service's pages, and the personal centre opened for the
// host command "OpenUserCenter".
class KXaCommonAuthHandler : public KCommonAuthHandler
{
public:
    KXaCommonAuthHandler() = default;
    ~KXaCommonAuthHandler() = default;

    QVariant productInfo(const QString& key, const QString& group, const QString& name) override;
    QVariant serverInfo(const QString& key, const QString& group, const QString& name) override;

    using KCommonAuthHandler::prehook;
    bool prehook(const QString& name, void* data) override;
};

#endif // KXACOMMONAUTHHANDLER_H
