#include "vex/klongtimeblockdetector.h"

#include <QLoggingCategory>
#include <QMetaObject>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

Q_LOGGING_CATEGORY(lcBlockDetector, "vex.blockdetector")

// Short enough that a block is seen soon after the threshold, long enough
// that the watchdog costs nothing worth measuring.
std::chrono::milliseconds pollInterval(int threshold)
{
    return std::chrono::milliseconds(std::clamp(threshold / 5, 5, 200));
}

} // namespace

struct KLongTimeBlockDetector::Private
{
    std::atomic<int> threshold{5000};
    std::atomic<int> ignoreDepth{0};
    // When ignoring last ended; a pending ping is timed from here at the
    // earliest, so the ignored part of a block is never reported.
    std::atomic<Clock::rep> ignoreEndedAt{Clock::time_point::min().time_since_epoch().count()};
    std::atomic<quint64> answered{0};
    quint64 sent = 0; // the watchdog's own; kept across restarts
    std::atomic<int> reports{0};
    std::atomic<int> suppressed{0};

    std::mutex mutex;
    std::condition_variable wake;
    bool stopping = false;
    std::thread watchdog;
};

KLongTimeBlockDetector::KLongTimeBlockDetector(QObject* parent)
    : QObject(parent)
    , d(new Private)
{}

KLongTimeBlockDetector::~KLongTimeBlockDetector()
{
    stop();
}

void KLongTimeBlockDetector::start()
{
    if (d->watchdog.joinable())
        return;
    d->stopping = false;
    d->watchdog = std::thread([this] { watch(); });
}

void KLongTimeBlockDetector::stop()
{
    if (!d->watchdog.joinable())
        return;
    {
        std::lock_guard<std::mutex> lock(d->mutex);
        d->stopping = true;
    }
    d->wake.notify_all();
    d->watchdog.join();
}

bool KLongTimeBlockDetector::isRunning() const
{
    return d->watchdog.joinable();
}

int KLongTimeBlockDetector::threshold() const
{
    return d->threshold.load();
}

void KLongTimeBlockDetector::setThreshold(int milliseconds)
{
    d->threshold.store(std::max(milliseconds, 1));
}

void KLongTimeBlockDetector::setIgnored(bool ignored)
{
    if (ignored) {
        d->ignoreDepth.fetch_add(1);
        return;
    }
    const int depth = d->ignoreDepth.load();
    if (depth <= 0)
        return;
    // Stamped before detection comes back: the watchdog reads the depth
    // first, so once it sees detection on it also sees this moment.
    if (depth == 1)
        d->ignoreEndedAt.store(Clock::now().time_since_epoch().count());
    d->ignoreDepth.store(depth - 1);
}

bool KLongTimeBlockDetector::isIgnored() const
{
    return d->ignoreDepth.load() > 0;
}

int KLongTimeBlockDetector::reportCount() const
{
    return d->reports.load();
}

int KLongTimeBlockDetector::suppressedCount() const
{
    return d->suppressed.load();
}

void KLongTimeBlockDetector::watch()
{
    enum class Block { None, Suppressed, Reported };
    Block block = Block::None;
    Clock::time_point sentAt;
    Clock::rep seenIgnoreEnd = d->ignoreEndedAt.load();
    bool pingNow = true;

    std::unique_lock<std::mutex> lock(d->mutex);
    while (!d->stopping) {
        const Clock::time_point now = Clock::now();
        // Answers arrive in the order of the pings, so the newest one
        // answered means the loop is running.
        if (pingNow || d->answered.load() >= d->sent) {
            pingNow = false;
            block = Block::None;
            sentAt = now;
            const quint64 ping = ++d->sent;
            QMetaObject::invokeMethod(
                this, [this, ping] { d->answered.store(ping); }, Qt::QueuedConnection);
        } else {
            const bool ignoring = d->ignoreDepth.load() > 0;
            const Clock::rep ignoreEnd = d->ignoreEndedAt.load();
            if (ignoreEnd != seenIgnoreEnd) {
                seenIgnoreEnd = ignoreEnd;
                if (block == Block::Suppressed)
                    block = Block::None;
            }
            const Clock::time_point since =
                std::max(sentAt, Clock::time_point(Clock::duration(ignoreEnd)));
            const int threshold = d->threshold.load();
            if (block == Block::None && now - since >= std::chrono::milliseconds(threshold)) {
                if (ignoring) {
                    block = Block::Suppressed;
                    d->suppressed.fetch_add(1);
                } else {
                    block = Block::Reported;
                    d->reports.fetch_add(1);
                    const int blocked =
                        int(std::chrono::duration_cast<std::chrono::milliseconds>(now - sentAt)
                                .count());
                    lock.unlock();
                    qCWarning(lcBlockDetector, "The event loop has not answered for %d ms",
                              blocked);
                    emit blockDetected(blocked);
                    lock.lock();
                }
            }
        }
        d->wake.wait_for(lock, pollInterval(d->threshold.load()), [this] { return d->stopping; });
    }
}
