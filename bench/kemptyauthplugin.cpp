// The baseline of bench_pluginload: a plug-in with nothing of its own. It
// links the same libraries as libauthplugin, so loading it costs what the
// dependencies cost, and hands out a handler that answers nothing.

#include <vexlite/ikauthorizationhandler.h>

#include <QtGlobal>

namespace {

class KEmptyAuthHandler final : public IKAuthorizationHandler
{
public:
    QVariant getInfo(const QString& /*key*/) override { return QVariant(); }
    bool prehook(const QString& /*name*/, bool /*flag*/, void* /*data*/) override { return true; }
    bool prehook(const QString& /*name*/, void* /*data*/, void* /*extra*/) override { return true; }
    QVariant productInfo(const QString&, const QString&, const QString&) override
    {
        return QVariant();
    }
    QVariant authInfo(const QString&, const QString&, const QString&) override
    {
        return QVariant();
    }
    QVariant serverInfo(const QString&, const QString&, const QString&) override
    {
        return QVariant();
    }
    QVariant defaultInfo(const QString&, const QString&, const QString&) override
    {
        return QVariant();
    }
    void insertStaticInfo(const QString& /*key*/, const QVariant& /*value*/) override {}
};

} // namespace

extern "C" Q_DECL_EXPORT IKAuthorizationHandler* GetAuthorizationHandler()
{
    static KEmptyAuthHandler handler;
    return &handler;
}
