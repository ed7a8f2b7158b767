#ifndef VEXLITE_GLOBAL_H
#define VEXLITE_GLOBAL_H

#include <QtCore/qglobal.h>

#if defined(VEXLITE_LIBRARY)
#define VEXLITE_EXPORT Q_DECL_EXPORT
#else
#define VEXLITE_EXPORT Q_DECL_IMPORT
#endif

#endif // VEXLITE_GLOBAL_H
