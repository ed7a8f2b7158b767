#ifndef KHOSTCOMMANDREGISTRATION_H
#define KHOSTCOMMANDREGISTRATION_H

#include <memory>

class KCommandFactoryItemBase;

// The reference host's own commands in the command factory, for as long as
// the object lives: "KHostSignInCommand" and "KHostSignOutCommand", for
// main windows (KMainWindow) as hosts. The host profile's command trees
// name them beside the plug-in's classes.
class KHostCommandRegistration
{
public:
    KHostCommandRegistration();
    ~KHostCommandRegistration();

    KHostCommandRegistration(const KHostCommandRegistration&) = delete;
    KHostCommandRegistration& operator=(const KHostCommandRegistration&) = delete;

private:
    struct Items;
    std::unique_ptr<Items> m_items;
};

#endif // KHOSTCOMMANDREGISTRATION_H
