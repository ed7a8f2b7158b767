// Which application opens which extension: the built-in lists, stored
// overrides, the order in which the lists are asked, letter case, and the
// copies each function keeps from its first call. Stored overrides are seen
// by a fresh probe process per case, since this process keeps its copies.

#include "kcommprobe.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include "common/qcommfiletypes.h"
#include "common/qcommstores.h"

#include <QDir>
#include <QtTest>

#include <functional>

using ListGetter = std::function<QStringList()>;
Q_DECLARE_METATYPE(ListGetter)

namespace {

const QStringList kZento{"zento", "zentt", "doc",   "docx", "dot", "rtf",  "txt",   "htm",
                         "html",  "mht",   "mhtml", "uof",  "xml", "docm", "zentos"};
const QStringList kTabix{"tabix", "tabixt", "xls",  "xlsx",   "xlsm",  "xlsb", "xlam", "xltx",
                         "xltm",  "xls",    "xlt",  "xla",    "xlw",   "odc",  "uxdc", "txt",
                         "xml",   "htm",    "html", "mht",    "mhtml", "dbf",  "uof",  "prn",
                         "csv",   "tabixs", "mdb",  "accdb",  "dqy",   "dbc",  "udl",  "dsn",
                         "odc",   "db",     "slk",  "tabixx", "xlk",   "dif"};
const QStringList kSlidex{"deckr", "deckrt", "pptx", "ppt",  "pptm", "ppsx", "pps",
                          "ppsm",  "potx",   "pot",  "potm", "wpd",  "uof",  "deckrs"};
const QStringList kPdf{"pdf", "epub", "mobi"};

QString storeKey(const QString& appType)
{
    return "usercenter/allsupporttype/" + appType + "open";
}

QStringList listOf(const QJsonValue& lists, const QString& appType)
{
    QStringList result;
    for (const QJsonValue& entry : lists.toObject().value(appType).toArray())
        result.append(entry.toString());
    return result;
}

} // namespace

class TestQCommFileTypes : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init() { QDir(m_env.profilePath() + "/stores").removeRecursively(); }

    // --- built-in lists, in this process -------------------------------

    void builtinLists_data()
    {
        QTest::addColumn<ListGetter>("getter");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("word processor")
            << ListGetter(QComm::getZentoOpenAllSupportTypeList) << kZento;
        QTest::newRow("spreadsheet, duplicates kept")
            << ListGetter(QComm::getTabixOpenAllSupportTypeList) << kTabix;
        QTest::newRow("presentation")
            << ListGetter(QComm::getSlidexOpenAllSupportTypeList) << kSlidex;
        QTest::newRow("pdf") << ListGetter(QComm::getPdfOpenAllSupportType) << kPdf;
    }

    void builtinLists()
    {
        QFETCH(ListGetter, getter);
        QFETCH(QStringList, expected);
        QCOMPARE(getter(), expected);
    }

    void supportListInParameterOrder()
    {
        QStringList zento{"stale"}, slidex{"stale"}, tabix, pdf{"stale", "more"};
        QComm::getZentoSupportList(zento, slidex, tabix, pdf);
        QCOMPARE(zento, kZento);
        QCOMPARE(slidex, kSlidex);
        QCOMPARE(tabix, kTabix);
        QCOMPARE(pdf, kPdf);
    }

    void appTypeBySuffix_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("expected");

        QTest::newRow("docx") << "docx"
                              << "zento";
        QTest::newRow("TXT: word processor asked first") << "TXT"
                                                         << "zento";
        QTest::newRow("xml, in two lists") << "xml"
                                           << "zento";
        QTest::newRow("uof, in three lists") << "uof"
                                             << "zento";
        QTest::newRow("csv") << "csv"
                             << "tabix";
        QTest::newRow("Dbf, mixed case") << "Dbf"
                                         << "tabix";
        QTest::newRow("pptx") << "PPTX"
                              << "slidex";
        QTest::newRow("wpd") << "wpd"
                             << "slidex";
        QTest::newRow("epub") << "Epub"
                              << "pdf";
        QTest::newRow("unknown") << "xyz"
                                 << "";
        QTest::newRow("empty") << ""
                               << "";
        QTest::newRow("with its dot") << ".docx"
                                      << "";
        QTest::newRow("trailing space") << "doc "
                                        << "";
    }

    void appTypeBySuffix()
    {
        QFETCH(QString, suffix);
        QFETCH(QString, expected);
        QCOMPARE(QComm::getAppTypeBySuffix(suffix), expected);
    }

    void zentoSupport_data()
    {
        QTest::addColumn<QString>("appType");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<bool>("expected");

        QTest::newRow("NIMBO stands for all") << "NIMBO"
                                              << "pdf" << true;
        QTest::newRow("nimbo, unknown suffix") << "nimbo"
                                               << "xyz" << false;
        QTest::newRow("tabix does not open docx") << "tabix"
                                                  << "docx" << false;
        QTest::newRow("tabix opens txt too") << "tabix"
                                             << "txt" << true;
        QTest::newRow("case ignored on both") << "Zento"
                                              << "DOCX" << true;
        QTest::newRow("slidex, uof") << "slidex"
                                     << "uof" << true;
        QTest::newRow("slidex, xls") << "slidex"
                                     << "xls" << false;
        QTest::newRow("pdf, mobi") << "PDF"
                                   << "mobi" << true;
        QTest::newRow("other application type") << "other"
                                                << "pdf" << false;
        QTest::newRow("empty application type") << ""
                                                << "pdf" << false;
    }

    void zentoSupport()
    {
        QFETCH(QString, appType);
        QFETCH(QString, suffix);
        QFETCH(bool, expected);
        QCOMPARE(QComm::checkIsZentoSupport(appType, suffix), expected);
    }

    void vexSupport_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<bool>("expected");

        QTest::newRow("word processor") << "DoCx" << true;
        QTest::newRow("spreadsheet only") << "dif" << true;
        QTest::newRow("presentation only") << "deckrs" << true;
        QTest::newRow("pdf only") << "MOBI" << true;
        QTest::newRow("unknown") << "xyz" << false;
        QTest::newRow("empty") << "" << false;
    }

    void vexSupport()
    {
        QFETCH(QString, suffix);
        QFETCH(bool, expected);
        QCOMPARE(QComm::checkIsVexSupport(suffix), expected);
    }

    // Everything has been asked once by now; the copies stay, only the pdf
    // list is read again.
    void laterStoredListsReachOnlyThePdfGetter()
    {
        for (const char* appType : {"zento", "tabix", "slidex", "pdf"})
            QComm::writeNimboRegValue(storeKey(appType), "new");

        QCOMPARE(QComm::getZentoOpenAllSupportTypeList(), kZento);
        QCOMPARE(QComm::getTabixOpenAllSupportTypeList(), kTabix);
        QCOMPARE(QComm::getSlidexOpenAllSupportTypeList(), kSlidex);
        QCOMPARE(QComm::getPdfOpenAllSupportType(), QStringList{"new"});
        QStringList zento, slidex, tabix, pdf;
        QComm::getZentoSupportList(zento, slidex, tabix, pdf);
        QCOMPARE(pdf, kPdf);
        QCOMPARE(QComm::getAppTypeBySuffix("new"), QString());
        QVERIFY(!QComm::checkIsVexSupport("new"));
        QVERIFY(!QComm::checkIsZentoSupport("nimbo", "new"));
    }

    // --- stored lists, in a fresh process each -------------------------

    void storedLists_data()
    {
        QTest::addColumn<QVariantMap>("stored");
        QTest::addColumn<QVariantMap>("changed"); // lists that differ from the built-in ones
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("appType");
        QTest::addColumn<bool>("vex");
        QTest::addColumn<QString>("checkType");
        QTest::addColumn<bool>("check");

        QTest::newRow("separators kept, so an empty suffix is supported")
            << QVariantMap{{"zento", "a;;b;"}}
            << QVariantMap{{"zento", QStringList{"a", "", "b", ""}}} << ""
            << "zento" << true << "zento" << true;
        QTest::newRow("empty stored text: built-in list")
            << QVariantMap{{"zento", ""}, {"tabix", ""}} << QVariantMap{} << ""
            << "" << false << "nimbo" << false;
        QTest::newRow("word processor no longer opens txt")
            << QVariantMap{{"zento", "odt"}} << QVariantMap{{"zento", QStringList{"odt"}}} << "TXT"
            << "tabix" << true << "zento" << false;
        QTest::newRow("spreadsheet list without csv")
            << QVariantMap{{"tabix", "docx"}} << QVariantMap{{"tabix", QStringList{"docx"}}}
            << "csv"
            << "" << false << "tabix" << false;
        QTest::newRow("stored entries keep their case")
            << QVariantMap{{"pdf", "PDF;Djvu"}} << QVariantMap{{"pdf", QStringList{"PDF", "Djvu"}}}
            << "djvu"
            << "pdf" << true << "Pdf" << true;
        QTest::newRow("presentation list with empty entries")
            << QVariantMap{{"slidex", "key;;"}}
            << QVariantMap{{"slidex", QStringList{"key", "", ""}}} << "KEY"
            << "slidex" << true << "nimbo" << true;
        QTest::newRow("one extension everywhere: word processor wins")
            << QVariantMap{{"zento", "x"}, {"tabix", "x"}, {"slidex", "x"}, {"pdf", "x"}}
            << QVariantMap{{"zento", QStringList{"x"}},
                           {"tabix", QStringList{"x"}},
                           {"slidex", QStringList{"x"}},
                           {"pdf", QStringList{"x"}}}
            << "X"
            << "zento" << true << "pdf" << true;
    }

    void storedLists()
    {
        QFETCH(QVariantMap, stored);
        QFETCH(QVariantMap, changed);
        QFETCH(QString, suffix);
        QFETCH(QString, appType);
        QFETCH(bool, vex);
        QFETCH(QString, checkType);
        QFETCH(bool, check);

        for (auto it = stored.cbegin(); it != stored.cend(); ++it)
            QComm::writeNimboRegValue(storeKey(it.key()), it.value());

        KTestAppDir appDir(m_env.rootPath());
        KCommProbe probe(appDir, QString());
        QVERIFY(probe.isValid());
        const QJsonArray out = probe.run({"--lists", "--support-list", "--apptype", suffix, "--vex",
                                          suffix, "--check", checkType, suffix});
        QCOMPARE(out.size(), 5);

        const QMap<QString, QStringList> builtin{
            {"zento", kZento}, {"tabix", kTabix}, {"slidex", kSlidex}, {"pdf", kPdf}};
        for (auto it = builtin.cbegin(); it != builtin.cend(); ++it) {
            const QStringList expected = changed.value(it.key(), it.value()).toStringList();
            QCOMPARE(listOf(out.at(0), it.key()), expected);
            QCOMPARE(listOf(out.at(1), it.key()), expected);
        }
        QCOMPARE(out.at(2).toString(), appType);
        QCOMPARE(out.at(3).toBool(), vex);
        QCOMPARE(out.at(4).toBool(), check);
    }

    // Each function takes its copies on its own first call: those asked
    // before a change keep the old lists, those asked after see the pdf list
    // of that moment but still the word-processor list read first.
    void eachFunctionCopiesOnItsFirstCall()
    {
        KTestAppDir appDir(m_env.rootPath());
        KCommProbe probe(appDir, QString());
        QVERIFY(probe.isValid());
        // clang-format off
        const QJsonArray out = probe.run({
            "--apptype", "pdf",                     // 0: copies taken
            "--write", storeKey("pdf"), "djvu",     // 1
            "--write", storeKey("zento"), "zzz",    // 2
            "--lists",                              // 3
            "--apptype", "djvu",                    // 4: its old copies
            "--vex", "djvu",                        // 5: first call, new pdf list
            "--vex", "zzz",                         // 6: zento list read before
            "--check", "pdf", "djvu",               // 7: first call
            "--check", "nimbo", "mobi",             // 8: its copy, made at 7
            "--support-list",                       // 9: first call
            "--apptype", "mobi",                    // 10
        });
        // clang-format on
        QCOMPARE(out.size(), 11);
        QCOMPARE(out.at(0).toString(), QString("pdf"));
        QCOMPARE(listOf(out.at(3), "pdf"), QStringList{"djvu"});
        QCOMPARE(listOf(out.at(3), "zento"), kZento);
        QCOMPARE(out.at(4).toString(), QString());
        QCOMPARE(out.at(5).toBool(), true);
        QCOMPARE(out.at(6).toBool(), false);
        QCOMPARE(out.at(7).toBool(), true);
        QCOMPARE(out.at(8).toBool(), false);
        QCOMPARE(listOf(out.at(9), "pdf"), QStringList{"djvu"});
        QCOMPARE(listOf(out.at(9), "zento"), kZento);
        QCOMPARE(out.at(10).toString(), QString("pdf"));
    }
};

QTEST_GUILESS_MAIN(TestQCommFileTypes)
#include "tst_qcommfiletypes.moc"
