#ifndef KURLCATCHER_H
#define KURLCATCHER_H

#include <QList>
#include <QObject>
#include <QStringList>
#include <QUrl>

namespace AuthTest {

// Catches what QDesktopServices::openUrl hands to the system while it
// lives, for every scheme the plug-in might hand over: nothing in a test
// run opens a real browser or program. One catcher at a time.
class KUrlCatcher : public QObject
{
    Q_OBJECT

public:
    KUrlCatcher();
    ~KUrlCatcher() override;

    QList<QUrl> urls;

    // The addresses caught since the last call, fully encoded and
    // unwrapped().
    QStringList take();

    // An address the cloud simulator wrapped for automatic sign-in as
    // "wrapped:" and its target (percent-encoded); any other as it is.
    static QString unwrapped(const QString& address);

public slots:
    void open(const QUrl& url);
};

} // namespace AuthTest

#endif // KURLCATCHER_H
