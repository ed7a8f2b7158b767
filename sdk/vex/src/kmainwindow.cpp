#include "vex/kmainwindow.h"

#include "vex/kcommandfactory.h"
#include "vex/klistcommand.h"
#include "vex/kzentostyle.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/kshellapplicaitons.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(lcMainWindow, "vex.commands")

// GUI thread only, as the windows themselves.
QList<KMainWindow*>& recentWindows()
{
    static QList<KMainWindow*> windows;
    return windows;
}

void updateTree(KCommand* command)
{
    if (!command)
        return;
    command->update();
    for (int i = 0; i < command->childCount(); ++i)
        updateTree(command->childAt(i));
}

} // namespace

KMainWindow::KMainWindow(QWidget* parent, Qt::WindowFlags flags)
    : QMainWindow(parent, flags)
    , m_app(KShellApplicaitons::instance()->getActiveApp())
    , m_titleCommands(new KListCommand(this, this))
    , m_titleArea(new QWidget(this))
    , m_titleLayout(new QHBoxLayout(m_titleArea))
    , m_titleLabel(new QLabel(m_titleArea))
{
    m_titleCommands->setName(QStringLiteral("TitleBar"));
    m_titleArea->setObjectName(QStringLiteral("KMainWindowTitleArea"));
    m_titleLayout->setContentsMargins(8, 2, 4, 2);
    // As high with the pockets hidden as with a user panel shown.
    m_titleArea->setMinimumHeight(qRound(KZentoStyle::dpiScaled(32)));
    m_titleLayout->setSpacing(4);
    m_titleLayout->addWidget(m_titleLabel);
    m_titleLayout->addStretch(1);
    setMenuWidget(m_titleArea);
    connect(this, &QWidget::windowTitleChanged, m_titleLabel, &QLabel::setText);
    connect(m_titleCommands, &KListCommand::childrenChanged, this,
            &KMainWindow::onTitleCommandsChanged);
    recentWindows().prepend(this);
}

KMainWindow::~KMainWindow()
{
    recentWindows().removeAll(this);
}

void KMainWindow::setEmbedding(bool embedding)
{
    m_embedding = embedding;
}

void KMainWindow::setShellApplication(KShellApplication* app)
{
    m_app = app;
}

KCommand* KMainWindow::addTitleCommand(const QString& className)
{
    KCommand* command = KCommandFactory::createCommand(className, this, this);
    if (command && !m_titleCommands->addChild(command)) {
        delete command;
        return nullptr;
    }
    return command;
}

int KMainWindow::addTitleCommands(const QVariantList& tree)
{
    return addCommands(m_titleCommands, tree);
}

int KMainWindow::addTitleCommandsFromProfile()
{
    return addTitleCommands(krt::hostcontrol::commandTree(m_titleCommands->name()));
}

int KMainWindow::addCommands(KListCommand* list, const QVariantList& entries)
{
    int created = 0;
    for (const QVariant& entry : entries) {
        const QVariantMap description = entry.toMap();
        const QString className = entry.userType() == QMetaType::QString
                                      ? entry.toString()
                                      : description.value(QStringLiteral("class")).toString();
        KCommand* command = KCommandFactory::createCommand(className, this, this);
        if (!command) {
            qCWarning(lcMainWindow, "no command of class \"%s\" for the tree %s",
                      qUtf8Printable(className), qUtf8Printable(list->name()));
            continue;
        }
        const QString name = description.value(QStringLiteral("name")).toString();
        if (!name.isEmpty())
            command->setName(name);
        const QVariantList children = description.value(QStringLiteral("children")).toList();
        auto* sublist = qobject_cast<KListCommand*>(command);
        if (!children.isEmpty() && !sublist)
            qCWarning(lcMainWindow, "%s has no children: it is not a list command",
                      qUtf8Printable(className));
        // Children first, so that the list's widget shows them from the start.
        if (sublist)
            created += addCommands(sublist, children);
        if (!list->addChild(command)) {
            delete command;
            continue;
        }
        ++created;
    }
    return created;
}

QWidget* KMainWindow::pocketWidget(const KCommand* command) const
{
    for (const auto& pocket : m_pockets) {
        if (command && pocket.first == command)
            return pocket.second;
    }
    return nullptr;
}

KCommand* KMainWindow::findCommand(const QString& id) const
{
    KTreeNode<KCommand>* node = m_titleCommands->treeNode()->treeFindNodeInAllDescendents(id);
    return node ? node->item() : nullptr;
}

void KMainWindow::updateCommands()
{
    updateTree(m_titleCommands);
}

QList<KMainWindow*> KMainWindow::mainWindows()
{
    return recentWindows();
}

bool KMainWindow::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::WindowActivate:
        recentWindows().removeAll(this);
        recentWindows().prepend(this);
        updateCommands();
        break;
    case QEvent::Show:
        updateCommands();
        break;
    default:
        break;
    }
    return QMainWindow::event(event);
}

void KMainWindow::onTitleCommandsChanged()
{
    for (const auto& pocket : m_pockets) {
        QWidget* holder = pocket.second ? pocket.second->parentWidget() : nullptr;
        if (holder && holder != m_titleArea) {
            m_titleLayout->removeWidget(holder);
            holder->hide();
            // Later: the rebuild may come from inside one of them.
            holder->deleteLater();
        }
    }
    m_pockets.clear();

    for (int i = 0; i < m_titleCommands->childCount(); ++i) {
        KCommand* command = m_titleCommands->childAt(i);
        if (!command)
            continue;
        // Each widget sits at the origin of a pocket of its own, as in the
        // suite's title bar: what places itself by the widget's position in
        // its container finds it there.
        auto* holder = new QWidget(m_titleArea);
        QWidget* widget = command->createPocketWidget(holder);
        if (!widget) {
            delete holder;
            continue;
        }
        auto* layout = new QHBoxLayout(holder);
        layout->setContentsMargins(0, 0, 0, 0);
        // The pocket is as large as its widget, never larger.
        layout->setSizeConstraint(QLayout::SetFixedSize);
        layout->addWidget(widget);
        m_titleLayout->addWidget(holder);
        const auto follow = [holder, widget, command] {
            widget->setVisible(command->isVisible());
            holder->setVisible(command->isVisible());
        };
        follow();
        // The widget is the connection's context: it ends with the widget.
        connect(command, &KCommand::changed, widget, follow);
        m_pockets.emplace_back(command, widget);
    }
}
