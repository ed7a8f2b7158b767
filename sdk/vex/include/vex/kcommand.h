#ifndef VEX_KCOMMAND_H
#define VEX_KCOMMAND_H

#include "ktreenode.h"
#include "vex_global.h"

#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QString>

class QAction;
class QWidget;

// A command of the host's user interface: what menus, toolbars and the
// title area show (text, detail, icon) and whether they show it (visible,
// enabled). Commands form a tree through their children (KListCommand);
// the host refers to them by name.
//
// parent owns the command as any QObject; host is the object the command
// works for, which the host hands over when it creates the command.
class VEX_EXPORT KCommand : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(QString detail READ detail WRITE setDetail NOTIFY changed)
    Q_PROPERTY(QIcon icon READ icon WRITE setIcon NOTIFY changed)
    Q_PROPERTY(bool visible READ isVisible WRITE setVisible NOTIFY changed)
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY changed)

public:
    explicit KCommand(QObject* parent = nullptr, QObject* host = nullptr);
    ~KCommand() override;

    QObject* host() const { return m_host; }

    QString name() const { return m_name; }
    void setName(const QString& name);
    QString text() const { return m_text; }
    void setText(const QString& text);
    // A longer description shown beside or below the text.
    QString detail() const { return m_detail; }
    void setDetail(const QString& detail);
    QIcon icon() const { return m_icon; }
    void setIcon(const QIcon& icon);
    bool isVisible() const { return m_visible; }
    void setVisible(bool visible);
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    // Whether the command may refresh its state now: not while the host has
    // suspended its updates, nor while the application shuts down.
    bool canUpdate() const;
    void setUpdatesSuspended(bool suspended);

    // Refreshes the command's state from what it stands for; the host calls
    // it before showing the command. A plain command has nothing to refresh.
    virtual void update();
    // A new command of the same kind on parent and host, with this one's
    // properties.
    virtual KCommand* clone(QObject* parent, QObject* host);
    // Takes over name, text, detail, icon, visible and enabled of other.
    virtual void copyProperties(const KCommand* other);

    // Child commands by index; a plain command has none. childAt() is null
    // for an index out of range or a child that has been deleted.
    virtual int childCount() const;
    virtual KCommand* childAt(int index) const;

    // The widget that shows the command where the host places commands on
    // their own (the title area of a main window); the caller owns it. A
    // plain command has none.
    virtual QWidget* createPocketWidget(QWidget* parent);

    // An action mirroring the command's properties, for menus and buttons;
    // created on first request, owned by the command.
    QAction* action();

    KTreeNode<KCommand>* treeNode() { return &m_node; }

signals:
    // Any property changed.
    void changed();

private:
    void syncAction();
    void propertyChanged();

    QPointer<QObject> m_host;
    QString m_name;
    QString m_text;
    QString m_detail;
    QIcon m_icon;
    bool m_visible = true;
    bool m_enabled = true;
    bool m_updatesSuspended = false;
    QAction* m_action = nullptr;
    KTreeNode<KCommand> m_node{this};
};

#endif // VEX_KCOMMAND_H
