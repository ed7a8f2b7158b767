#include "kblockingwait.h"

#include <QDeadlineTimer>
#include <QThread>

bool blockUntil(const std::function<bool()>& done, int timeoutMs, int pollMs)
{
    const QDeadlineTimer deadline(timeoutMs);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QThread::msleep(pollMs);
    }
    return true;
}
