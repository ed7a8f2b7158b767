#include "vex/klistcommand.h"

#include "vex/kmenubutton.h"

#include <QAction>
#include <QMenu>

namespace {

bool holds(KCommand* root, const KCommand* command)
{
    if (!root)
        return false;
    if (root == command)
        return true;
    for (int i = 0; i < root->childCount(); ++i) {
        if (holds(root->childAt(i), command))
            return true;
    }
    return false;
}

} // namespace

KListCommand::KListCommand(QObject* parent, QObject* host)
    : KCommand(parent, host)
{}

KListCommand::~KListCommand() = default;

int KListCommand::childCount() const
{
    return m_children.size();
}

KCommand* KListCommand::childAt(int index) const
{
    return index >= 0 && index < m_children.size() ? m_children.at(index).data() : nullptr;
}

bool KListCommand::insertChild(int index, KCommand* command)
{
    if (!command || m_children.contains(command) || holds(command, this))
        return false;
    if (index < 0 || index > m_children.size())
        index = m_children.size();
    m_children.insert(index, command);
    connect(command, &QObject::destroyed, this, &KListCommand::childrenChanged);
    emit childrenChanged();
    return true;
}

bool KListCommand::removeChild(KCommand* command)
{
    const int index = command ? m_children.indexOf(command) : -1;
    if (index < 0)
        return false;
    m_children.removeAt(index);
    disconnect(command, &QObject::destroyed, this, &KListCommand::childrenChanged);
    emit childrenChanged();
    return true;
}

void KListCommand::clearChildren()
{
    if (m_children.isEmpty())
        return;
    for (const QPointer<KCommand>& child : qAsConst(m_children)) {
        if (child)
            disconnect(child, &QObject::destroyed, this, &KListCommand::childrenChanged);
    }
    m_children.clear();
    emit childrenChanged();
}

KCommand* KListCommand::clone(QObject* parent, QObject* host)
{
    auto* command = new KListCommand(parent, host);
    command->copyProperties(this);
    return command;
}

void KListCommand::copyProperties(const KCommand* other)
{
    if (!other || other == this)
        return;
    KCommand::copyProperties(other);
    // Children of the old entries that this list owned go with them.
    QList<QPointer<KCommand>> old = m_children;
    clearChildren();
    for (const QPointer<KCommand>& child : qAsConst(old)) {
        if (child && child->parent() == this)
            delete child.data();
    }
    for (int i = 0; i < other->childCount(); ++i) {
        if (KCommand* child = other->childAt(i))
            addChild(child->clone(this, host()));
    }
}

QWidget* KListCommand::createPocketWidget(QWidget* parent)
{
    auto* button = new KMenuButton(parent);
    button->setDefaultCommand(this);
    return button;
}

void KListCommand::fillMenu(QMenu* menu, KCommand* command)
{
    for (int i = 0; i < command->childCount(); ++i) {
        KCommand* child = command->childAt(i);
        if (!child || !child->isVisible())
            continue;
        if (child->childCount() > 0) {
            QMenu* sub = menu->addMenu(child->icon(), child->text());
            sub->setEnabled(child->isEnabled());
            fillMenu(sub, child);
        } else {
            menu->addAction(child->action());
        }
    }
}
