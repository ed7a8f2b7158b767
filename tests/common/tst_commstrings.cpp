// The wide-string helpers: cutting and naming paths, trimming, replacing.

#include "common/commstrings.h"

#include <QtTest>

using Comm::WideString;

namespace {

WideString w(const QString& text)
{
    return text.toStdU16String();
}

QString q(const WideString& text)
{
    return QString::fromStdU16String(text);
}

} // namespace

class TestCommStrings : public QObject
{
    Q_OBJECT

private slots:
    void pathRemoveFileSpec_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected");
        QTest::newRow("file in folder") << "/a/b/c.txt"
                                        << "/a/b";
        QTest::newRow("trailing separator") << "/a/b/"
                                            << "/a/b";
        QTest::newRow("relative") << "a/b"
                                  << "a";
        QTest::newRow("bare name") << "file.txt"
                                   << "";
        QTest::newRow("root") << "/"
                              << "";
        QTest::newRow("top-level entry") << "/a"
                                         << "";
        QTest::newRow("empty") << ""
                               << "";
        QTest::newRow("backslashes are not separators") << "C:\\x\\y.txt"
                                                        << "";
        QTest::newRow("non-ASCII")
            << QString::fromUtf8("/文档/漫游/a.txt") << QString::fromUtf8("/文档/漫游");
    }

    void pathRemoveFileSpec()
    {
        QFETCH(QString, path);
        QFETCH(QString, expected);
        WideString text = w(path);
        Comm::pathRemoveFileSpec(text);
        QCOMPARE(q(text), expected);
    }

    void getFileName_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected");
        QTest::newRow("file in folder") << "/a/b/c.txt"
                                        << "c.txt";
        QTest::newRow("trailing separator") << "/a/b/"
                                            << "";
        QTest::newRow("bare name") << "c.txt"
                                   << "c.txt";
        QTest::newRow("root") << "/"
                              << "";
        QTest::newRow("empty") << ""
                               << "";
        QTest::newRow("non-ASCII, outside the BMP") << QString::fromUtf8("/目录/文件\U0001F600.txt")
                                                    << QString::fromUtf8("文件\U0001F600.txt");
    }

    void getFileName()
    {
        QFETCH(QString, path);
        QFETCH(QString, expected);
        QCOMPARE(q(Comm::getFileName(path.utf16())), expected);
    }

    void getFileNameOfNull() { QCOMPARE(q(Comm::getFileName(nullptr)), QString()); }

    void trimSpace_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("both ends") << "  a b  "
                                   << "a b";
        QTest::newRow("inner spaces kept") << "a  b"
                                           << "a  b";
        QTest::newRow("tabs are not spaces") << "\ta\t"
                                             << "\ta\t";
        QTest::newRow("stops at a tab") << " \t a \n "
                                        << "\t a \n";
        QTest::newRow("spaces only") << "    "
                                     << "";
        QTest::newRow("empty") << ""
                               << "";
        QTest::newRow("no-break space kept")
            << QString::fromUtf8("\u00a0a ") << QString::fromUtf8("\u00a0a");
    }

    void trimSpace()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        WideString inPlace = w(text);
        const WideString copy = Comm::trimSpace(inPlace);
        QCOMPARE(q(inPlace), expected);
        QCOMPARE(q(copy), expected);
    }

    void replace_data()
    {
        QTest::addColumn<QString>("src");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("expected");
        QTest::newRow("inserted text not searched again") << "aa"
                                                          << "a"
                                                          << "aa"
                                                          << "aaaa";
        QTest::newRow("removal") << "a-b-c"
                                 << "-"
                                 << ""
                                 << "abc";
        QTest::newRow("left to right, no overlap") << "aaa"
                                                   << "aa"
                                                   << "b"
                                                   << "ba";
        QTest::newRow("match formed around the insertion") << "aabb"
                                                           << "ab"
                                                           << ""
                                                           << "ab";
        QTest::newRow("case-sensitive") << "aXa"
                                        << "x"
                                        << "y"
                                        << "aXa";
        QTest::newRow("longer than the text") << "abc"
                                              << "abcd"
                                              << "x"
                                              << "abc";
        QTest::newRow("empty text") << ""
                                    << "a"
                                    << "b"
                                    << "";
        QTest::newRow("empty from: unchanged") << "abc"
                                               << ""
                                               << "z"
                                               << "abc";
        QTest::newRow("surrogate pairs")
            << QString::fromUtf8("\U0001F600x\U0001F600") << QString::fromUtf8("\U0001F600") << "-"
            << "-x-";
    }

    void replace()
    {
        QFETCH(QString, src);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, expected);
        QCOMPARE(q(Comm::Replace(w(src), w(from), w(to))), expected);
    }
};

QTEST_GUILESS_MAIN(TestCommStrings)
#include "tst_commstrings.moc"
