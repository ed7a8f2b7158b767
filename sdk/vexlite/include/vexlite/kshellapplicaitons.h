#ifndef VEXLITE_KSHELLAPPLICAITONS_H
#define VEXLITE_KSHELLAPPLICAITONS_H

#include "vexlite_global.h"

#include <QHash>
#include <QObject>
#include <QString>

class KShellApplication;

// The applications of the shell process and which of them the user is
// working in. The class name is the host's own spelling and stays so.
class VEXLITE_EXPORT KShellApplicaitons : public QObject
{
    Q_OBJECT

public:
    static KShellApplicaitons* instance();

    // The application the user works in; null when the host has none
    // active (krt::hostcontrol::setActiveApp("")).
    KShellApplication* getActiveApp();
    // The application of that name, created on first request; null for an
    // empty name.
    KShellApplication* application(const QString& name);

private:
    KShellApplicaitons();
    ~KShellApplicaitons() override;

    QHash<QString, KShellApplication*> m_apps;
};

#endif // VEXLITE_KSHELLAPPLICAITONS_H
