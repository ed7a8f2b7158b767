// The stand-in host where the plug-in leans on it and no plug-in suite
// looks: the command tree's search helpers, and the menu button's popup of
// child commands, which returns once it is gone, with its tracking event
// 32770.

#include "kpopupdriver.h"
#include "ktestenvironment.h"

#include <vex/klistcommand.h>
#include <vex/kmainwindow.h>
#include <vex/ktriggercommand.h>
#include <vexlite/hostcontrol.h>

#include <QtTest>

#include <memory>

using namespace AuthTest;

namespace {

class KCountingCommand : public KTriggerCommand
{
public:
    using KTriggerCommand::KTriggerCommand;
    int triggers = 0;

protected:
    void onTriggered() override { ++triggers; }
};

// Builds a tree from text such as "root(a(b c) d)": a name with children in
// parentheses is a list, one without a plain command, "-" an entry whose
// command has been deleted. Each command's object name is its path
// ("root.a.b"); its name is the last part.
KCommand* build(const QString& text, int& pos, QObject* owner, const QString& prefix)
{
    QString name;
    while (pos < text.size() && (text[pos].isLetterOrNumber() || text[pos] == '-'))
        name += text[pos++];
    const QString path = prefix.isEmpty() ? name : prefix + '.' + name;
    KCommand* command = nullptr;
    if (pos < text.size() && text[pos] == '(') {
        auto* list = new KListCommand(owner);
        for (++pos; text[pos] != ')';) {
            if (text[pos] == ' ') {
                ++pos;
                continue;
            }
            KCommand* child = build(text, pos, owner, path);
            list->addChild(child);
            if (child->name() == "-")
                delete child; // the list keeps the empty entry
        }
        ++pos;
        command = list;
    } else {
        command = new KCommand(owner);
    }
    command->setName(name);
    command->setObjectName(path);
    return command;
}

class KTrackCounter : public QObject
{
public:
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Type(KPopupWidget::PopupTrackEvent);
        return false;
    }
};

} // namespace

class TestCommands : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    std::unique_ptr<QWidget> m_window;
    KMenuButton* m_button = nullptr;

    // A shown, active window with a menu button over entries described by a text
    // such as "a b- x": "-" hidden, "x" a command gone.
    void makeMenu(const QString& layout)
    {
        m_window = std::make_unique<QWidget>();
        m_window->setGeometry(100, 100, 300, 200);
        auto* list = new KListCommand(m_window.get());
        for (const QString& entry : layout.split(' ')) {
            auto* command = new KCountingCommand(m_window.get());
            command->setText(QString(entry).remove('-'));
            command->setVisible(!entry.endsWith('-'));
            list->addChild(command);
            if (entry == "x")
                delete command;
        }
        m_button = new KMenuButton(m_window.get());
        m_button->setDefaultCommand(list);
        m_button->move(20, 20);
        m_window->show();
        QApplication::setActiveWindow(m_window.get());
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

private slots:
    void init()
    {
        m_env.resetHost();
        krt::hostcontrol::setDisplayScale(1.0);
    }

    void cleanup() { m_window.reset(); }

    // query: "find <id>", "leaves" or "children" on the root's node.
    void tree_data()
    {
        QTest::addColumn<QString>("tree");
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("expected"); // paths; "" for no node

        const auto row = [](const char* tag, const char* tree, const char* query,
                            const char* expected) {
            QTest::newRow(tag) << QString(tree) << QString(query) << QString(expected);
        };
        row("grandchild under the first child wins", "r(x(a) a)", "find a", "r.x.a");
        row("child before its own child", "r(a(a) b)", "find a", "r.a");
        row("the node itself", "r(a)", "find r", "r");
        row("ids are case-sensitive", "r(a)", "find A", "");
        row("leaves depth first", "r(a(b c) d e(f))", "leaves", "r.a.b r.a.c r.d r.e.f");
        row("a childless node is its own leaf", "r", "leaves", "r");
        row("deleted entries only", "r(-)", "leaves", "r");
        row("children in order, deleted left out", "r(a - b(c))", "children", "r.a r.b");
    }

    void tree()
    {
        QFETCH(QString, tree);
        QFETCH(QString, query);
        QFETCH(QString, expected);

        QObject owner;
        int pos = 0;
        KTreeNode<KCommand>* root = build(tree, pos, &owner, QString())->treeNode();
        QList<KTreeNode<KCommand>*> found;
        if (query.startsWith("find ")) {
            if (KTreeNode<KCommand>* node = root->treeFindNodeInAllDescendents(query.mid(5)))
                found << node;
        } else {
            found = query == "leaves" ? root->treeGetLeafNodes() : root->treeGetChildren();
        }
        QStringList paths;
        for (KTreeNode<KCommand>* node : qAsConst(found))
            paths << node->item()->objectName();
        QCOMPARE(paths.join(' '), expected);
    }

    void popup_data()
    {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QString>("action"); // "click N", or what closes it
        QTest::addColumn<QString>("entries");
        QTest::addColumn<QString>("triggered");
        QTest::addColumn<bool>("open"); // after the action

        const auto row = [](const char* tag, const char* layout, const char* action,
                            const char* entries, const char* triggered, bool open) {
            QTest::newRow(tag) << QString(layout) << QString(action) << QString(entries)
                               << QString(triggered) << open;
        };
        row("hidden and gone left out", "a b- x c", "", "a c", "", true);
        row("click an entry", "a b c", "click 1", "a b c", "b", false);
        row("press elsewhere", "a b c", "press window", "a b c", "", false);
        row("window hidden", "a b c", "hide window", "a b c", "", false);
        row("mouse leaves", "a b c", "leave", "a b c", "", true);
    }

    // A click opens the popup below the button, a child of it; the call
    // returns once it is gone, deleted. Leaving with the mouse is for the
    // owner to decide.
    void popup()
    {
        QFETCH(QString, layout);
        QFETCH(QString, action);
        QFETCH(QString, entries);
        QFETCH(QString, triggered);
        QFETCH(bool, open);

        makeMenu(layout);
        QStringList seen;
        bool stillOpen = false;
        QPointer<KPopupWidget> opened;
        const int shown = withPopup(
            m_button, [&] { QTest::mouseClick(m_button, Qt::LeftButton); },
            [&](KPopupWidget* popup) {
                opened = popup;
                for (int i = 0; i < popup->entryCount(); ++i)
                    seen << popup->entryAt(i)->text();
                QCOMPARE(popup->pos(), m_button->mapToGlobal(QPoint(0, m_button->height())));
                QCOMPARE(m_button->popupWidget(), popup);
                if (action.startsWith("click "))
                    QTest::mouseClick(popup, Qt::LeftButton, {},
                                      popup->entryRect(action.mid(6).toInt()).center());
                else if (action == "press window")
                    QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, QPoint(250, 150));
                else if (action == "hide window")
                    m_window->hide();
                else if (action == "leave")
                    QCursor::setPos(m_window->geometry().bottomRight() + QPoint(100, 100));
                QCoreApplication::processEvents();
                stillOpen = popup->isVisible();
                popup->hide();
            });
        QCOMPARE(shown, 1);
        QCOMPARE(seen.join(' '), entries);
        QCOMPARE(stillOpen, open);
        QString names;
        for (KCountingCommand* command : m_window->findChildren<KCountingCommand*>())
            names += QString(command->text()).repeated(command->triggers);
        QCOMPARE(names, triggered);
        QVERIFY(!opened && !m_button->popupWidget());
    }

    // The owner hears 32770 while the popup is open once the mouse has
    // moved since it opened, and at once when the mouse leaves the popup;
    // never after the popup has gone.
    void trackingEvents()
    {
        makeMenu("a b");
        KTrackCounter counter;
        m_button->installEventFilter(&counter);
        int beforeMove = -1;
        const auto open = [&] { QTest::mouseClick(m_button, Qt::LeftButton); };
        QCursor::setPos(m_button->mapToGlobal(m_button->rect().center()));
        withPopup(m_button, open, [&](KPopupWidget* popup) {
            QTest::qWait(4 * KPopupWidget::TrackInterval); // opened where the mouse rests
            beforeMove = counter.count;
            QCursor::setPos(popup->mapToGlobal(popup->entryRect(0).center()));
            QTRY_VERIFY(counter.count >= 2);
            popup->hide();
        });
        QCOMPARE(beforeMove, 0);
        QCoreApplication::processEvents();
        const int after = counter.count;
        QTest::qWait(3 * KPopupWidget::TrackInterval);
        QCOMPARE(counter.count, after);

        counter.count = 0;
        withPopup(m_button, open, [&](KPopupWidget* popup) {
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(popup, &leave);
            QTRY_VERIFY(counter.count >= 1);
            popup->hide();
        });
    }
};

QTEST_MAIN(TestCommands)
#include "tst_commands.moc"
