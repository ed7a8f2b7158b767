#include "kxlinkaccessible.h"

#include "kxclickablelabel.h"

#include <QTextDocument>
#include <QTextDocumentFragment>

namespace {

QAccessibleInterface* linkInterface(const QString& className, QObject* object)
{
    if (className == QLatin1String("KxClickableLabel"))
        return new KxLinkAccessible(static_cast<KxClickableLabel*>(object));
    return nullptr;
}

// The factory leaves with the library: Qt must not call into unloaded code.
struct KFactoryRegistration
{
    KFactoryRegistration() { QAccessible::installFactory(linkInterface); }
    ~KFactoryRegistration() { QAccessible::removeFactory(linkInterface); }
    KFactoryRegistration(const KFactoryRegistration&) = delete;
    KFactoryRegistration& operator=(const KFactoryRegistration&) = delete;
};

} // namespace

KxLinkAccessible::KxLinkAccessible(KxClickableLabel* label)
    : QAccessibleWidget(label, QAccessible::Link)
{}

void KxLinkAccessible::install()
{
    static const KFactoryRegistration registration;
}

QString KxLinkAccessible::text(QAccessible::Text t) const
{
    const QString own = QAccessibleWidget::text(t);
    if (t != QAccessible::Name || !own.isEmpty())
        return own;
    const QString text = static_cast<const KxClickableLabel*>(widget())->text();
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

QStringList KxLinkAccessible::actionNames() const
{
    return QAccessibleWidget::actionNames() << pressAction();
}

void KxLinkAccessible::doAction(const QString& actionName)
{
    if (actionName == pressAction())
        emit static_cast<KxClickableLabel*>(widget())->clicked();
    else
        QAccessibleWidget::doAction(actionName);
}
