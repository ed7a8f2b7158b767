#include "vex/kmainwindow.h"

#include "vex/kcommandfactory.h"
#include "vex/klistcommand.h"

#include <vexlite/kshellapplicaitons.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>

namespace {

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
    m_titleLayout->setSpacing(4);
    m_titleLayout->addWidget(m_titleLabel);
    m_titleLayout->addStretch(1);
    setMenuWidget(m_titleArea);
    connect(this, &QWidget::windowTitleChanged, m_titleLabel, &QLabel::setText);
    connect(m_titleCommands, SIGNAL(childrenChanged()), this, SLOT(rebuildTitleArea()));
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

void KMainWindow::rebuildTitleArea()
{
    for (const auto& pocket : m_pockets) {
        if (pocket.second) {
            m_titleLayout->removeWidget(pocket.second);
            pocket.second->hide();
            // Later: the rebuild may come from inside one of them.
            pocket.second->deleteLater();
        }
    }
    m_pockets.clear();

    for (int i = 0; i < m_titleCommands->childCount(); ++i) {
        KCommand* command = m_titleCommands->childAt(i);
        QWidget* widget = command ? command->createPocketWidget(m_titleArea) : nullptr;
        if (!widget)
            continue;
        m_titleLayout->addWidget(widget);
        widget->setVisible(command->isVisible());
        // The widget is the connection's context: it ends with the widget.
        connect(command, &KCommand::changed, widget,
                [widget, command] { widget->setVisible(command->isVisible()); });
        m_pockets.emplace_back(command, widget);
    }
}
