#include "vex/xsysstring.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

// The length prefix counts bytes, as the suite's strings always have.
using Prefix = std::uint32_t;

std::atomic<int> g_live{0};

Prefix* prefixOf(XBSTR string)
{
    return reinterpret_cast<Prefix*>(reinterpret_cast<char*>(string) - sizeof(Prefix));
}

unsigned int lengthUpToZero(const XOLECHAR* text)
{
    unsigned int length = 0;
    while (text[length] != 0)
        ++length;
    return length;
}

XBSTR allocate(const XOLECHAR* text, unsigned int length)
{
    constexpr std::size_t kMaxLength =
        (std::numeric_limits<Prefix>::max() - sizeof(XOLECHAR)) / sizeof(XOLECHAR);
    if (length > kMaxLength)
        return nullptr;
    const std::size_t bytes = std::size_t(length) * sizeof(XOLECHAR);
    void* block = std::malloc(sizeof(Prefix) + bytes + sizeof(XOLECHAR));
    if (!block)
        return nullptr;
    *static_cast<Prefix*>(block) = Prefix(bytes);
    auto* string = reinterpret_cast<XBSTR>(static_cast<char*>(block) + sizeof(Prefix));
    if (text)
        std::memcpy(string, text, bytes);
    else
        std::memset(string, 0, bytes);
    string[length] = 0;
    ++g_live;
    return string;
}

} // namespace

XBSTR XSysAllocString(const XOLECHAR* text)
{
    return text ? allocate(text, lengthUpToZero(text)) : nullptr;
}

XBSTR XSysAllocStringLen(const XOLECHAR* text, unsigned int length)
{
    return allocate(text, length);
}

int XSysReAllocString(XBSTR* string, const XOLECHAR* text)
{
    return XSysReAllocStringLen(string, text, text ? lengthUpToZero(text) : 0);
}

int XSysReAllocStringLen(XBSTR* string, const XOLECHAR* text, unsigned int length)
{
    if (!string)
        return 0;
    // The copy first: text may lie inside the old string.
    const XBSTR copy = allocate(text, length);
    if (!copy)
        return 0;
    XSysFreeString(*string);
    *string = copy;
    return 1;
}

unsigned int XSysStringLen(XBSTR string)
{
    return string ? *prefixOf(string) / sizeof(XOLECHAR) : 0;
}

void XSysFreeString(XBSTR string)
{
    if (!string)
        return;
    std::free(prefixOf(string));
    --g_live;
}

int XSysStringLiveCount()
{
    return g_live.load();
}
