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
#include <vex/kstyleoptionuserpanelmenubutton.h>
#include <vex/ktriggercommand.h>
#include <vex/kzentostyle.h>
#include <vexlite/hostcontrol.h>

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
        return new T(parent, host);
    }
};

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

class TestMenuButton : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;
    std::unique_ptr<QWidget> m_window;
    KMenuButton* m_button = nullptr;

    // A shown, active window with a menu button over entries described by a text
    // such as "a b- c! x": "-" hidden, "!" disabled, "x" a command gone.
    void makeMenu(const QString& layout)
    {
        m_window = std::make_unique<QWidget>();
        m_window->setGeometry(100, 100, 300, 200);
        auto* list = new KListCommand(m_window.get());
        for (const QString& entry : layout.split(' ', Qt::SkipEmptyParts)) {
            auto* command = new KCountingCommand(m_window.get());
            command->setText(QString(entry).remove('-').remove('!'));
            command->setVisible(!entry.endsWith('-'));
            command->setEnabled(!entry.endsWith('!'));
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

    QString triggered() const
    {
        QString names;
        for (KCountingCommand* command : m_window->findChildren<KCountingCommand*>())
            names += QString(command->text()).repeated(command->triggers);
        return names;
    }

private slots:
    void init()
    {
        m_env.resetHost();
        setDisplayScale(1.0);
    }

    void cleanup() { m_window.reset(); }

    void userPanelMetric_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("textWidth");
        QTest::addColumn<int>("height");
        QTest::addColumn<QSize>("expected");

        // 1 + 16 picture + 8 margin, 6 before a text; all but the text scaled.
        QTest::newRow("100 %") << 1.0 << 50 << 28 << QSize(81, 28);
        QTest::newRow("no text") << 1.0 << 0 << 28 << QSize(25, 28);
        QTest::newRow("150 %") << 1.5 << 50 << 28 << QSize(38 + 9 + 50, 42);
        QTest::newRow("negative height") << 2.0 << 10 << -5 << QSize(50 + 12 + 10, 0);
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
        QCOMPARE(KZentoStyle::sizeMetric(nullptr, 31, &option, nullptr), expected);
        KStyleOptionToolButton plain;
        QVERIFY(!KZentoStyle::sizeMetric(nullptr, 31, &plain, nullptr).isValid());
    }

    // Style 7: no icon, the text after the picture's room, vertically
    // centred; a shade while the mouse is over it.
    void userPanelPainting()
    {
        QWidget window;
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
                QVERIFY2(c.red() < 200 || c.green() > 60, "no icon");
                if (c != Qt::white)
                    ink |= QRect(x, y, 1, 1);
            }
        }
        QVERIFY(ink.left() >= 1 + 16 + 6 && qAbs(ink.center().y() - 14) <= 2);
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QCoreApplication::sendEvent(button, &enter);
        QVERIFY(paint().pixelColor(5, 5) != QColor(Qt::white));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(button, &leave);
        QCOMPARE(paint().pixelColor(5, 5), QColor(Qt::white));
    }

    void popup_data()
    {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QString>("action"); // "click N", keys, or what closes it
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("triggered");
        QTest::addColumn<bool>("open"); // after the action

        const QStringList abc{"a", "b", "c"};
        QTest::newRow("hidden and gone left out") << "a b- x c"
                                                  << "" << QStringList{"a", "c"} << "" << true;
        QTest::newRow("click an entry") << "a b c"
                                        << "click 1" << abc << "b" << false;
        QTest::newRow("click a disabled one") << "a b! c"
                                              << "click 1" << abc << "" << true;
        QTest::newRow("keys skip disabled") << "a b! c"
                                            << "Down Down Return" << abc << "c" << false;
        QTest::newRow("escape") << "a b c"
                                << "Down Escape" << abc << "" << false;
        QTest::newRow("press elsewhere") << "a b c"
                                         << "press window" << abc << "" << false;
        QTest::newRow("second click") << "a b c"
                                      << "reclick" << abc << "" << false;
        QTest::newRow("window hidden") << "a b c"
                                       << "hide window" << abc << "" << false;
        QTest::newRow("mouse leaves") << "a b c"
                                      << "leave" << abc << "" << true;
    }

    // A click opens the popup below the button, a child of it; the call
    // returns once it is gone, deleted. Keys go to the button, which keeps
    // the focus; leaving with the mouse is for the owner to decide.
    void popup()
    {
        QFETCH(QString, layout);
        QFETCH(QString, action);
        QFETCH(QStringList, entries);
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
                const QMetaEnum keys = QMetaEnum::fromType<Qt::Key>();
                if (action.startsWith("click "))
                    QTest::mouseClick(popup, Qt::LeftButton, {},
                                      popup->entryRect(action.mid(6).toInt()).center());
                else if (action == "press window")
                    QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, QPoint(250, 150));
                else if (action == "press popup")
                    QTest::mouseClick(popup, Qt::LeftButton, {}, QPoint(2, 2));
                else if (action == "reclick")
                    QTest::mouseClick(m_button, Qt::LeftButton);
                else if (action == "hide window")
                    m_window->hide();
                else if (action == "leave")
                    QCursor::setPos(m_window->geometry().bottomRight() + QPoint(100, 100));
                else if (!action.isEmpty())
                    for (const QString& key : action.split(' '))
                        QTest::keyClick(m_button,
                                        Qt::Key(keys.keyToValue(qPrintable("Key_" + key))));
                QCoreApplication::processEvents();
                stillOpen = popup->isVisible();
                popup->hide();
            });
        QCOMPARE(shown, 1);
        QCOMPARE(seen, entries);
        QCOMPARE(stillOpen, open);
        QCOMPARE(this->triggered(), triggered);
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

    // The title commands from the profile's "TitleBar" tree; what the
    // factory does not know is left out with its children, and said. Each
    // widget sits at the origin of its own pocket, hidden with its command.
    void titleAreaFromProfile()
    {
        KTestItem<KListCommand> list("KTestList");
        KTestItem<KCountingCommand> trigger("KTestTrigger");
        const QVariantMap nope{{"class", "KTestNope"}, {"children", QVariantList{"KTestTrigger"}}};
        const QVariantMap leaf{{"class", "KTestTrigger"},
                               {"name", "Leaf"},
                               {"children", QVariantList{"KTestTrigger"}}};
        const QVariantList tree{"KTestTrigger",
                                QVariantMap{{"class", "KTestList"},
                                            {"name", "Menu"},
                                            {"children", QVariantList{"KTestTrigger", nope, leaf}}},
                                QVariantMap{{"name", "no class"}}};
        setCommandTree("TitleBar", tree);
        QVERIFY(saveProfile(m_env.profilePath()));
        resetProfile(m_env.profilePath());
        QVERIFY(loadProfile(m_env.profilePath()));
        QCOMPARE(commandTree("TitleBar"), tree);

        KWarningCatcher catcher;
        KMainWindow window;
        QCOMPARE(window.addTitleCommandsFromProfile(), 4);
        QStringList leaves;
        for (KTreeNode<KCommand>* node : window.titleCommands()->treeNode()->treeGetLeafNodes())
            leaves << node->treeGetNodeID();
        QCOMPARE(leaves, QStringList({"KTestTrigger", "KTestTrigger", "Leaf"}));
        QCOMPARE(
            catcher.warnings(),
            QStringList({"vex.commands: no command of class \"KTestNope\" for the tree Menu",
                         "vex.commands: KTestTrigger has no children: it is not a list command",
                         "vex.commands: no command of class \"\" for the tree TitleBar"}));

        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        KCommand* menu = window.findCommand("Menu");
        QWidget* widget = window.pocketWidget(menu);
        QVERIFY(qobject_cast<KMenuButton*>(widget) && widget->pos() == QPoint(0, 0));
        QCOMPARE(widget->parentWidget()->parentWidget(), window.titleArea());
        menu->setVisible(false);
        QVERIFY(widget->isHidden() && widget->parentWidget()->isHidden());
    }
};

QTEST_MAIN(TestMenuButton)
#include "tst_menubutton.moc"
