#ifndef KWARNINGCATCHER_H
#define KWARNINGCATCHER_H

#include <QStringList>

namespace AuthTest {

// Collects the warnings logged while it lives, from any thread, instead of
// printing them: the text, after "<category>: " unless the category is the
// default one. Not reentrant: one catcher at a time. QtWebEngine's word that
// the offscreen platform has no OpenGL is no warning of the code under test.
class KWarningCatcher
{
public:
    KWarningCatcher();
    ~KWarningCatcher();
    KWarningCatcher(const KWarningCatcher&) = delete;
    KWarningCatcher& operator=(const KWarningCatcher&) = delete;

    QStringList warnings() const;

private:
    QtMessageHandler m_previous;
};

} // namespace AuthTest

#endif // KWARNINGCATCHER_H
