// How long the host waits for an answer from the handler. The host asks for
// product values while it builds menus and dialogs, on its GUI thread.

#include "kxacommonauthhandler.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/krtauth.h>

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

} // namespace

// Answered from the cache: seeded, configured or defaulted keys.
BENCHMARK_CAPTURE(lookup, cached_support_default, "Support/OnlineHelp");
BENCHMARK_CAPTURE(lookup, cached_configuration, "Other/Configured");
// Computed on every request: a jump address, a configured-first address and
// the translated product name.
BENCHMARK_CAPTURE(lookup, jump_address, "Product/Url/EULA");
BENCHMARK_CAPTURE(lookup, configured_first, "Product/HomePage");
BENCHMARK_CAPTURE(lookup, product_name, "Product/VexName");
