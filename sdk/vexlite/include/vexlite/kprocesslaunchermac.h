#ifndef VEXLITE_KPROCESSLAUNCHERMAC_H
#define VEXLITE_KPROCESSLAUNCHERMAC_H

#include "vexlite_global.h"

#include <QString>

// The host's way to start a helper process that outlives the caller.
class VEXLITE_EXPORT KProcessLauncherMac
{
public:
    // Starts executable, detached, with argumentText as its one argument:
    // the text is handed over whole, spaces and quotes included, and no
    // shell sees it. False when the executable could not be started.
    static bool LaunchProcessByNSTask(const QString& executable, const QString& argumentText);
};

#endif // VEXLITE_KPROCESSLAUNCHERMAC_H
