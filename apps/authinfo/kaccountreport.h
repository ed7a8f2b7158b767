#ifndef KACCOUNTREPORT_H
#define KACCOUNTREPORT_H

class QTextStream;

// The account as the plug-in sees it: whether the suite's cloud library was
// found and loaded, whether someone is signed in, and who.
class KAccountReport
{
public:
    static void print(QTextStream& out);
};

#endif // KACCOUNTREPORT_H
