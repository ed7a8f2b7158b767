#ifndef KXLINKACCESSIBLE_H
#define KXLINKACCESSIBLE_H

#include <QAccessibleWidget>

class KxClickableLabel;

// What assistive tools see of a KxClickableLabel: a link named by its text,
// whose press action clicks it.
class KxLinkAccessible : public QAccessibleWidget
{
public:
    explicit KxLinkAccessible(KxClickableLabel* label);

    // Lets assistive tools meet clickable labels through this class, until
    // the library is unloaded. Called by the label's constructor.
    static void install();

    QString text(QAccessible::Text t) const override;
    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
};

#endif // KXLINKACCESSIBLE_H
