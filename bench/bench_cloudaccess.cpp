// What an account question costs the plug-in: the user-centre button asks
// for the user information and the signed-in flag on every client signal,
// and every centre page is wrapped for automatic sign-in before it opens.
// Runs against the simulator beside the benchmark, signed in. The baselines
// do the same work on values at hand: a copy of a five-member object, a
// member read, the wrapped address's string work.

#include "kratioreporter.h"

#include "kdeskhivelib.h"
#include "knimboclientinstance.h"

#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include <benchmark/benchmark.h>

namespace {

// Signs the simulator in through a state file of the benchmark's own, once.
bool signedIn()
{
    static QTemporaryDir dir;
    static const bool ready = [] {
        const QString state = dir.filePath(QStringLiteral("state.json"));
        QFile file(state);
        if (!file.open(QIODevice::WriteOnly) ||
            file.write(R"({"IsLogined": true, "Name": "Bench", "Id": "b-1"})") < 0)
            return false;
        file.close();
        qputenv("DESKHIVE_STATE", state.toUtf8());
        return KNimboClientInstance::isLogined();
    }();
    return ready;
}

#define REQUIRE_SIGNED_IN(state)                                                                   \
    if (!signedIn()) {                                                                             \
        state.SkipWithError("the simulator beside the benchmark is missing or signed out");        \
        return;                                                                                    \
    }

void userInfo(benchmark::State& state)
{
    REQUIRE_SIGNED_IN(state)
    for (auto _ : state)
        benchmark::DoNotOptimize(KNimboClientInstance::userInfo());
}

void isLogined(benchmark::State& state)
{
    REQUIRE_SIGNED_IN(state)
    for (auto _ : state)
        benchmark::DoNotOptimize(KNimboClientInstance::isLogined());
}

void autoLoginUrl(benchmark::State& state)
{
    REQUIRE_SIGNED_IN(state)
    const QString url = QStringLiteral("https://centre.example/personal?from=menu");
    for (auto _ : state)
        benchmark::DoNotOptimize(KNimboClientInstance::getAutoLoginUrl(url));
}

// The user information as the client hands it out.
Json::Value fiveMembers()
{
    Json::Value info(Json::objectValue);
    info["IsLogined"] = true;
    info["IsCompanyAccount"] = false;
    info["UserAvatarImagePath"] = "";
    info["Name"] = "Bench";
    info["Id"] = "b-1";
    return info;
}

void baselineCopy(benchmark::State& state)
{
    const Json::Value info = fiveMembers();
    for (auto _ : state) {
        Json::Value copy = info;
        benchmark::DoNotOptimize(copy);
    }
}

void baselineCopyAndRead(benchmark::State& state)
{
    const Json::Value info = fiveMembers();
    for (auto _ : state) {
        const Json::Value copy = info;
        benchmark::DoNotOptimize(copy.get("IsLogined", false).asBool());
    }
}

void baselineWrap(benchmark::State& state)
{
    const QString url = QStringLiteral("https://centre.example/personal?from=menu");
    const QString token = QStringLiteral("0123456789abcdef");
    for (auto _ : state)
        benchmark::DoNotOptimize(
            QStringLiteral("https://account.zentooffice.example/autologin?token=%1&target=%2")
                .arg(token, QString::fromLatin1(QUrl::toPercentEncoding(url))));
}

[[maybe_unused]] const int quoted = KRatioReporter::quote({
    {"userInfo", "baselineCopy"},
    {"isLogined", "baselineCopyAndRead"},
    {"autoLoginUrl", "baselineWrap"},
});

} // namespace

BENCHMARK(userInfo);
BENCHMARK(isLogined);
BENCHMARK(autoLoginUrl);
BENCHMARK(baselineCopy);
BENCHMARK(baselineCopyAndRead);
BENCHMARK(baselineWrap);
