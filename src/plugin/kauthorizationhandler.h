#ifndef KAUTHORIZATIONHANDLER_H
#define KAUTHORIZATIONHANDLER_H

#include <vexlite/ikauthorizationhandler.h>

#include <QHash>

// Answers information keys by group, remembering what host configuration
// answered and what nothing could answer. No virtual destructor: the table
// layout is shared with the host, and the handler is only ever destroyed
// through its concrete type.
class KAuthorizationHandler : public IKAuthorizationHandler
{
public:
    KAuthorizationHandler() = default;
    ~KAuthorizationHandler() = default;

    QVariant getInfo(const QString& key) override;
    bool prehook(const QString& name, bool flag, void* data) override;
    bool prehook(const QString& name, void* data, void* extra) override;
    QVariant productInfo(const QString& key, const QString& group, const QString& name) override;
    QVariant authInfo(const QString& key, const QString& group, const QString& name) override;
    QVariant serverInfo(const QString& key, const QString& group, const QString& name) override;
    QVariant defaultInfo(const QString& key, const QString& group, const QString& name) override;
    void insertStaticInfo(const QString& key, const QVariant& value) override;

    // Unanswerable keys remembered at most. A web page can ask for any key
    // (the bridge's readProductConfig); remembering each would let it grow
    // the cache without end. Later ones are routed again on every request,
    // without a warning.
    static constexpr int kMaxUnknownKeys = 1024;

private:
    QHash<QString, QVariant> m_infoCache;
    int m_unknownKeys = 0;
};

#endif // KAUTHORIZATIONHANDLER_H
