#ifndef VEXLITE_IKAUTHORIZATIONHANDLER_H
#define VEXLITE_IKAUTHORIZATIONHANDLER_H

#include <QString>
#include <QVariant>

// The handler an authorization plug-in hands to the host. The host answers
// information requests through getInfo() and passes named commands through
// the prehook entries before running them. The plug-in owns the object; the
// host never deletes it, hence the protected, non-virtual destructor.
class IKAuthorizationHandler
{
public:
    virtual QVariant getInfo(const QString& key) = 0;
    virtual bool prehook(const QString& name, bool flag, void* data) = 0;
    virtual bool prehook(const QString& name, void* data, void* extra) = 0;
    virtual QVariant productInfo(const QString& key, const QString& group, const QString& name) = 0;
    virtual QVariant authInfo(const QString& key, const QString& group, const QString& name) = 0;
    virtual QVariant serverInfo(const QString& key, const QString& group, const QString& name) = 0;
    virtual QVariant defaultInfo(const QString& key, const QString& group, const QString& name) = 0;
    virtual void insertStaticInfo(const QString& key, const QVariant& value) = 0;

protected:
    IKAuthorizationHandler() = default;
    ~IKAuthorizationHandler() = default;
    IKAuthorizationHandler(const IKAuthorizationHandler&) = default;
    IKAuthorizationHandler& operator=(const IKAuthorizationHandler&) = default;
};

// The plug-in's one exported entry point, resolved by this plain name.
extern "C" typedef IKAuthorizationHandler* (*GetAuthorizationHandlerFunc)();

#endif // VEXLITE_IKAUTHORIZATIONHANDLER_H
