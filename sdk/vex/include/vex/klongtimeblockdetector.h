#ifndef VEX_KLONGTIMEBLOCKDETECTOR_H
#define VEX_KLONGTIMEBLOCKDETECTOR_H

#include "vex_global.h"

#include <QObject>

#include <memory>

// Watches the event loop of the thread the detector was created in: a
// watchdog thread posts a ping to it at short intervals, and a ping left
// unanswered for threshold() milliseconds is one block. Each block is
// counted and logged once; while ignoring is switched on, blocks are only
// counted as suppressed. A loop that is not running at all counts as blocked.
class VEX_EXPORT KLongTimeBlockDetector : public QObject
{
    Q_OBJECT

public:
    explicit KLongTimeBlockDetector(QObject* parent = nullptr);
    ~KLongTimeBlockDetector() override;

    void start();
    void stop();
    bool isRunning() const;

    int threshold() const;
    // Milliseconds; values below 1 are taken as 1. Applies to the next ping.
    void setThreshold(int milliseconds);

    // Switches nest: every true needs its false before blocks are reported
    // again. A false without a true is ignored. After the last false, a block
    // that is still going on is timed from that moment.
    void setIgnored(bool ignored);
    bool isIgnored() const;

    int reportCount() const;
    int suppressedCount() const;

signals:
    // Emitted on the watchdog thread, once per reported block, when the
    // block has lasted threshold() milliseconds.
    void blockDetected(int milliseconds);

private:
    void watch();

    struct Private;
    std::unique_ptr<Private> d;
};

#endif // VEX_KLONGTIMEBLOCKDETECTOR_H
