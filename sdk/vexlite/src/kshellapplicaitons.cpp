#include "vexlite/kshellapplicaitons.h"

#include "khostprofile.h"
#include "vexlite/kshellapplication.h"

KShellApplicaitons* KShellApplicaitons::instance()
{
    static KShellApplicaitons apps;
    return &apps;
}

KShellApplicaitons::KShellApplicaitons() = default;

KShellApplicaitons::~KShellApplicaitons()
{
    qDeleteAll(m_apps);
}

KShellApplication* KShellApplicaitons::getActiveApp()
{
    return application(KHostProfile::instance().activeApp());
}

KShellApplication* KShellApplicaitons::application(const QString& name)
{
    if (name.isEmpty())
        return nullptr;
    KShellApplication*& app = m_apps[name];
    if (!app)
        app = new KShellApplication(name);
    return app;
}
