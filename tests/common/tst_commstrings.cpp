// The wide-string helpers: cutting and naming paths, trimming, replacing.

#include "common/commstrings.h"

#include <QtTest>

namespace {

enum Helper { CutFileSpec, FileName, TrimSpace, Replace };

QString run(int helper, const QString& text, const QString& from, const QString& to)
{
    Comm::WideString wide = text.toStdU16String();
    switch (helper) {
    case CutFileSpec:
        Comm::pathRemoveFileSpec(wide);
        return QString::fromStdU16String(wide);
    case FileName:
        return QString::fromStdU16String(Comm::getFileName(text.utf16()));
    case TrimSpace: {
        const Comm::WideString copy = Comm::trimSpace(wide);
        // In place and as the returned copy alike.
        return copy == wide ? QString::fromStdU16String(copy) : QStringLiteral("<differs>");
    }
    default:
        return QString::fromStdU16String(
            Comm::Replace(wide, from.toStdU16String(), to.toStdU16String()));
    }
}

} // namespace

class TestCommStrings : public QObject
{
    Q_OBJECT

private slots:
    void helpers_data()
    {
        QTest::addColumn<int>("helper");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        const auto row = [](const char* tag, int helper, const char* text, const char* expected,
                            const char* from = "", const char* to = "") {
            QTest::newRow(tag) << helper << QString::fromUtf8(text) << QString::fromUtf8(expected)
                               << QString::fromUtf8(from) << QString::fromUtf8(to);
        };
        row("cut: file in folder", CutFileSpec, "/a/b/c.txt", "/a/b");
        row("cut: trailing separator", CutFileSpec, "/a/b/", "/a/b");
        row("cut: relative", CutFileSpec, "a/b", "a");
        row("cut: bare name", CutFileSpec, "file.txt", "");
        row("cut: root", CutFileSpec, "/", "");
        row("cut: top-level entry", CutFileSpec, "/a", "");
        row("cut: empty", CutFileSpec, "", "");
        row("cut: backslash is no separator", CutFileSpec, "C:\\x\\y.txt", "");
        row("cut: non-ASCII", CutFileSpec, "/文档/漫游/a.txt", "/文档/漫游");
        row("name: file in folder", FileName, "/a/b/c.txt", "c.txt");
        row("name: trailing separator", FileName, "/a/b/", "");
        row("name: bare name", FileName, "c.txt", "c.txt");
        row("name: root", FileName, "/", "");
        row("name: empty", FileName, "", "");
        row("name: outside the BMP", FileName, "/目录/文件\U0001F600.txt", "文件\U0001F600.txt");
        row("trim: both ends", TrimSpace, "  a b  ", "a b");
        row("trim: inner spaces kept", TrimSpace, "a  b", "a  b");
        row("trim: tabs kept", TrimSpace, "\ta\t", "\ta\t");
        row("trim: stops at a tab", TrimSpace, " \t a \n ", "\t a \n");
        row("trim: spaces only", TrimSpace, "    ", "");
        row("trim: empty", TrimSpace, "", "");
        row("trim: no-break space kept", TrimSpace, "\u00a0a ", "\u00a0a");
        row("replace: inserted text not searched", Replace, "aa", "aaaa", "a", "aa");
        row("replace: removal", Replace, "a-b-c", "abc", "-", "");
        row("replace: no overlap", Replace, "aaa", "ba", "aa", "b");
        row("replace: match around the insertion", Replace, "aabb", "ab", "ab", "");
        row("replace: case-sensitive", Replace, "aXa", "aXa", "x", "y");
        row("replace: longer than the text", Replace, "abc", "abc", "abcd", "x");
        row("replace: empty text", Replace, "", "", "a", "b");
        row("replace: empty from, unchanged", Replace, "abc", "abc", "", "z");
        row("replace: surrogate pairs", Replace, "\U0001F600x\U0001F600", "-x-", "\U0001F600", "-");
    }

    void helpers()
    {
        QFETCH(int, helper);
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QCOMPARE(run(helper, text, from, to), expected);
    }

    void fileNameOfNull() { QVERIFY(Comm::getFileName(nullptr).empty()); }
};

QTEST_GUILESS_MAIN(TestCommStrings)
#include "tst_commstrings.moc"
