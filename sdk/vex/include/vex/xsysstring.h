#ifndef VEX_XSYSSTRING_H
#define VEX_XSYSSTRING_H

#include "vex_global.h"

// The suite's system strings: 16-bit text whose length is kept in front of
// the first character, so a string may hold zeros; a zero unit still
// follows the last character for readers that stop at the first zero. A
// null string is the empty string. Strings handed out by an interface are
// the receiver's to free; freeing null does nothing.
using XOLECHAR = char16_t;
using XBSTR = XOLECHAR*;

extern "C" {

// A copy of text up to its first zero; null for null text or when memory
// runs out.
VEX_EXPORT XBSTR XSysAllocString(const XOLECHAR* text);
// A string of length units copied from text (zeros included); units are
// zero when text is null. Null when memory runs out.
VEX_EXPORT XBSTR XSysAllocStringLen(const XOLECHAR* text, unsigned int length);
// Replaces *string with a copy of text up to its first zero (empty for null
// text) and frees the old one; text may point into *string. 0 and *string
// unchanged when string is null or memory runs out, else 1.
VEX_EXPORT int XSysReAllocString(XBSTR* string, const XOLECHAR* text);
VEX_EXPORT int XSysReAllocStringLen(XBSTR* string, const XOLECHAR* text, unsigned int length);
// The number of units, zeros included; 0 for null.
VEX_EXPORT unsigned int XSysStringLen(XBSTR string);
VEX_EXPORT void XSysFreeString(XBSTR string);

// How many strings are allocated and not yet freed, for leak checks.
VEX_EXPORT int XSysStringLiveCount();
}

#endif // VEX_XSYSSTRING_H
