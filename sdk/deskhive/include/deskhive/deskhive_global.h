#ifndef DESKHIVE_GLOBAL_H
#define DESKHIVE_GLOBAL_H

#include <QtCore/qglobal.h>

// The library that implements the client interface owns its classes'
// meta-objects and vtables; users only include the headers.
#if defined(DESKHIVE_LIBRARY)
#define DESKHIVE_EXPORT Q_DECL_EXPORT
#else
#define DESKHIVE_EXPORT Q_DECL_IMPORT
#endif

#endif // DESKHIVE_GLOBAL_H
