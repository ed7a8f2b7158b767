#ifndef QCOMM_KPROCESSLAUNCHER_H
#define QCOMM_KPROCESSLAUNCHER_H

#include <QRunnable>
#include <QString>

// Starts the cloud service from a thread of the pool, so the caller never
// waits for the system to spawn it. The pool deletes it after run().
class _KProcessLauncher : public QRunnable
{
public:
    _KProcessLauncher(const QString& arguments, const QString& bundlePath);
    ~_KProcessLauncher() override;

    // Starts "<bundle>/Contents/MacOS/zentocloudsvr" with the argument text
    // as its one argument. Whether it started is nobody's concern here.
    void run() override;

private:
    QString m_arguments;
    QString m_bundlePath;
};

#endif // QCOMM_KPROCESSLAUNCHER_H
