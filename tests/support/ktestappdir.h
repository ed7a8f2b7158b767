#ifndef KTESTAPPDIR_H
#define KTESTAPPDIR_H

#include <QDir>
#include <QProcessEnvironment>
#include <QStringList>

namespace AuthTest {

// A temporary application directory. Code that looks beside the running
// executable (the cloud library under addons/, the setup file under cfgs/,
// the suite's launcher) is tested by copying a probe program of the build
// into such a directory, laying out what it should find there and running
// it. Copies, not links: the application directory is the resolved path.
class KTestAppDir
{
public:
    struct Result
    {
        int exitCode = -1; // -1 when the program did not start, crashed or hung
        QString out;
        QString err;
    };

    // Creates a fresh directory below parentDir (a KTestEnvironment's root).
    explicit KTestAppDir(const QString& parentDir);

    QString path() const { return m_path; }
    QString filePath(const QString& relative) const { return QDir(m_path).filePath(relative); }

    // Copies the executable `name` from the directory of the running test.
    bool installExecutable(const QString& name) const;
    // Writes a file below the directory, creating its folders.
    bool writeFile(const QString& relative, const QByteArray& content,
                   bool executable = false) const
    {
        return write(filePath(relative), content, executable);
    }
    // Writes a file anywhere, creating its folders.
    static bool write(const QString& path, const QByteArray& content, bool executable = false);

    // Runs an executable of the directory (or any, given its absolute path)
    // with the test's environment plus env.
    Result run(const QString& name, const QStringList& args = QStringList(),
               const QProcessEnvironment& env = QProcessEnvironment(), int timeoutMs = 30000) const;

private:
    QString m_path;
};

} // namespace AuthTest

#endif // KTESTAPPDIR_H
