// What a client sends the local service server before its request head
// ends: the head is read, or found incomplete or too large, never read
// past the limit.

#include "khttprequesthead.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray received(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const KHttpRequestHead head = KHttpRequestHead::parse(received);
    if (head.state() == KHttpRequestHead::Incomplete && size > KHttpRequestHead::kMaxSize)
        std::abort();
    if (head.isWellFormed() &&
        (head.state() != KHttpRequestHead::Complete || !head.target().startsWith('/')))
        std::abort();
    return 0;
}
