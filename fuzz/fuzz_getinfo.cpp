// Information keys as a host passes them to the plug-in's handler: any text
// gets an answer or null, the same whether the handler is asked directly or
// through the host's krt::auth, computed or remembered, by a fresh handler
// or by the one the plug-in's entry point returns.
//
// The handler remembers every key nothing answers, for good: each input
// gets fresh handlers, and the entry point's handler is asked only a
// bounded number of keys.

#include "fuzzsupport.h"

#include "authpluginentry.h"
#include "kxacommonauthhandler.h"

#include <vexlite/hostcontrol.h>
#include <vexlite/krtauth.h>

#include <cstddef>
#include <cstdint>

using AuthFuzz::require;
using namespace krt::hostcontrol;

namespace {

constexpr int kEntryPointKeys = 100000;

// Null or of the same type and value: QVariant's own comparison would take
// a text "1" for the number 1.
bool same(const QVariant& a, const QVariant& b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() == b.isNull();
    return a.userType() == b.userType() && a == b;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    AuthFuzz::silenceQtMessages();
    // A host whose configuration answers some keys of every group, so that
    // every way through the handler is open to the fuzzer.
    resetProfile(AuthFuzz::scratchDir());
    setProductString(QStringLiteral("JumpUrl"), QStringLiteral("https://jump.example/go"));
    setConfigValue(UserLayer, QStringLiteral("Product/HomePage"), QStringLiteral("https://h/"));
    setConfigValue(MachineLayer, QStringLiteral("Product/HelpPage"), QStringLiteral(""));
    setConfigValue(PolicyLayer, QStringLiteral("Product/VexName"), QStringLiteral("Zento"));
    setConfigValue(ServerLayer, QStringLiteral("Support/Chat"), true);
    setConfigValue(BuiltinLayer, QStringLiteral("Unknown/Limit"), 42);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString key =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));

    KXaCommonAuthHandler handler;
    const QVariant answer = handler.getInfo(key);
    if (key.isEmpty())
        require(answer.isNull(), "the empty key has no answer");
    require(same(handler.getInfo(key), answer), "a handler answers a key the same way again");

    KXaCommonAuthHandler hosted;
    setHandler(&hosted);
    require(same(krt::auth::getInfo(key), answer), "the host's way reaches the same answer");
    krt::auth::getStringInfo(key);
    krt::auth::getIntInfo(key);
    krt::auth::getBoolInfo(key);
    setHandler(nullptr);

    static int entryPointKeys = 0;
    if (entryPointKeys < kEntryPointKeys) {
        ++entryPointKeys;
        require(same(GetAuthorizationHandler()->getInfo(key), answer),
                "the entry point's handler answers as a fresh one does");
    }
    return 0;
}
