// The cloud simulator's state file, which a person edits by hand: whatever
// it holds gives an account (signed out unless the file says otherwise),
// and the account the simulator writes back reads as the same account.

#include "fuzzsupport.h"

#include "kdeskhivestatefile.h"

#include <cstddef>
#include <cstdint>

using AuthFuzz::require;

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    AuthFuzz::silenceQtMessages();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray content =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const QString path = QStringLiteral("/home/user/addons/deskhive/state.json");
    QStringList requests;
    const KDeskhiveState state = KDeskhiveStateFile::parse(content, path, &requests);
    if (!state.logined)
        require(state == KDeskhiveState(), "nobody signed in has no account details");

    QStringList again;
    const KDeskhiveState written =
        KDeskhiveStateFile::parse(KDeskhiveStateFile::serialize(state), path, &again);
    require(written == state, "the account written back reads as the same account");
    require(again.isEmpty(), "what the simulator writes asks for no signals");
    return 0;
}
