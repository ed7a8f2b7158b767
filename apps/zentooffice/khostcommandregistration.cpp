#include "khostcommandregistration.h"

#include "khostaccountcommand.h"
#include "zentoofficelogging.h"

#include <vex/kcommandfactory.h>
#include <vex/kcommandfactoryitembase.h>
#include <vex/kmainwindow.h>

namespace {

class KHostCommandItem final : public KCommandFactoryItemBase
{
public:
    KHostCommandItem(const QString& className, KHostAccountCommand::Action action)
        : KCommandFactoryItemBase(className)
        , m_action(action)
    {
        KCommandFactory::registerCommand(this);
    }
    ~KHostCommandItem() { KCommandFactory::unregisterCommand(this); }

    KHostCommandItem(const KHostCommandItem&) = delete;
    KHostCommandItem& operator=(const KHostCommandItem&) = delete;

    // Owned by the window it works for.
    KCommand* createInstance(QObject* host, QObject* /*parent*/) override
    {
        if (auto* window = qobject_cast<KMainWindow*>(host))
            return new KHostAccountCommand(m_action, window, window);
        qCWarning(lcZentoOffice, "%s needs a main window", qUtf8Printable(className()));
        return nullptr;
    }

private:
    const KHostAccountCommand::Action m_action;
};

} // namespace

struct KHostCommandRegistration::Items
{
    KHostCommandItem signIn{QStringLiteral("KHostSignInCommand"), KHostAccountCommand::SignIn};
    KHostCommandItem signOut{QStringLiteral("KHostSignOutCommand"), KHostAccountCommand::SignOut};
};

KHostCommandRegistration::KHostCommandRegistration()
    : m_items(std::make_unique<Items>())
{}

KHostCommandRegistration::~KHostCommandRegistration() = default;
