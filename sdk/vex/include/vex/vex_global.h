#ifndef VEX_GLOBAL_H
#define VEX_GLOBAL_H

#include <QtCore/qglobal.h>

#if defined(VEX_LIBRARY)
#define VEX_EXPORT Q_DECL_EXPORT
#else
#define VEX_EXPORT Q_DECL_IMPORT
#endif

#endif // VEX_GLOBAL_H
