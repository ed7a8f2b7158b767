#ifndef KBLOCKINGWAIT_H
#define KBLOCKINGWAIT_H

#include <QDeadlineTimer>
#include <QThread>

#include <functional>

namespace AuthTest {

// Keeps the calling thread busy, its event loop unserved, until done()
// holds: how a test stands for a lengthy operation on the GUI thread.
// False when done() still does not hold after timeoutMs. Checks every
// pollMs.
inline bool blockUntil(const std::function<bool()>& done, int timeoutMs = 20000, int pollMs = 5)
{
    const QDeadlineTimer deadline(timeoutMs);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QThread::msleep(pollMs);
    }
    return true;
}

} // namespace AuthTest

#endif // KBLOCKINGWAIT_H
