#include "commstrings.h"

namespace Comm {

void pathRemoveFileSpec(WideString& path)
{
    const WideString::size_type cut = path.rfind(u'/');
    path.erase(cut == WideString::npos ? 0 : cut);
}

WideString getFileName(const unsigned short* path)
{
    if (!path)
        return WideString();
    const WideString text(reinterpret_cast<const char16_t*>(path));
    const WideString::size_type cut = text.rfind(u'/');
    return cut == WideString::npos ? text : text.substr(cut + 1);
}

WideString trimSpace(WideString& text)
{
    text.erase(text.find_last_not_of(u' ') + 1);
    text.erase(0, text.find_first_not_of(u' '));
    return text;
}

WideString Replace(const WideString& src, const WideString& from, const WideString& to)
{
    if (from.empty())
        return src;
    WideString result = src;
    for (WideString::size_type at = result.find(from); at != WideString::npos;
         at = result.find(from, at + to.size()))
        result.replace(at, from.size(), to);
    return result;
}

} // namespace Comm
