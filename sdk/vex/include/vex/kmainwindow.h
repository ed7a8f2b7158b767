#ifndef VEX_KMAINWINDOW_H
#define VEX_KMAINWINDOW_H

#include "vex_global.h"

#include <QList>
#include <QMainWindow>
#include <QPointer>
#include <QVariantList>

#include <utility>
#include <vector>

class KCommand;
class KListCommand;
class KShellApplication;
class QHBoxLayout;
class QLabel;

// A main window of one of the suite's applications. Above its contents runs
// the title area: the window title, then the pocket widgets of the
// commands under titleCommands(), in their order, each shown while its
// command is visible and each at the origin of a container of its own. The area follows the command
// tree: adding or removing a title command rebuilds it. Commands are brought up to date (update())
// when the window is shown or activated.
class VEX_EXPORT KMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit KMainWindow(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~KMainWindow() override;

    // Whether the window is embedded in another program (a document shown
    // inside a container application) rather than standing on its own.
    bool isEmbedding() const { return m_embedding; }
    void setEmbedding(bool embedding);

    // The application the window belongs to; at construction the shell's
    // active application.
    KShellApplication* shellApplication() const { return m_app; }
    void setShellApplication(KShellApplication* app);

    // The root of the title area's command tree, owned by the window.
    KListCommand* titleCommands() const { return m_titleCommands; }
    // Creates a command of the class through KCommandFactory for this window
    // and appends it to the title commands; null when the factory gives
    // none.
    KCommand* addTitleCommand(const QString& className);
    // Creates the commands a command tree names (entries as
    // krt::hostcontrol::commandTree() describes them) through KCommandFactory
    // for this window and appends them to the title commands, children below
    // their list commands. Entries the factory gives nothing for are left
    // out with a warning (category "vex.commands"), their children with
    // them. Returns how many commands were created.
    int addTitleCommands(const QVariantList& tree);
    // The same with the host profile's tree of the title area's root id
    // ("TitleBar").
    int addTitleCommandsFromProfile();
    QWidget* titleArea() const { return m_titleArea; }
    // The title area's widget for command; null when it has none there.
    QWidget* pocketWidget(const KCommand* command) const;

    // The first command in the window's command tree (pre-order) named id.
    KCommand* findCommand(const QString& id) const;
    // update() on every command of the tree, in pre-order.
    void updateCommands();

    // Every main window, the most recently activated (or, never activated,
    // created) first.
    static QList<KMainWindow*> mainWindows();

protected:
    bool event(QEvent* event) override;

private slots:
    void onTitleCommandsChanged();

private:
    int addCommands(KListCommand* list, const QVariantList& entries);

    bool m_embedding = false;
    KShellApplication* m_app = nullptr;
    KListCommand* m_titleCommands;
    QWidget* m_titleArea;
    QHBoxLayout* m_titleLayout;
    QLabel* m_titleLabel;
    std::vector<std::pair<QPointer<KCommand>, QPointer<QWidget>>> m_pockets;
};

#endif // VEX_KMAINWINDOW_H
