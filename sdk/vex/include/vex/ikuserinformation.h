#ifndef VEX_IKUSERINFORMATION_H
#define VEX_IKUSERINFORMATION_H

#include "vex_global.h"
#include "xsysstring.h"

#include <cstdint>

// Results of the suite's interface calls: negative means failure.
using XRESULT = std::int32_t;
constexpr XRESULT X_S_OK = 0;
constexpr XRESULT X_E_FAIL = XRESULT(0x80004005u);
constexpr XRESULT X_E_POINTER = XRESULT(0x80004003u);
constexpr XRESULT X_E_OUTOFMEMORY = XRESULT(0x8007000Eu);
inline bool XSucceeded(XRESULT result)
{
    return result >= 0;
}

// The suite's user information: who uses this installation (the name
// documents are saved with). Reference counted: whoever receives the object
// releases it once.
class IKUserInformation
{
public:
    // The new count of references.
    virtual unsigned long AddRef() = 0;
    virtual unsigned long Release() = 0;
    // *name becomes a new string the caller frees (XSysFreeString); null on
    // failure.
    virtual XRESULT getUserName(XBSTR* name) = 0;
    // Copies name, zeros included; the caller keeps its string.
    virtual XRESULT setUserName(XBSTR name) = 0;

protected:
    IKUserInformation() = default;
    ~IKUserInformation() = default;
    IKUserInformation(const IKUserInformation&) = default;
    IKUserInformation& operator=(const IKUserInformation&) = default;
};

// *info becomes the user information with one reference for the caller;
// null and a failure result when there is none.
extern "C" VEX_EXPORT XRESULT vex_GetUserInformation(IKUserInformation** info);

#endif // VEX_IKUSERINFORMATION_H
