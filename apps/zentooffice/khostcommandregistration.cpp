#include "khostcommandregistration.h"

#include "khostsignincommand.h"
#include "khostsignoutcommand.h"

#include "zentoofficelogging.h"

#include <vex/kcommandfactory.h>
#include <vex/kcommandfactoryitembase.h>
#include <vex/kmainwindow.h>

namespace {

template <typename Command>
class KHostCommandItem final : public KCommandFactoryItemBase
{
public:
    explicit KHostCommandItem(const QString& className)
        : KCommandFactoryItemBase(className)
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
            return new Command(window, window);
        qCWarning(lcZentoOffice, "%s needs a main window", qUtf8Printable(className()));
        return nullptr;
    }
};

} // namespace

struct KHostCommandRegistration::Items
{
    KHostCommandItem<KHostSignInCommand> signIn{QStringLiteral("KHostSignInCommand")};
    KHostCommandItem<KHostSignOutCommand> signOut{QStringLiteral("KHostSignOutCommand")};
};

KHostCommandRegistration::KHostCommandRegistration()
    : m_items(std::make_unique<Items>())
{}

KHostCommandRegistration::~KHostCommandRegistration() = default;
