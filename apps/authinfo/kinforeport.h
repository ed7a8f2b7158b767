#ifndef KINFOREPORT_H
#define KINFOREPORT_H

#include <QStringList>

class QTextStream;

// The product and server table: one line per information key with the
// answer's type and value, as the host receives them.
class KInfoReport
{
public:
    // Every key of the "Product" and "Server" groups the plug-in answers.
    static QStringList defaultKeys();

    static void print(QTextStream& out, const QStringList& keys);
};

#endif // KINFOREPORT_H
