// Which application opens which extension: the built-in lists, stored
// overrides, the order in which the lists are asked, letter case, and the
// copies each function keeps from its first call. Stored lists are seen by
// a fresh probe process per case, since this process keeps its copies.

#include "kcommprobe.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include "common/qcommfiletypes.h"
#include "common/qcommstores.h"

#include <QDir>
#include <QtTest>

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

    void builtinLists()
    {
        QCOMPARE(QComm::getZentoOpenAllSupportTypeList(), kZento);
        QCOMPARE(QComm::getTabixOpenAllSupportTypeList(), kTabix);
        QCOMPARE(QComm::getSlidexOpenAllSupportTypeList(), kSlidex);
        QCOMPARE(QComm::getPdfOpenAllSupportType(), kPdf);

        QStringList zento{"stale"}, slidex, tabix, pdf{"stale", "more"};
        QComm::getZentoSupportList(zento, slidex, tabix, pdf);
        QCOMPARE(zento, kZento);
        QCOMPARE(slidex, kSlidex); // second parameter
        QCOMPARE(tabix, kTabix);
        QCOMPARE(pdf, kPdf);
    }

    void lookups_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("appType");
        QTest::addColumn<bool>("vex");
        QTest::addColumn<QString>("checkType"); // asked with checkIsZentoSupport
        QTest::addColumn<bool>("check");

        const struct
        {
            const char *tag, *suffix, *appType;
            bool vex;
            const char* checkType;
            bool check;
        } rows[] = {
            {"docx", "docx", "zento", true, "tabix", false},
            {"TXT: word processor asked first", "TXT", "zento", true, "tabix", true},
            {"uof, in three lists", "uof", "zento", true, "slidex", true},
            {"csv", "csv", "tabix", true, "zento", false},
            {"Dbf, case ignored", "Dbf", "tabix", true, "TABIX", true},
            {"pptx", "PPTX", "slidex", true, "slidex", true},
            {"epub", "Epub", "pdf", true, "PDF", true},
            {"NIMBO stands for all four", "pdf", "pdf", true, "NIMBO", true},
            {"other application type", "pdf", "pdf", true, "other", false},
            {"unknown", "xyz", "", false, "nimbo", false},
            {"empty", "", "", false, "nimbo", false},
            {"with its dot", ".docx", "", false, "zento", false},
        };
        for (const auto& r : rows)
            QTest::newRow(r.tag) << QString(r.suffix) << QString(r.appType) << r.vex
                                 << QString(r.checkType) << r.check;
    }

    void lookups()
    {
        QFETCH(QString, suffix);
        QFETCH(QString, appType);
        QFETCH(bool, vex);
        QFETCH(QString, checkType);
        QFETCH(bool, check);
        QCOMPARE(QComm::getAppTypeBySuffix(suffix), appType);
        QCOMPARE(QComm::checkIsVexSupport(suffix), vex);
        QCOMPARE(QComm::checkIsZentoSupport(checkType, suffix), check);
    }

    // --- stored lists, in a fresh process each -------------------------

    void storedLists_data()
    {
        QTest::addColumn<QString>("storedType"); // the one list stored
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QStringList>("list"); // what it reads as
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("appType");
        QTest::addColumn<bool>("vex");
        QTest::addColumn<bool>("check"); // whether storedType opens suffix

        const struct
        {
            const char *tag, *storedType, *stored;
            QStringList list;
            const char *suffix, *appType;
            bool vex, check;
        } rows[] = {
            {"separators kept: empty suffix",
             "zento",
             "a;;b;",
             {"a", "", "b", ""},
             "",
             "zento",
             true,
             true},
            {"empty text: built-in list", "zento", "", kZento, "", "", false, false},
            {"txt moves to the spreadsheet", "zento", "odt", {"odt"}, "TXT", "tabix", true, false},
            {"spreadsheet list without csv", "tabix", "docx", {"docx"}, "csv", "", false, false},
            {"stored case kept", "pdf", "PDF;Djvu", {"PDF", "Djvu"}, "djvu", "pdf", true, true},
            {"empty entries at the end",
             "slidex",
             "key;;",
             {"key", "", ""},
             "KEY",
             "slidex",
             true,
             true},
        };
        for (const auto& r : rows)
            QTest::newRow(r.tag) << QString(r.storedType) << QString(r.stored) << r.list
                                 << QString(r.suffix) << QString(r.appType) << r.vex << r.check;
    }

    void storedLists()
    {
        QFETCH(QString, storedType);
        QFETCH(QString, stored);
        QFETCH(QStringList, list);
        QFETCH(QString, suffix);
        QFETCH(QString, appType);
        QFETCH(bool, vex);
        QFETCH(bool, check);

        QComm::writeNimboRegValue(storeKey(storedType), stored);
        KTestAppDir appDir(m_env.rootPath());
        KCommProbe probe(appDir, QString());
        QVERIFY(probe.isValid());
        const QJsonArray out = probe.run({"--lists", "--support-list", "--apptype", suffix, "--vex",
                                          suffix, "--check", storedType, suffix});
        QCOMPARE(out.size(), 5);

        const QMap<QString, QStringList> builtin{
            {"zento", kZento}, {"tabix", kTabix}, {"slidex", kSlidex}, {"pdf", kPdf}};
        for (auto it = builtin.cbegin(); it != builtin.cend(); ++it) {
            const QStringList expected = it.key() == storedType ? list : it.value();
            QCOMPARE(listOf(out.at(0), it.key()), expected);
            QCOMPARE(listOf(out.at(1), it.key()), expected);
        }
        QCOMPARE(out.at(2).toString(), appType);
        QCOMPARE(out.at(3).toBool(), vex);
        QCOMPARE(out.at(4).toBool(), check);
    }

    // Each function takes its copies on its own first call: those asked
    // before a change keep the old lists, those asked after see the pdf list
    // of that moment but the other lists as they were first read.
    void eachFunctionCopiesOnItsFirstCall()
    {
        KTestAppDir appDir(m_env.rootPath());
        KCommProbe probe(appDir, QString());
        QVERIFY(probe.isValid());
        // clang-format off
        const QJsonArray out = probe.run({
            "--apptype", "pdf",                     // 0: copies taken
            "--write", storeKey("pdf"), "djvu",
            "--write", storeKey("zento"), "zzz",
            "--write", storeKey("tabix"), "zzz",
            "--write", storeKey("slidex"), "zzz",
            "--lists",                              // 5: only pdf read again
            "--apptype", "djvu",                    // 6: its old copies
            "--vex", "djvu",                        // 7: first call, new pdf list
            "--vex", "zzz",                         // 8: other lists read before
            "--check", "pdf", "djvu",               // 9: first call
            "--check", "nimbo", "mobi",             // 10: its copy, made at 9
            "--support-list",                       // 11: first call
            "--apptype", "mobi",                    // 12
        });
        // clang-format on
        QCOMPARE(out.size(), 13);
        QCOMPARE(out.at(0).toString(), QString("pdf"));
        const QJsonValue lists = out.at(5);
        QCOMPARE(listOf(lists, "pdf"), QStringList{"djvu"});
        QCOMPARE(listOf(lists, "zento") + listOf(lists, "tabix") + listOf(lists, "slidex"),
                 kZento + kTabix + kSlidex);
        QCOMPARE(out.at(6).toString(), QString());
        QCOMPARE(out.at(7).toBool(), true);
        QCOMPARE(out.at(8).toBool(), false);
        QCOMPARE(out.at(9).toBool(), true);
        QCOMPARE(out.at(10).toBool(), false);
        QCOMPARE(listOf(out.at(11), "pdf"), QStringList{"djvu"});
        QCOMPARE(listOf(out.at(11), "zento"), kZento);
        QCOMPARE(out.at(12).toString(), QString("pdf"));
    }
};

QTEST_GUILESS_MAIN(TestQCommFileTypes)
#include "tst_qcommfiletypes.moc"
