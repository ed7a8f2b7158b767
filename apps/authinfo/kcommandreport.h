#ifndef KCOMMANDREPORT_H
#define KCOMMANDREPORT_H

class QString;
class QTextStream;

// Commands as the host sees them: the command classes the plug-in put into
// the host's command factory, and named commands passed through the
// handler's pre-hook.
class KCommandReport
{
public:
    // One class name a line, in registration order.
    static void printClasses(QTextStream& out);

    // Passes name through the handler as the host does before running a
    // command, and prints whether the host goes on, every address the
    // command had the desktop open (caught here: no browser starts) and the
    // suite user name afterwards.
    static void run(QTextStream& out, const QString& name);
};

#endif // KCOMMANDREPORT_H
