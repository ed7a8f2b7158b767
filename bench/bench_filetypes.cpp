// What deciding on a file's application costs. The cloud client asks for
// every row of a folder listing, on its GUI thread.

#include "qcommfiletypes.h"
#include "qcommopenfile.h"

#include <vexlite/hostcontrol.h>

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

// Read from the store on every call.
void pdfList(benchmark::State& state)
{
    setUpHost();
    for (auto _ : state)
        benchmark::DoNotOptimize(QComm::getPdfOpenAllSupportType());
}

void vexCommand(benchmark::State& state)
{
    setUpHost();
    const QString name = QString::fromUtf8(u8"\u62a5\u544a 2024.docx");
    for (auto _ : state)
        benchmark::DoNotOptimize(QComm::openFileByVexCommand("f0123456789", name));
}

} // namespace

// First list, first entry; and an unknown suffix, which is compared with
// every entry of all four lists.
BENCHMARK_CAPTURE(appType, word_processor_first_entry, "zento");
BENCHMARK_CAPTURE(appType, pdf_last_list, "MOBI");
BENCHMARK_CAPTURE(appType, unknown, "xyz");
BENCHMARK_CAPTURE(vexSupport, unknown, "xyz");
BENCHMARK(pdfList);
BENCHMARK(vexCommand);
