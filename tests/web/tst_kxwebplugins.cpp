// The web plug-in registry and factory, and the view's mime-type set. The
// mime-type set is filled once per process, so the two functions that look
// at it come first.

#include <ikxwebpluginfactoryitem.h>
#include <kxauthwebview.h>
#include <kxwebpluginfactory.h>
#include <kxwebpluginfactoryitemregister.h>

#include <QWebElement>
#include <QWebFrame>
#include <QWebSettings>
#include <QtTest>

#include <memory>
#include <vector>

namespace {

// What the items were asked to create: "item mimeType url name=value ...".
QStringList g_created;

class TestItem : public IKxWebPluginFactoryItem
{
public:
    // "name:type,type"
    explicit TestItem(const QString& description)
        : m_name(description.section(':', 0, 0))
        , m_types(description.section(':', 1).split(',', Qt::SkipEmptyParts))
    {}

    QObject* create(const QString& mimeType, const QUrl& url, const QStringList& argumentNames,
                    const QStringList& argumentValues) override
    {
        QStringList call{m_name, mimeType, url.toString()};
        for (int i = 0; i < argumentNames.size(); ++i)
            call << argumentNames.at(i) + "=" + argumentValues.value(i);
        g_created << call.join(' ');
        return new QWidget;
    }

    QWebPluginFactory::Plugin plugin() override
    {
        QWebPluginFactory::Plugin plugin;
        plugin.name = m_name;
        for (const QString& type : qAsConst(m_types))
            plugin.mimeTypes.append({type, "a test type", {"zt"}});
        return plugin;
    }

private:
    QString m_name;
    QStringList m_types;
};

using Registers = std::vector<std::unique_ptr<KxWebPluginFactoryItemRegister>>;

Registers registerItems(const QStringList& descriptions)
{
    Registers registers;
    for (const QString& description : descriptions)
        registers.push_back(
            std::make_unique<KxWebPluginFactoryItemRegister>(new TestItem(description)));
    return registers;
}

} // namespace

class TestKxWebPlugins : public QObject
{
    Q_OBJECT

private slots:
    void init() { g_created.clear(); }

    // Nothing registered: nothing offered, and asked again once something
    // is. Then collected once per process, lower case, each type once;
    // later items never join and unregistered ones never leave.
    void mimeTypesCollectedOnce()
    {
        const KxWebPluginFactory factory;
        QVERIFY(factory.plugins().isEmpty());
        QVERIFY(!factory.create("text/x-any", QUrl(), {}, {}));
        QVERIFY(KxAuthWebView::availableMimeTypes().isEmpty());
        QVERIFY(!KxAuthWebView::isMimeTypeAvailable("text/x-any"));
        {
            const Registers registers = registerItems({"a:Text/X-A"});
            QVERIFY(KxAuthWebView::isMimeTypeAvailable("text/x-a"));
        }
        const Registers late = registerItems({"b:Text/X-Late,text/x-b", "c:TEXT/X-B"});
        QCOMPARE(KxAuthWebView::availableMimeTypes(), QStringList{"text/x-a"});
        QVERIFY(KxAuthWebView::isMimeTypeAvailable("TEXT/X-A"));
        QVERIFY(!KxAuthWebView::isMimeTypeAvailable("text/x-b"));
    }

    void factory_data()
    {
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QString>("requested");
        QTest::addColumn<QString>("creator"); // empty: nobody

        const auto row = [](const char* tag, const QString& items, const char* requested,
                            const char* creator) {
            QTest::newRow(tag) << items.split(' ') << QString(requested) << QString(creator);
        };
        row("other letter case, as requested", "a:Text/X-A", "TEXT/x-a", "a");
        row("earlier item wins", "a:text/x-same b:text/x-same", "text/x-same", "a");
        row("second type of the second item", "a:text/x-a b:text/x-b1,text/x-b2", "text/x-b2", "b");
        row("prefix only", "a:text/x-ab", "text/x-a", "");
    }

    void factory()
    {
        QFETCH(QStringList, items);
        QFETCH(QString, requested);
        QFETCH(QString, creator);

        {
            const Registers registers = registerItems(items);
            const KxWebPluginFactory factory;
            QStringList names;
            for (const QWebPluginFactory::Plugin& plugin : factory.plugins())
                names << plugin.name;
            QStringList registered;
            for (const QString& item : items)
                registered << item.section(':', 0, 0);
            QCOMPARE(names, registered);

            std::unique_ptr<QObject> object(
                factory.create(requested, QUrl("http://zento.example/x.zt"), {"k"}, {"v"}));
            QCOMPARE(bool(object), !creator.isEmpty());
            QCOMPARE(g_created, creator.isEmpty() ? QStringList()
                                                  : QStringList{creator + " " + requested +
                                                                " http://zento.example/x.zt k=v"});
        }
        QVERIFY(getWebPluginFactoryItems().isEmpty());
    }

    // A register takes out the first occurrence of its item, and only that.
    void unregister()
    {
        auto* twice = new TestItem("twice:text/x-t");
        TestItem other("other:text/x-o");
        auto* keep = new KxWebPluginFactoryItemRegister(twice);
        getWebPluginFactoryItems().append(&other);
        getWebPluginFactoryItems().append(twice);
        delete keep;
        QCOMPARE(getWebPluginFactoryItems(), (QList<IKxWebPluginFactoryItem*>{&other, twice}));
        getWebPluginFactoryItems().clear();

        // No item: nothing registered that plugins() would stumble on.
        const KxWebPluginFactoryItemRegister none(nullptr);
        QVERIFY(getWebPluginFactoryItems().isEmpty());
        QVERIFY(KxWebPluginFactory().plugins().isEmpty());
    }

    // An embedded object reaches the items through the view's own page,
    // with the element's attributes and parameters. (A page installed later,
    // as the web dialog does, has no factory: see tst_kxwebdlg.)
    void embedding()
    {
        const Registers registers = registerItems({"chart:Application/X-Zento-Chart"});
        KxAuthWebView view;
        QCOMPARE(view.page()->settings()->testAttribute(QWebSettings::PluginsEnabled), true);
        view.resize(300, 200);
        view.show();
        view.setHtml("<object type='application/x-zento-chart' data='chart.json' width='120' "
                     "height='60'><param name='colour' value='blue'></object><p>end</p>",
                     QUrl("http://zento.example/d/"));
        // The page has laid out once the text after the object has a place.
        QTRY_VERIFY(!view.page()->mainFrame()->findFirstElement("p").geometry().isEmpty());
        QCOMPARE(g_created,
                 QStringList{"chart application/x-zento-chart http://zento.example/d/chart.json "
                             "colour=blue type=application/x-zento-chart data=chart.json "
                             "width=120 height=60 src=chart.json"});
    }
};

QTEST_MAIN(TestKxWebPlugins)

#include "tst_kxwebplugins.moc"
