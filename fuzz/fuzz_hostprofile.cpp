// The stand-in host's profile, host.json, read the way a host reads it at
// start-up: any content loads or is refused with a message, the host then
// answers every query, and the profile it saves reads back to the profile
// it saves again.

#include "fuzzsupport.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/krtconfigs.h>
#include <vexlite/krtinfo.h>
#include <vexlite/krtproduct.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <cstddef>
#include <cstdint>

using AuthFuzz::require;
using namespace krt::hostcontrol;

namespace {

QString g_input;
QString g_saved;

bool writeFile(const QString& path, const char* data, qint64 size)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(data, size) == size;
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    AuthFuzz::silenceQtMessages();
    const QDir scratch(AuthFuzz::scratchDir());
    g_input = scratch.filePath(QStringLiteral("input"));
    g_saved = scratch.filePath(QStringLiteral("saved"));
    require(QDir().mkpath(g_input) && QDir().mkpath(g_saved), "the profile folders can be made");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    require(writeFile(g_input + QStringLiteral("/host.json"), reinterpret_cast<const char*>(data),
                      static_cast<qint64>(size)),
            "the input can be written as a profile");
    QString error;
    const bool loaded = loadProfile(g_input, &error);
    if (!loaded)
        require(!error.isEmpty() && !error.contains(QLatin1Char('\n')),
                "a profile that does not load says why in one line");

    // What a host and the plug-in ask of it.
    for (const char* key : {"JumpUrl", "PersonalCenterUrl", "Product/HomePage", "VexName"}) {
        krt::product::getString(QLatin1String(key));
        krt::product::isSupported(QLatin1String(key));
        for (unsigned mask : {0x1bu, 0x1fu})
            krt::configs::getValue(QLatin1String(key), mask);
    }
    krt::product::isOverseasVersion();
    krt::info::version();
    language();
    const qreal scale = displayScale();
    require(scale == 0 || (scale > 0 && scale <= 8),
            "the display scale is one a screen can run at");
    commandTree(QStringLiteral("TitleBar"));
    // A profile that did not load left the empty state, the same every time.
    if (!loaded)
        return 0;

    require(saveProfile(g_saved, &error), "the host saves what it loaded");
    const QByteArray saved = readFile(g_saved + QStringLiteral("/host.json"));
    require(loadProfile(g_saved, &error), "the host reads back the profile it saved");
    require(saveProfile(g_saved, &error), "the host saves what it read back");
    // The same JSON, not the same bytes: Qt orders keys that hold a zero
    // character differently when it reads them and when it builds them.
    require(QJsonDocument::fromJson(readFile(g_saved + QStringLiteral("/host.json"))) ==
                QJsonDocument::fromJson(saved),
            "a saved profile reads back to the same profile");
    return 0;
}
