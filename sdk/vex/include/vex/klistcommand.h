#ifndef VEX_KLISTCOMMAND_H
#define VEX_KLISTCOMMAND_H

#include "kcommand.h"

#include <QList>
#include <QPointer>

class QMenu;

// A command made of child commands: a menu, a list of entries under a
// button. The children are not owned unless they are QObject children of
// the list; one that is deleted leaves an empty entry (childAt() is null)
// until it is removed.
class VEX_EXPORT KListCommand : public KCommand
{
    Q_OBJECT

public:
    explicit KListCommand(QObject* parent = nullptr, QObject* host = nullptr);
    ~KListCommand() override;

    int childCount() const override;
    KCommand* childAt(int index) const override;

    // False, and nothing changes, for a null command, one already in the
    // list, this list itself or a command that holds this list somewhere
    // below it: the tree stays a tree. index out of range appends.
    bool insertChild(int index, KCommand* command);
    bool addChild(KCommand* command) { return insertChild(childCount(), command); }
    bool removeChild(KCommand* command);
    void clearChildren();

    KCommand* clone(QObject* parent, QObject* host) override;
    // The properties, and clones of the children in place of this list's
    // own (owned by this list).
    void copyProperties(const KCommand* other) override;
    // A KMenuButton bound to the list: it pops up the children.
    QWidget* createPocketWidget(QWidget* parent) override;

    // Fills menu with the visible children of command: an entry per action,
    // a submenu per child that has children of its own.
    static void fillMenu(QMenu* menu, KCommand* command);

signals:
    void childrenChanged();

private:
    QList<QPointer<KCommand>> m_children;
};

#endif // VEX_KLISTCOMMAND_H
