// Which application opens a suffix when the service delivers lists of its
// own: letter case beyond ASCII, the same entry in two lists, entries longer
// than usual. Each row stores one list and asks a fresh probe process, which
// takes its copies of the lists on first use.

#include "commsuitekit.h"
#include "ktestappdir.h"
#include "ktestenvironment.h"

#include "qcommstores.h"

#include <QtTest>

using namespace AuthTest;

class TestCommFileTypes : public QObject
{
    Q_OBJECT

    KTestEnvironment m_env;

private slots:
    void init() { m_env.resetHost(); }

    // getAppTypeBySuffix, checkIsVexSupport and checkIsZentoSupport(type),
    // with the list of type stored; the other lists are the built-in ones.
    void storedLists_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("appType");
        QTest::addColumn<bool>("anyList");
        QTest::addColumn<bool>("typeList");

        const auto row = [](const char* tag, const QString& type, const QString& stored,
                            const QString& suffix, const QString& appType, bool anyList,
                            bool typeList) {
            QTest::newRow(tag) << type << stored << suffix << appType << anyList << typeList;
        };
        // Letter case beyond ASCII, as QString folds it: one unit at a time.
        row("accented capitals", "pdf", "übung", "ÜBUNG", "pdf", true, true);
        row("final sigma folds as sigma", "pdf", "σς", "ΣΣ", "pdf", true, true);
        row("Kelvin sign folds to k", "slidex", "kml", "\u212AML", "slidex", true, true);
        row("dotted capital I is no i", "zento", "i", "\u0130", "", false, false);
        row("sharp s is no ss", "zento", "ss", "ß", "", false, false);
        row("beyond 16 bits: Deseret", "pdf", "\U00010400", "\U00010428", "pdf", true, true);
        // The same entry in two lists, in different case.
        row("in two lists: the first wins, both hold it", "pdf", "DOCX", "Docx", "zento", true,
            true);
        // Short and long entries; a dot is part of one.
        row("a dot is part of the entry", "pdf", ".djvu", ".DJVU", "pdf", true, true);
        row("seven letters in capitals", "slidex", "keynote", "KEYNOTE", "slidex", true, true);
        row("nine letters, alike but in the middle", "tabix", "abcd1wxyz", "ABCD2WXYZ", "", false,
            false);
        const QString longEntry = "Quarterly-Report-Archive";
        row("long entry", "tabix", longEntry, longEntry.toUpper(), "tabix", true, true);
        row("one unit short of a long entry", "tabix", longEntry, longEntry.chopped(1), "", false,
            false);
    }

    void storedLists()
    {
        QFETCH(QString, type);
        QFETCH(QString, stored);
        QFETCH(QString, suffix);
        QFETCH(QString, appType);
        QFETCH(bool, anyList);
        QFETCH(bool, typeList);
        QComm::writeNimboRegValue("usercenter/allsupporttype/" + type + "open", stored);
        QCOMPARE(runProbe(KTestAppDir(m_env.rootPath()),
                          {"--apptype", suffix, "--vex", suffix, "--check", type, suffix}),
                 QStringList({appType, text(anyList), text(typeList)}));
    }
};

QTEST_GUILESS_MAIN(TestCommFileTypes)
#include "tst_commfiletypes.moc"
