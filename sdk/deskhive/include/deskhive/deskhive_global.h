#ifndef DESKHIVE_GLOBAL_H
#define DESKHIVE_GLOBAL_H

#include <QtCore/qglobal.h>

// The client interface classes live in one shared library that the Deskhive
// library and its users both link, so there is one meta-object and one
// vtable per class in the process.
#if defined(DESKHIVEAPI_LIBRARY)
#define DESKHIVEAPI_EXPORT Q_DECL_EXPORT
#else
#define DESKHIVEAPI_EXPORT Q_DECL_IMPORT
#endif

#endif // DESKHIVE_GLOBAL_H
