// What deciding on a file's application costs. The cloud client asks for
// every row of a folder listing, on its GUI thread. The baseline for the
// look-ups is a plain set of the same suffixes, asked for the same text.

#include "kratioreporter.h"

#include "qcommfiletypes.h"
#include "qcommopenfile.h"

#include <vexlite/hostcontrol.h>

#include <QCoreApplication>
#include <QSet>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void setUpHost()
{
    static QTemporaryDir profile;
    krt::hostcontrol::resetProfile(profile.path());
}

void appType(benchmark::State& state, const char* suffix)
{
    setUpHost();
    const QString s = QString::fromLatin1(suffix);
    for (auto _ : state)
        benchmark::DoNotOptimize(QComm::getAppTypeBySuffix(s));
}

void vexSupport(benchmark::State& state, const char* suffix)
{
    setUpHost();
    const QString s = QString::fromLatin1(suffix);
    for (auto _ : state)
        benchmark::DoNotOptimize(QComm::checkIsVexSupport(s));
}

// Every suffix of the four built-in lists in one set.
const QSet<QString>& suffixSet()
{
    static const QSet<QString> set = [] {
        setUpHost();
        QSet<QString> suffixes;
        for (const QStringList& list :
             {QComm::getZentoOpenAllSupportTypeList(), QComm::getTabixOpenAllSupportTypeList(),
              QComm::getSlidexOpenAllSupportTypeList(), QComm::getPdfOpenAllSupportType()})
            for (const QString& suffix : list)
                suffixes.insert(suffix);
        return suffixes;
    }();
    return set;
}

void setLookup(benchmark::State& state, const char* suffix)
{
    const QSet<QString>& set = suffixSet();
    const QString s = QString::fromLatin1(suffix);
    for (auto _ : state)
        benchmark::DoNotOptimize(set.contains(s));
}

// A folder listing: known and unknown suffixes, some in capitals, one per row.
const QStringList& listingSuffixes()
{
    static const QStringList suffixes =
        QStringLiteral("docx;xlsx;pdf;jpg;png;txt;pptx;zip;csv;mp4;DOCX;md;html;exe;log;epub")
            .split(QLatin1Char(';'));
    return suffixes;
}

void appTypeListing(benchmark::State& state)
{
    setUpHost();
    const QStringList& suffixes = listingSuffixes();
    int row = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(QComm::getAppTypeBySuffix(suffixes.at(row)));
        row = (row + 1) % suffixes.size();
    }
}

void setLookupListing(benchmark::State& state)
{
    const QSet<QString>& set = suffixSet();
    const QStringList& suffixes = listingSuffixes();
    int row = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(set.contains(suffixes.at(row)));
        row = (row + 1) % suffixes.size();
    }
}

// Read from the store on every call.
void pdfList(benchmark::State& state)
{
    setUpHost();
    for (auto _ : state)
        benchmark::DoNotOptimize(QComm::getPdfOpenAllSupportType());
}

// The list's text split, without the store.
void splitOnly(benchmark::State& state)
{
    const QString text = QStringLiteral("pdf;epub;mobi");
    for (auto _ : state)
        benchmark::DoNotOptimize(text.split(QLatin1Char(';'), Qt::KeepEmptyParts));
}

const QString kFileName = QString::fromUtf8(u8"\u62a5\u544a 2024.docx");

void vexCommand(benchmark::State& state)
{
    setUpHost();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            QComm::openFileByVexCommand(QStringLiteral("f0123456789"), kFileName));
}

// The same command text from its parts at hand.
void commandTextOnly(benchmark::State& state)
{
    const QString bundle = QCoreApplication::applicationDirPath();
    for (auto _ : state) {
        const QString url = QStringLiteral("%1://type=open&fileid=%2&displayname=%3")
                                .arg(QStringLiteral("vexnimbo"), QStringLiteral("f0123456789"),
                                     QString::fromLatin1(kFileName.toUtf8().toBase64()));
        benchmark::DoNotOptimize(QStringLiteral("open -a \"%1\" \"%2\"").arg(bundle, url));
    }
}

[[maybe_unused]] const int quoted = KRatioReporter::quote({
    {"appType/zento_list", "setLookup/zento_list"},
    {"appType/tabix_list", "setLookup/tabix_list"},
    {"appType/slidex_list", "setLookup/slidex_list"},
    {"appType/pdf_list", "setLookup/pdf_list"},
    {"appType/upper_case", "setLookup/pdf_list"},
    {"appType/unknown", "setLookup/unknown"},
    {"appTypeListing", "setLookupListing"},
    {"vexSupport/pdf_list", "setLookup/pdf_list"},
    {"vexSupport/unknown", "setLookup/unknown"},
    {"pdfList", "splitOnly"},
    {"vexCommand", "commandTextOnly"},
});

} // namespace

// A suffix from each list, the first that holds it deciding; one in capitals
// (quoted against the set's look-up of the same suffix in lower case, which
// the set holds); and an unknown one, which no list holds.
BENCHMARK_CAPTURE(appType, zento_list, "zento");
BENCHMARK_CAPTURE(appType, tabix_list, "csv");
BENCHMARK_CAPTURE(appType, slidex_list, "pptx");
BENCHMARK_CAPTURE(appType, pdf_list, "mobi");
BENCHMARK_CAPTURE(appType, upper_case, "MOBI");
BENCHMARK_CAPTURE(appType, unknown, "xyz");
BENCHMARK_CAPTURE(vexSupport, pdf_list, "mobi");
BENCHMARK_CAPTURE(vexSupport, unknown, "xyz");
BENCHMARK_CAPTURE(setLookup, zento_list, "zento");
BENCHMARK_CAPTURE(setLookup, tabix_list, "csv");
BENCHMARK_CAPTURE(setLookup, slidex_list, "pptx");
BENCHMARK_CAPTURE(setLookup, pdf_list, "mobi");
BENCHMARK_CAPTURE(setLookup, unknown, "xyz");
BENCHMARK(appTypeListing);
BENCHMARK(setLookupListing);
BENCHMARK(pdfList);
BENCHMARK(splitOnly);
BENCHMARK(vexCommand);
BENCHMARK(commandTextOnly);
