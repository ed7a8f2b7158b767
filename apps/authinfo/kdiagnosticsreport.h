#ifndef KDIAGNOSTICSREPORT_H
#define KDIAGNOSTICSREPORT_H

#include <QCoreApplication>

class QTextStream;

// What the cloud client's helpers make of this installation: its identity,
// language and user agents, where the client keeps its files, and whether
// the new user-data layout is in force. One line per item. Asking for the
// directories creates them, as it does for the client; those that could not
// be created are marked, and print() returns false.
class KDiagnosticsReport
{
    Q_DECLARE_TR_FUNCTIONS(KDiagnosticsReport)

public:
    static bool print(QTextStream& out);
};

#endif // KDIAGNOSTICSREPORT_H
