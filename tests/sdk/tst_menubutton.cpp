// The stand-in host's tool and menu buttons, the popup of child commands
// with its tracking event, the user-panel style and size metric, and main
// windows whose title area comes from the profile's command tree. Driven
// offscreen through real events, painted into images.

#include "kpopupdriver.h"
#include "ktestenvironment.h"
#include "kwarningcatcher.h"

#include <vex/kcommandfactory.h>
#include <vex/kcommandfactoryitembase.h>
#include <vex/klistcommand.h>
#include <vex/kmainwindow.h>
#include <vex/kmenubutton.h>
#include <vex/kstyleoptionuserpanelmenubutton.h>
#include <vex/ktoolbutton.h>
#include <vex/ktriggercommand.h>
#include <vex/kzentostyle.h>
#include <vexlite/hostcontrol.h>

#include <QHBoxLayout>
#include <QPainter>
#include <QtTest>

#include <memory>

using namespace AuthTest;

using namespace krt::hostcontrol;

namespace {

class KCountingCommand : public KTriggerCommand
{
public:
    using KTriggerCommand::KTriggerCommand;
    int triggers = 0;

protected:
    void onTriggered() override { ++triggers; }
};

template <typename T>
class KTestItem final : public KCommandFactoryItemBase
{
public:
    explicit KTestItem(const QString& name)
        : KCommandFactoryItemBase(name)
    {
        KCommandFactory::registerCommand(this);
    }
    ~KTestItem() { KCommandFactory::unregisterCommand(this); }
    KCommand* createInstance(QObject* host, QObject* parent) override
    {
        auto* command = new T(parent, host);
        command->setText(className());
        return command;
    }
};

// Counts the host's popup tracking events a widget receives.
class KTrackCounter : public QObject
{
public:
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Type(KPopupWidget::PopupTrackEvent))
            ++count;
        return false;
    }
};

// A list of entries "a", "b", ... from a spec such as "a b- c! d x": "-"
// hidden, "!" disabled, "x" an entry whose command has gone.
KListCommand* makeList(const QString& spec, QObject* owner)
{
    auto* list = new KListCommand(owner);
    list->setText("Account");
    list->setDetail("Signed in");
    for (const QString& entry : spec.split(' ', Qt::SkipEmptyParts)) {
        auto* command = new KCountingCommand(owner);
        command->setText(QString(entry).remove('-').remove('!'));
        command->setVisible(!entry.endsWith('-'));
        command->setEnabled(!entry.endsWith('!'));
        list->addChild(command);
        if (entry == "x")
            delete command;
    }
    return list;
}

QStringList entryTexts(const KPopupWidget* popup)
{
    QStringList texts;
    for (int i = 0; i < popup->entryCount(); ++i)
        texts << (popup->entryAt(i) ? popup->entryAt(i)->text() : "null");
    return texts;
}

KCountingCommand* entry(KListCommand* list, const QString& text)
{
    for (int i = 0; i < list->childCount(); ++i) {
        if (list->childAt(i) && list->childAt(i)->text() == text)
            return static_cast<KCountingCommand*>(list->childAt(i));
    }
    return nullptr;
}

} // namespace

class TestMenuButton : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    std::unique_ptr<QWidget> m_window;
    KMenuButton* m_button = nullptr;
    KListCommand* m_list = nullptr;

    // A shown, active window with a menu button bound to a list of spec.
    void makeMenu(const QString& spec)
    {
        m_window = std::make_unique<QWidget>();
        m_window->setGeometry(100, 100, 300, 200);
        m_list = makeList(spec, m_window.get());
        m_button = new KMenuButton(m_window.get());
        m_button->setDefaultCommand(m_list);
        m_button->move(20, 20);
        m_window->show();
        QApplication::setActiveWindow(m_window.get());
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

private slots:
    void init()
    {
        m_env.resetHost();
        setDisplayScale(1.0);
    }

    void cleanup() { m_window.reset(); }

    void buttonStyles_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<int>("kept");
        QTest::addColumn<int>("qtStyle");

        QTest::newRow("icon only") << 0 << 0 << int(Qt::ToolButtonIconOnly);
        QTest::newRow("text under icon") << 3 << 3 << int(Qt::ToolButtonTextUnderIcon);
        QTest::newRow("follow style") << 4 << 4 << int(Qt::ToolButtonFollowStyle);
        QTest::newRow("large gallery") << 5 << 5 << int(Qt::ToolButtonTextBesideIcon);
        QTest::newRow("user panel") << 7 << 7 << int(Qt::ToolButtonTextOnly);
        QTest::newRow("unknown above") << 8 << 2 << int(Qt::ToolButtonTextBesideIcon);
        QTest::newRow("negative") << -1 << 2 << int(Qt::ToolButtonTextBesideIcon);
    }

    // The number is kept and handed to the style; Qt's own styles see the
    // nearest Qt style, and the user panel no icon and no menu.
    void buttonStyles()
    {
        QFETCH(int, style);
        QFETCH(int, kept);
        QFETCH(int, qtStyle);

        KToolButton button;
        button.setIcon(QIcon(QPixmap(8, 8)));
        button.setButtonStyle(style);
        QCOMPARE(button.buttonStyle(), kept);
        QCOMPARE(int(button.toolButtonStyle()), qtStyle);
        KStyleOptionToolButton option;
        button.initStyleOption(&option);
        QCOMPARE(option.buttonStyle, kept);
        QVERIFY(qstyleoption_cast<const QStyleOptionToolButton*>(&option));
        QVERIFY(kstyleoption_cast<KStyleOptionToolButton>(&option));
        QVERIFY(!kstyleoption_cast<KStyleOptionUserPanelMenuButton>(&option));
        QCOMPARE(option.icon.isNull(), kept == KToolButton::UserPanelStyle);
    }

    // The button shows its command as it changes, runs it when clicked
    // (not while disabled), and lets go of it.
    void followsCommand()
    {
        QWidget window;
        auto* command = new KCountingCommand(&window);
        auto* button = new KToolButton(&window);
        command->setText("Save");
        button->setDefaultCommand(command);
        window.show();
        QCOMPARE(button->text(), QString("Save"));
        QCOMPARE(button->toolTip(), QString("Save"));
        command->setDetail("Saves the document");
        command->setText("Save all");
        QCOMPARE(button->text(), QString("Save all"));
        QCOMPARE(button->toolTip(), QString("Saves the document"));
        QCOMPARE(button->accessibleDescription(), QString("Saves the document"));
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(command->triggers, 1);
        command->setEnabled(false);
        QVERIFY(!button->isEnabled());
        button->setDefaultCommand(nullptr);
        command->setText("Gone");
        QCOMPARE(button->text(), QString("Save all"));
        button->setEnabled(true);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(command->triggers, 1);
    }

    void userPanelMetric_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("textWidth");
        QTest::addColumn<int>("height");
        QTest::addColumn<QSize>("expected");

        // 1 + 16 picture + 8 margin, and 6 before a text; all but the text scaled.
        QTest::newRow("100 %") << 1.0 << 50 << 28 << QSize(81, 28);
        QTest::newRow("100 %, no text") << 1.0 << 0 << 28 << QSize(25, 28);
        QTest::newRow("150 %") << 1.5 << 50 << 28 << QSize(38 + 9 + 50, 42);
        QTest::newRow("200 %") << 2.0 << 50 << 28 << QSize(50 + 12 + 50, 56);
        QTest::newRow("negative height") << 1.0 << 10 << -5 << QSize(41, 0);
    }

    void userPanelMetric()
    {
        QFETCH(qreal, scale);
        QFETCH(int, textWidth);
        QFETCH(int, height);
        QFETCH(QSize, expected);

        setDisplayScale(scale);
        KStyleOptionUserPanelMenuButton option;
        option.textWidth = textWidth;
        option.panelHeight = height;
        QCOMPARE(
            KZentoStyle::sizeMetric(nullptr, KZentoStyle::SM_UserPanelMenuButton, &option, nullptr),
            expected);
        // Only the user panel's own option has the fields to size by.
        KStyleOptionToolButton plain;
        QVERIFY(!KZentoStyle::sizeMetric(nullptr, 31, &plain, nullptr).isValid());
        QVERIFY(!KZentoStyle::sizeMetric(nullptr, 31, nullptr, nullptr).isValid());
    }

    // Style 7: no icon, the text after the picture's room, vertically
    // centred; a shade while the mouse is over it.
    void userPanelPainting()
    {
        QWidget window;
        window.setAutoFillBackground(false);
        auto* button = new KToolButton(&window);
        button->setButtonStyle(KToolButton::UserPanelStyle);
        QPixmap red(16, 16);
        red.fill(Qt::red);
        button->setIcon(QIcon(red));
        button->setText("Name");
        button->resize(100, 28);
        window.show();
        const auto paint = [button] {
            QImage image(button->size(), QImage::Format_ARGB32);
            image.fill(Qt::white);
            button->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
            return image;
        };
        const QImage idle = paint();
        QRect ink;
        for (int y = 0; y < idle.height(); ++y) {
            for (int x = 0; x < idle.width(); ++x) {
                const QColor c = idle.pixelColor(x, y);
                QVERIFY2(!(c.red() > 200 && c.green() < 60), "the icon is not drawn");
                if (c != Qt::white)
                    ink |= QRect(x, y, 1, 1);
            }
        }
        QVERIFY(ink.left() >= 1 + 16 + 6);
        QVERIFY(qAbs(ink.center().y() - 14) <= 2);
        QCOMPARE(idle.pixelColor(5, 5), QColor(Qt::white));

        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QCoreApplication::sendEvent(button, &enter);
        QVERIFY(paint().pixelColor(5, 5) != QColor(Qt::white));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(button, &leave);
        QCOMPARE(paint().pixelColor(5, 5), QColor(Qt::white));
    }

    void popupEntries_data()
    {
        QTest::addColumn<QString>("spec");
        QTest::addColumn<QStringList>("entries");

        QTest::newRow("all shown") << "a b c" << QStringList{"a", "b", "c"};
        QTest::newRow("hidden left out") << "a b- c" << QStringList{"a", "c"};
        QTest::newRow("disabled kept") << "a b! c" << QStringList{"a", "b", "c"};
        QTest::newRow("gone left out") << "a x c" << QStringList{"a", "c"};
        QTest::newRow("nothing to list") << "" << QStringList();
    }

    // Clicking the button pops up the visible children below it, a child of
    // the button; the call returns once it is gone, and it is deleted.
    void popupEntries()
    {
        QFETCH(QString, spec);
        QFETCH(QStringList, entries);

        makeMenu(spec);
        QStringList seen;
        QPoint where;
        QPointer<KPopupWidget> opened;
        const int shown = withPopup(
            m_button, [&] { QTest::mouseClick(m_button, Qt::LeftButton); },
            [&](KPopupWidget* popup) {
                opened = popup;
                seen = entryTexts(popup);
                where = popup->pos();
                QVERIFY(popup->isVisible() && popup->parent() == m_button);
                QCOMPARE(m_button->popupWidget(), popup);
                QCOMPARE(popup->entryIndexAt(popup->entryRect(0).center()),
                         entries.isEmpty() ? -1 : 0);
                popup->hide();
            });
        QCOMPARE(shown, 1);
        QCOMPARE(seen, entries);
        QCOMPARE(where, m_button->mapToGlobal(QPoint(0, m_button->height())));
        QVERIFY(!opened);
        QVERIFY(!m_button->popupWidget());
    }

    void popupActivation_data()
    {
        QTest::addColumn<QString>("spec");
        QTest::addColumn<QString>("how"); // "click N" or keys
        QTest::addColumn<QString>("triggered");

        QTest::newRow("click an entry") << "a b c"
                                        << "click 1"
                                        << "b";
        QTest::newRow("click a disabled entry") << "a b! c"
                                                << "click 1"
                                                << "";
        QTest::newRow("down, return") << "a b c"
                                      << "Down Return"
                                      << "a";
        QTest::newRow("down skips disabled") << "a b! c"
                                             << "Down Down Return"
                                             << "c";
        QTest::newRow("up wraps to the end") << "a b c"
                                             << "Down Up Space"
                                             << "c";
        QTest::newRow("end, enter") << "a b c"
                                    << "End Enter"
                                    << "c";
        QTest::newRow("escape") << "a b c"
                                << "Down Escape"
                                << "";
    }

    // Keys go to the button, which keeps the focus and hands them on.
    void popupActivation()
    {
        QFETCH(QString, spec);
        QFETCH(QString, how);
        QFETCH(QString, triggered);

        makeMenu(spec);
        m_button->setFocus();
        bool stillOpen = false;
        withPopup(
            m_button, [&] { QTest::mouseClick(m_button, Qt::LeftButton); },
            [&](KPopupWidget* popup) {
                if (how.startsWith("click ")) {
                    const QRect row = popup->entryRect(how.mid(6).toInt());
                    QTest::mouseClick(popup, Qt::LeftButton, Qt::NoModifier, row.center());
                } else {
                    const QMetaEnum keys = QMetaEnum::fromType<Qt::Key>();
                    for (const QString& key : how.split(' '))
                        QTest::keyClick(m_button,
                                        Qt::Key(keys.keyToValue(qPrintable("Key_" + key))));
                }
                stillOpen = popup->isVisible();
                popup->hide();
            });
        QCOMPARE(stillOpen, triggered.isEmpty() && how.startsWith("click"));
        for (const char* name : {"a", "b", "c"}) {
            if (KCountingCommand* command = entry(m_list, name))
                QCOMPARE(command->triggers, triggered == name ? 1 : 0);
        }
    }

    void popupCloses_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("closes");

        QTest::newRow("press elsewhere in the window") << "press window" << true;
        QTest::newRow("press in the popup, off the entries") << "press popup" << false;
        QTest::newRow("second click on the button") << "click button" << true;
        QTest::newRow("button hidden") << "hide button" << true;
        QTest::newRow("window hidden") << "hide window" << true;
        QTest::newRow("mouse leaves") << "leave" << false;
    }

    // Whatever closes it, the button's call returns; leaving with the mouse
    // alone is for the owner to decide.
    void popupCloses()
    {
        QFETCH(QString, how);
        QFETCH(bool, closes);

        makeMenu("a b");
        bool open = true;
        withPopup(
            m_button, [&] { QTest::mouseClick(m_button, Qt::LeftButton); },
            [&](KPopupWidget* popup) {
                if (how == "press window")
                    QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, QPoint(250, 150));
                else if (how == "press popup")
                    QTest::mouseClick(popup, Qt::LeftButton, {}, QPoint(2, 2));
                else if (how == "click button")
                    QTest::mouseClick(m_button, Qt::LeftButton);
                else if (how == "hide button")
                    m_button->hide();
                else if (how == "hide window")
                    m_window->hide();
                else
                    QCursor::setPos(m_window->geometry().bottomRight() + QPoint(100, 100));
                QCoreApplication::processEvents();
                open = popup->isVisible();
                popup->hide();
            });
        QCOMPARE(open, !closes);
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
        withPopup(
            m_button,
            [&] {
                QCursor::setPos(m_button->mapToGlobal(m_button->rect().center()));
                QTest::mouseClick(m_button, Qt::LeftButton);
            },
            [&](KPopupWidget* popup) {
                // Opened from where the mouse rests: nothing yet.
                QTest::qWait(4 * KPopupWidget::TrackInterval);
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

        // A leave of the popup is a move of its own.
        counter.count = 0;
        withPopup(
            m_button, [&] { QTest::mouseClick(m_button, Qt::LeftButton); },
            [&](KPopupWidget* popup) {
                QEvent leave(QEvent::Leave);
                QCoreApplication::sendEvent(popup, &leave);
                QTRY_VERIFY(counter.count >= 1);
                popup->hide();
            });
    }

    // A main window builds its title commands from a tree: the profile's
    // "TitleBar" by default; what the factory does not know is left out,
    // with its children, and said.
    void titleAreaFromTree()
    {
        KTestItem<KListCommand> list("KTestList");
        KTestItem<KCountingCommand> trigger("KTestTrigger");
        const QVariantList tree{
            "KTestTrigger",
            QVariantMap{{"class", "KTestList"},
                        {"name", "Menu"},
                        {"children",
                         QVariantList{"KTestTrigger",
                                      QVariantMap{{"class", "KTestNope"},
                                                  {"children", QVariantList{"KTestTrigger"}}},
                                      QVariantMap{{"class", "KTestTrigger"},
                                                  {"name", "Leaf"},
                                                  {"children", QVariantList{"KTestTrigger"}}}}}},
            QVariantMap{{"name", "no class"}}};
        setCommandTree("TitleBar", tree);
        // Through the profile file as a person writes it.
        QVERIFY(saveProfile(m_env.profilePath()));
        resetProfile(m_env.profilePath());
        QVERIFY(commandTree("TitleBar").isEmpty());
        QVERIFY(loadProfile(m_env.profilePath()));
        QCOMPARE(commandTree("TitleBar"), tree);

        KWarningCatcher catcher;
        KMainWindow window;
        QCOMPARE(window.addTitleCommandsFromProfile(), 4);
        QStringList names;
        for (KTreeNode<KCommand>* node : window.titleCommands()->treeNode()->treeGetLeafNodes())
            names << node->treeGetNodeID();
        QCOMPARE(names, QStringList({"KTestTrigger", "KTestTrigger", "Leaf"}));
        QCOMPARE(window.findCommand("Menu")->childCount(), 2);
        QCOMPARE(
            catcher.warnings(),
            QStringList({"vex.commands: no command of class \"KTestNope\" for the tree Menu",
                         "vex.commands: KTestTrigger has no children: it is not a list command",
                         "vex.commands: no command of class \"\" for the tree TitleBar"}));
        QVERIFY(window.findCommand("Menu")->childAt(1)->name() == "Leaf");

        // Each widget at the origin of its own pocket, hidden with its command.
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        KCommand* menu = window.findCommand("Menu");
        QWidget* widget = window.pocketWidget(menu);
        QVERIFY(qobject_cast<KMenuButton*>(widget));
        QCOMPARE(widget->pos(), QPoint(0, 0));
        QVERIFY(widget->parentWidget() != window.titleArea() &&
                widget->parentWidget()->parentWidget() == window.titleArea());
        menu->setVisible(false);
        QVERIFY(widget->isHidden() && widget->parentWidget()->isHidden());
    }
};

QTEST_MAIN(TestMenuButton)
#include "tst_menubutton.moc"
