// The plug-in brings its compiled-in resources with it: loading it the way
// a host does makes ":/images" available, and with it the host's
// "res:/images", without the host calling anything in the plug-in.

#include "ktestenvironment.h"

#include <vex/kresourcescheme.h>

#include <QLibrary>
#include <QPixmap>
#include <QtTest>

using namespace AuthTest;

class TestPluginResources : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void imagesArriveWithThePlugin()
    {
        KResourceScheme::install();
        QVERIFY(!QFile::exists(":/images/close_normal.png"));
        QVERIFY(QPixmap("res:/images/logo.png").isNull());

        QLibrary plugin(QCoreApplication::applicationDirPath() + "/libauthplugin.so");
        QVERIFY2(plugin.load(), qPrintable(plugin.errorString()));
        for (const char* name : {"close_normal", "close_hover", "close_sunken", "logo"})
            QVERIFY2(QFile::exists(QString(":/images/%1.png").arg(name)), name);
        QCOMPARE(QPixmap("res:/images/logo.png").size(), QSize(40, 40));
    }
};

QTEST_MAIN(TestPluginResources)

#include "tst_pluginresources.moc"
