#include "vexlite/kshellapplication.h"

#include "khostaccountservice.h"

KShellApplication::KShellApplication(const QString& name, QObject* parent)
    : QObject(parent)
    , m_name(name)
{}

KShellApplication::~KShellApplication() = default;

IKAccountService* KShellApplication::accountService() const
{
    // Every application of the suite shares the one suite account.
    return KHostAccountService::instance();
}
