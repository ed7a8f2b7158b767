#include "kxaccountaccessible.h"

#include <QAbstractButton>

namespace {

QAccessibleInterface* accountInterface(const QString& className, QObject* object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    auto* widget = static_cast<QWidget*>(object);
    if (className == QLatin1String("KUserCenterMenuButton"))
        return new KxAccountAccessible(widget, QAccessible::ButtonMenu);
    if (className == QLatin1String("KLoginStatusTipWidget"))
        return new KxAccountAccessible(widget, QAccessible::AlertMessage);
    return nullptr;
}

// The factory leaves with the library: Qt must not call into unloaded code.
struct KFactoryRegistration
{
    KFactoryRegistration() { QAccessible::installFactory(accountInterface); }
    ~KFactoryRegistration() { QAccessible::removeFactory(accountInterface); }
    KFactoryRegistration(const KFactoryRegistration&) = delete;
    KFactoryRegistration& operator=(const KFactoryRegistration&) = delete;
};

} // namespace

KxAccountAccessible::KxAccountAccessible(QWidget* widget, QAccessible::Role role)
    : QAccessibleWidget(widget, role)
{}

void KxAccountAccessible::install()
{
    static const KFactoryRegistration registration;
}

QAccessible::State KxAccountAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    if (role() == QAccessible::ButtonMenu)
        state.hasPopup = true;
    return state;
}

QStringList KxAccountAccessible::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (role() == QAccessible::ButtonMenu)
        names << pressAction() << showMenuAction();
    return names;
}

void KxAccountAccessible::doAction(const QString& actionName)
{
    auto* button = qobject_cast<QAbstractButton*>(widget());
    if (button && (actionName == pressAction() || actionName == showMenuAction()))
        button->click();
    else
        QAccessibleWidget::doAction(actionName);
}
