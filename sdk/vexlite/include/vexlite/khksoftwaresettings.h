#ifndef VEXLITE_KHKSOFTWARESETTINGS_H
#define VEXLITE_KHKSOFTWARESETTINGS_H

#include "vexlite_global.h"

#include <QSettings>

// The suite's registry-like settings store: a root and a backslash-separated
// key path ("Corvane\ZentoCloud"), opened as a group of a real settings file.
// Each root is its own file in the host profile's "stores" directory, so
// values persist across objects and processes; child keys of the path are
// the groups below it (childGroups()).
class VEXLITE_EXPORT KHKSoftwareSettings : public QSettings
{
    Q_OBJECT

public:
    enum HKEY {
        CurrentUser = 0,  // per user; every write goes here
        LocalMachine = 1, // machine-wide; read as a fallback only
    };

    KHKSoftwareSettings(HKEY root, const QString& keyPath, QObject* parent = nullptr);
    ~KHKSoftwareSettings() override;

    // The file that backs a root in the current host profile.
    static QString storeFileName(HKEY root);
};

#endif // VEXLITE_KHKSOFTWARESETTINGS_H
