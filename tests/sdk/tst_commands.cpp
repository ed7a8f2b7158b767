// The stand-in host's command framework as the plug-in and a host use it:
// commands and their properties, lists and the command tree, triggering,
// cloning, the factory registry, and main windows with their title area.

#include "ktestenvironment.h"

#include <vex/kcommandfactory.h>
#include <vex/kcommandfactoryitembase.h>
#include <vex/klistcommand.h>
#include <vex/kmainwindow.h>
#include <vex/ktriggercommand.h>
#include <vex/kxapplication.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/kshellapplicaitons.h>

#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>
#include <QtTest>

#include <memory>
#include <vector>

using namespace AuthTest;

namespace {

class KCountingCommand : public KTriggerCommand
{
public:
    using KTriggerCommand::KTriggerCommand;
    int triggers = 0;
    int updates = 0;
    void update() override { ++updates; }

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
        ++pos;
        while (text[pos] != ')') {
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

QString paths(const QList<KTreeNode<KCommand>*>& nodes)
{
    QStringList names;
    for (KTreeNode<KCommand>* node : nodes)
        names << (node ? node->item()->objectName() : "null");
    return names.join(' ');
}

template <typename T>
class KTestItem final : public KCommandFactoryItemBase
{
public:
    explicit KTestItem(const QString& name, const QString& text = QString())
        : KCommandFactoryItemBase(name)
        , m_text(text)
    {}
    ~KTestItem() { KCommandFactory::unregisterCommand(this); }
    KCommand* createInstance(QObject* host, QObject* parent) override
    {
        auto* command = new T(parent, host);
        command->setText(m_text);
        return command;
    }

private:
    QString m_text;
};

} // namespace

class TestCommands : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init() { m_env.resetHost(); }

    // Set through the meta-object as a host's configuration does: one change
    // signal for a new value, none for the same again; the action mirrors.
    void properties_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("action"); // text|tool tip|visible|enabled

        const auto row = [](const char* tag, const char* property, const QVariant& value,
                            const char* action) {
            QTest::newRow(tag) << QString(property) << value << QString(action);
        };
        row("text", "text", "Other", "Other|Other|1|1");
        row("detail is the tool tip", "detail", "D", "T|D|1|1");
        row("hidden, which disables the action too", "visible", false, "T|T|0|0");
        row("disabled", "enabled", false, "T|T|1|0");
    }

    void properties()
    {
        QFETCH(QString, property);
        QFETCH(QVariant, value);
        QFETCH(QString, action);

        KCommand command;
        command.setText("T");
        QAction* mirror = command.action();
        QSignalSpy changed(&command, SIGNAL(changed()));
        QVERIFY(command.setProperty(property.toLatin1(), value));
        QVERIFY(command.setProperty(property.toLatin1(), value));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(command.property(property.toLatin1()), value);
        QCOMPARE(QString("%1|%2|%3|%4")
                     .arg(mirror->text(), mirror->toolTip())
                     .arg(mirror->isVisible())
                     .arg(mirror->isEnabled()),
                 action);
    }

    // Each script step is "add x", "insert <i> x", "remove x" or "delete x"
    // on list L of commands a, b, c; P is a list that holds L.
    void lists_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("results");  // of add, insert and remove
        QTest::addColumn<QString>("children"); // "-" an entry whose command is gone
        QTest::addColumn<int>("changes");

        const auto row = [](const char* tag, const char* script, const char* results,
                            const char* children, int changes) {
            QTest::newRow(tag) << QString(script) << QString(results) << QString(children)
                               << changes;
        };
        row("order", "add a;insert 0 b;insert 9 c", "111", "b a c", 3);
        row("only once", "add a;add a;insert 0 a", "100", "a", 1);
        row("no cycles", "add L;add P;add null", "000", "", 0);
        row("remove", "add a;add b;remove a;remove a;remove c", "11100", "b", 3);
        row("deleted child", "add a;add b;delete a", "11", "- b", 3);
        row("removed, then deleted", "add a;remove a;delete a", "11", "", 2);
    }

    void lists()
    {
        QFETCH(QString, script);
        QFETCH(QString, results);
        QFETCH(QString, children);
        QFETCH(int, changes);

        QObject owner;
        KListCommand parentList(&owner);
        auto* list = new KListCommand(&owner);
        parentList.addChild(list);
        QHash<QString, KCommand*> commands{{"L", list}, {"P", &parentList}, {"null", nullptr}};
        for (const char* name : {"a", "b", "c"}) {
            commands[name] = new KCommand(&owner);
            commands[name]->setName(name);
        }
        QSignalSpy changed(list, SIGNAL(childrenChanged()));
        QString seen;
        for (const QString& step : script.split(';')) {
            const QStringList words = step.split(' ');
            KCommand* command = commands.value(words.last());
            if (words[0] == "add")
                seen += QString::number(list->addChild(command));
            else if (words[0] == "insert")
                seen += QString::number(list->insertChild(words[1].toInt(), command));
            else if (words[0] == "remove")
                seen += QString::number(list->removeChild(command));
            else
                delete command;
        }
        QStringList names;
        for (int i = 0; i < list->childCount(); ++i)
            names << (list->childAt(i) ? list->childAt(i)->name() : "-");
        QCOMPARE(seen, results);
        QCOMPARE(names.join(' '), children);
        QCOMPARE(changed.count(), changes);
        QVERIFY(!list->childAt(-1) && !list->childAt(list->childCount()));
    }

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
        row("nowhere", "r(a(b))", "find c", "");
        row("ids are case-sensitive", "r(a)", "find A", "");
        row("past a deleted entry", "r(- a)", "find a", "r.a");
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
        QCOMPARE(paths(found), expected);
    }

    void trigger_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<int>("triggers");

        for (const char* how : {"trigger", "action", "pocket button"}) {
            QTest::addRow("%s", how) << how << true << 1;
            QTest::addRow("%s, disabled", how) << how << false << 0;
        }
    }

    void trigger()
    {
        QFETCH(QString, how);
        QFETCH(bool, enabled);
        QFETCH(int, triggers);

        QWidget window;
        KCountingCommand command;
        command.setText("Go");
        command.setEnabled(enabled);
        QSignalSpy triggered(&command, SIGNAL(triggered()));
        QScopedPointer<QWidget> button(command.createPocketWidget(&window));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        if (how == "trigger")
            command.trigger();
        else if (how == "action")
            command.action()->trigger();
        else
            QTest::mouseClick(button.data(), Qt::LeftButton);
        QCOMPARE(command.triggers, triggers);
        QCOMPARE(triggered.count(), triggers);
    }

    // A list's clone is a tree of its own, and copying again replaces the
    // children the clone owns.
    void cloning()
    {
        QObject parent, host, owner;
        int pos = 0;
        auto* menu = static_cast<KListCommand*>(build("m(a(b) c)", pos, &owner, QString()));
        QScopedPointer<KCommand> copy(menu->clone(&parent, &host));
        QVERIFY(copy->parent() == &parent && copy->host() == &host && copy->name() == "m");
        KCommand* leaf = copy->treeNode()->treeFindNodeInAllDescendents("b")->item();
        QVERIFY(leaf != menu->childAt(0)->childAt(0) && leaf->parent() == copy->childAt(0));
        QPointer<KCommand> old = copy->childAt(0);
        menu->removeChild(menu->childAt(0));
        copy->copyProperties(menu);
        QVERIFY(!old && copy->childCount() == 1 && copy->childAt(0)->name() == "c");
    }

    // Registration order, the later of two items of a name winning while it
    // lasts, refusals, and the log.
    void factory()
    {
        KCommandFactory::clearRegistrationLog();
        QWidget host;
        auto first = std::make_unique<KTestItem<KTriggerCommand>>("KTestA", "first");
        auto second = std::make_unique<KTestItem<KTriggerCommand>>("KTestA", "second");
        KTestItem<KListCommand> other("KTestB");
        for (KCommandFactoryItemBase* item :
             QList<KCommandFactoryItemBase*>{first.get(), &other, second.get()})
            QVERIFY(KCommandFactory::registerCommand(item));
        QVERIFY(!KCommandFactory::registerCommand(&other) &&
                !KCommandFactory::registerCommand(nullptr));
        QCOMPARE(KCommandFactory::registeredClasses(), QStringList({"KTestA", "KTestB", "KTestA"}));
        QScopedPointer<KCommand> made(KCommandFactory::createCommand("KTestA", &host, nullptr));
        QVERIFY(made->text() == "second" && made->name() == "KTestA" && made->host() == &host);
        second.reset();
        QCOMPARE(KCommandFactory::lookup("KTestA"), first.get());
        QVERIFY(KCommandFactory::unregisterCommand(first.get()));
        QVERIFY(!KCommandFactory::unregisterCommand(first.get()));
        QVERIFY(!KCommandFactory::createCommand("KTestA", &host, nullptr));
        QCOMPARE(KCommandFactory::registrationLog(),
                 QStringList({"register KTestA", "register KTestB", "register KTestA",
                              "unregister KTestA", "unregister KTestA"}));
    }

    // The title area shows the pocket widgets of the title commands in
    // order, follows their visibility and the tree, and the window brings
    // its commands up to date when it shows.
    void titleArea()
    {
        KMainWindow window;
        auto* one = new KCountingCommand(&window);
        one->setText("One");
        int pos = 0;
        auto* menu =
            static_cast<KListCommand*>(build("Menu(shown hidden sub(deep))", pos, &window, {}));
        menu->setText("Menu");
        for (int i = 0; i < 3; ++i)
            menu->childAt(i)->setText(menu->childAt(i)->name());
        menu->childAt(1)->setVisible(false);
        auto* plain = new KCommand(&window); // no widget of its own
        for (KCommand* command : QList<KCommand*>{one, plain, menu})
            QVERIFY(window.titleCommands()->addChild(command));

        const auto shown = [&] {
            QStringList texts;
            // Each widget in a pocket of its own.
            QLayout* layout = window.titleArea()->layout();
            for (int i = 0; i < layout->count(); ++i) {
                QWidget* pocket = layout->itemAt(i)->widget();
                auto* button = pocket ? pocket->findChild<QToolButton*>() : nullptr;
                if (button && button->pos() == QPoint(0, 0))
                    texts << button->text() + (button->isHidden() ? "(hidden)" : "");
            }
            return texts.join(' ');
        };
        one->setVisible(false);
        QCOMPARE(shown(), QString("One(hidden) Menu"));
        QVERIFY(!window.pocketWidget(plain));
        QCOMPARE(window.findCommand("deep")->objectName(), QString("Menu.sub.deep"));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(one->updates >= 1);

        QMenu entries;
        KListCommand::fillMenu(&entries, menu);
        QStringList texts;
        for (QAction* action : entries.actions())
            texts << action->text() + (action->menu() ? ">" : "");
        QCOMPARE(texts.join(' '), QString("shown sub>"));

        one->setVisible(true);
        QTest::mouseClick(window.pocketWidget(one), Qt::LeftButton);
        QCOMPARE(one->triggers, 1);
        window.titleCommands()->removeChild(one);
        QVERIFY(!window.pocketWidget(one));
        QCOMPARE(shown(), QString("Menu"));
    }

    // windows: the applications of main windows created in this order;
    // activate: indexes of windows shown and activated in this order.
    void relativeMainWindow_data()
    {
        QTest::addColumn<QStringList>("windows");
        QTest::addColumn<QList<int>>("activate");
        QTest::addColumn<QString>("app");  // "": no application
        QTest::addColumn<int>("expected"); // -1: none

        const QStringList three{"zento", "tabix", "zento"};
        QTest::newRow("newest of the application") << three << QList<int>() << "zento" << 2;
        QTest::newRow("activated later than created") << three << QList<int>{0, 1} << "zento" << 0;
        QTest::newRow("the active window") << three << QList<int>{1, 0, 2} << "zento" << 2;
        QTest::newRow("other application active") << three << QList<int>{1} << "tabix" << 1;
        QTest::newRow("no window of the application") << three << QList<int>{0} << "pdf" << -1;
        QTest::newRow("no application") << three << QList<int>{0} << "" << -1;
    }

    void relativeMainWindow()
    {
        QFETCH(QStringList, windows);
        QFETCH(QList<int>, activate);
        QFETCH(QString, app);
        QFETCH(int, expected);

        std::vector<std::unique_ptr<KMainWindow>> created;
        for (const QString& name : windows) {
            created.push_back(std::make_unique<KMainWindow>());
            created.back()->setShellApplication(KShellApplicaitons::instance()->application(name));
        }
        for (int index : activate) {
            KMainWindow* window = created[index].get();
            window->show();
            QApplication::setActiveWindow(window);
            QTRY_COMPARE(QApplication::activeWindow(), window);
        }
        KMainWindow* found = KxApplication::findRelativeMainWindowX(
            KShellApplicaitons::instance()->application(app));
        QCOMPARE(found, expected < 0 ? nullptr : created[expected].get());
    }
};

QTEST_MAIN(TestCommands)
#include "tst_commands.moc"
