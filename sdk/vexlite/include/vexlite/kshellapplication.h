#ifndef VEXLITE_KSHELLAPPLICATION_H
#define VEXLITE_KSHELLAPPLICATION_H

#include "vexlite_global.h"

#include <QObject>
#include <QString>

class IKAccountService;

// One application of the suite inside the shell process ("zento", "tabix",
// "slidex", "pdf"). Owned by KShellApplicaitons.
class VEXLITE_EXPORT KShellApplication : public QObject
{
    Q_OBJECT

public:
    explicit KShellApplication(const QString& name, QObject* parent = nullptr);
    ~KShellApplication() override;

    QString name() const { return m_name; }
    // The suite account as this application sees it; never null.
    IKAccountService* accountService() const;

private:
    QString m_name;
};

#endif // VEXLITE_KSHELLAPPLICATION_H
