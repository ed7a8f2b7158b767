#ifndef KSTUBPROGRAM_H
#define KSTUBPROGRAM_H

#include <QStringList>

namespace AuthTest {

// A stand-in for a program the code under test starts: a small shell script
// that records the arguments of each run, byte for byte, in a file of its
// own, so a test sees exactly what was passed and how often.
class KStubProgram
{
public:
    // Writes the script to path (folders created, made executable); runs are
    // recorded in recordDir, which the caller keeps apart per stub.
    KStubProgram(const QString& path, const QString& recordDir);

    bool isValid() const { return m_valid; }
    QString path() const { return m_path; }

    // The argument lists of the runs finished so far, in sorted() order:
    // runs started close together may finish in any order.
    QList<QStringList> calls() const;
    static QList<QStringList> sorted(QList<QStringList> calls);
    // Waits until at least count runs have finished; false on timeout.
    bool waitForCalls(int count, int timeoutMs = 10000) const;

private:
    QString m_path;
    QString m_recordDir;
    bool m_valid = false;
};

} // namespace AuthTest

#endif // KSTUBPROGRAM_H
