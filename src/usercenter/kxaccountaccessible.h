#ifndef KXACCOUNTACCESSIBLE_H
#define KXACCOUNTACCESSIBLE_H

#include <QAccessibleWidget>

// What assistive tools see of the account widgets. The user-centre button
// is a menu button whose press and show-menu actions do what Space does on
// it (open the menu, or, signed out by the network, say why not); the
// login tip is an alert, named by its message.
class KxAccountAccessible : public QAccessibleWidget
{
public:
    KxAccountAccessible(QWidget* widget, QAccessible::Role role);

    // Lets assistive tools meet the account widgets through this class,
    // until the library is unloaded. Called by the widgets' constructors.
    static void install();

    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
};

#endif // KXACCOUNTACCESSIBLE_H
