#ifndef KTESTENVIRONMENT_H
#define KTESTENVIRONMENT_H

#include <QTemporaryDir>

namespace AuthTest {

// Keeps a suite away from the user's real files: a temporary home with its
// own XDG folders, a temporary working directory, and an empty host profile
// in a temporary profile directory. Restores nothing on destruction: the
// process ends with the suite.
class KTestEnvironment
{
public:
    KTestEnvironment();

    QString rootPath() const { return m_root.path(); }
    QString homePath() const { return m_root.filePath(QStringLiteral("home")); }
    QString profilePath() const { return m_root.filePath(QStringLiteral("profile")); }

    // Empties the host's state and its settings stores again (profile
    // directory unchanged).
    void resetHost() const;

private:
    QTemporaryDir m_root;
};

} // namespace AuthTest

#endif // KTESTENVIRONMENT_H
