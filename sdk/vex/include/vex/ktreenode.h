#ifndef VEX_KTREENODE_H
#define VEX_KTREENODE_H

#include <QList>
#include <QString>
#include <QVariant>

// A node of the host's command tree. The node belongs to its item (a
// command) and asks the item for its children, so the tree always shows the
// items' current state. T provides childCount(), childAt(int) (null for an
// entry that has gone) and treeNode(), and is a QObject whose "name"
// property is the node's id.
//
// The search helpers are defined here, inline; a module that uses them on
// its own items carries their instantiation.
template <typename T>
class KTreeNode
{
public:
    explicit KTreeNode(T* item = nullptr)
        : m_item(item)
    {}

    T* item() const { return m_item; }

    // The nodes of the item's children, in index order; entries that have
    // gone are left out.
    QList<KTreeNode*> treeGetChildren();
    // The item's name as text; empty without an item or when the name is
    // not text.
    QString treeGetNodeID();
    // The leaves below this node, depth first, left to right; a node
    // without children is its own one leaf.
    QList<KTreeNode*> treeGetLeafNodes();
    // The first node in pre-order (this node first) whose id is id.
    KTreeNode* treeFindNodeInAllDescendents(const QString& id);

private:
    static void scanLeafNodes(KTreeNode* node, QList<KTreeNode*>& list);
    static KTreeNode* findInChildren(KTreeNode* node, const QString& id);

    T* m_item;
};

template <typename T>
QList<KTreeNode<T>*> KTreeNode<T>::treeGetChildren()
{
    QList<KTreeNode*> children;
    if (!m_item)
        return children;
    const int count = m_item->childCount();
    for (int i = 0; i < count; ++i) {
        if (T* child = m_item->childAt(i))
            children.append(child->treeNode());
    }
    return children;
}

template <typename T>
QString KTreeNode<T>::treeGetNodeID()
{
    if (!m_item)
        return QString();
    const QVariant name = m_item->property("name");
    return name.canConvert<QString>() ? name.toString() : QString();
}

template <typename T>
QList<KTreeNode<T>*> KTreeNode<T>::treeGetLeafNodes()
{
    QList<KTreeNode*> leaves;
    scanLeafNodes(this, leaves);
    return leaves;
}

template <typename T>
KTreeNode<T>* KTreeNode<T>::treeFindNodeInAllDescendents(const QString& id)
{
    return findInChildren(this, id);
}

template <typename T>
void KTreeNode<T>::scanLeafNodes(KTreeNode* node, QList<KTreeNode*>& list)
{
    const QList<KTreeNode*> children = node->treeGetChildren();
    if (children.isEmpty()) {
        list.append(node);
        return;
    }
    for (KTreeNode* child : children)
        scanLeafNodes(child, list);
}

template <typename T>
KTreeNode<T>* KTreeNode<T>::findInChildren(KTreeNode* node, const QString& id)
{
    if (!node)
        return nullptr;
    if (node->treeGetNodeID() == id)
        return node;
    for (KTreeNode* child : node->treeGetChildren()) {
        if (KTreeNode* found = findInChildren(child, id))
            return found;
    }
    return nullptr;
}

#endif // VEX_KTREENODE_H
