// The line a later start of the reference host sends the running one: any
// bytes give the arguments or no message, never a crash; what is read
// back from an encoded message is what was encoded.

#include "kinstancemessage.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray line(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const std::optional<QStringList> arguments = KInstanceMessage::decode(line);
    if (arguments && KInstanceMessage::decode(KInstanceMessage::encode(*arguments)) != arguments)
        std::abort();
    return 0;
}
