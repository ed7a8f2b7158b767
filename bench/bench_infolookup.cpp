// How long the host waits for an answer from the handler. The host asks for
// product values while it builds menus and dialogs, on its GUI thread. The
// baseline is a plain hash of the same keys and values: what a cached answer
// cannot beat.

#include "kratioreporter.h"

#include "kxacommonauthhandler.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/krtauth.h>

#include <QHash>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void setUpHost()
{
    static QTemporaryDir profile;
    krt::hostcontrol::resetProfile(profile.path());
    krt::hostcontrol::setProductString("JumpUrl", "https://jump.example/go");
    krt::hostcontrol::setConfigValue(krt::hostcontrol::MachineLayer, "Other/Configured", "v");
}

KXaCommonAuthHandler& handler()
{
    static KXaCommonAuthHandler instance;
    return instance;
}

void lookup(benchmark::State& state, const char* key)
{
    setUpHost();
    const QString k = QString::fromLatin1(key);
    krt::hostcontrol::setHandler(&handler());
    for (auto _ : state)
        benchmark::DoNotOptimize(krt::auth::getInfo(k));
    krt::hostcontrol::setHandler(nullptr);
}

// The cached keys of the benchmarks among a few more of their kind, with
// the values the handler gives them.
const QHash<QString, QVariant>& plainHash()
{
    static const QHash<QString, QVariant> hash{
        {QStringLiteral("Support/OnlineHelp"), false},
        {QStringLiteral("Support/Feedback"), false},
        {QStringLiteral("Patent/Notice"), false},
        {QStringLiteral("Other/Configured"), QStringLiteral("v")},
        {QStringLiteral("Other/Unset"), QVariant()},
        {QStringLiteral("Auth/StartupSplashFileName"), QStringLiteral("")},
    };
    return hash;
}

void hashLookup(benchmark::State& state, const char* key)
{
    const QHash<QString, QVariant>& hash = plainHash();
    const QString k = QString::fromLatin1(key);
    for (auto _ : state)
        benchmark::DoNotOptimize(hash.value(k));
}

[[maybe_unused]] const int quoted = KRatioReporter::quote({
    {"lookup/cached_support_default", "hashLookup/support_default"},
    {"lookup/cached_configuration", "hashLookup/configuration"},
    {"lookup/jump_address", "hashLookup/support_default"},
    {"lookup/configured_first", "hashLookup/support_default"},
    {"lookup/product_name", "hashLookup/support_default"},
});

} // namespace

// Answered from the cache: seeded, configured or defaulted keys.
BENCHMARK_CAPTURE(lookup, cached_support_default, "Support/OnlineHelp");
BENCHMARK_CAPTURE(lookup, cached_configuration, "Other/Configured");
// Computed on every request: a jump address, a configured-first address and
// the translated product name.
BENCHMARK_CAPTURE(lookup, jump_address, "Product/Url/EULA");
BENCHMARK_CAPTURE(lookup, configured_first, "Product/HomePage");
BENCHMARK_CAPTURE(lookup, product_name, "Product/VexName");
// The baselines: the same keys in a plain hash.
BENCHMARK_CAPTURE(hashLookup, support_default, "Support/OnlineHelp");
BENCHMARK_CAPTURE(hashLookup, configuration, "Other/Configured");
