#ifndef AUTHCOMMON_COMMTYPES_H
#define AUTHCOMMON_COMMTYPES_H

#include <string>

namespace Comm {

// The Comm layer's strings: UTF-16 code units in a standard string.
using WideString = std::u16string;

} // namespace Comm

#endif // AUTHCOMMON_COMMTYPES_H
