#ifndef KXAUTHGLOBAL_H
#define KXAUTHGLOBAL_H

#include <QtCore/qglobal.h>

// Marks what the plug-in offers to other modules; everything else is hidden.
#define KXAUTH_EXPORT Q_DECL_EXPORT

#endif // KXAUTHGLOBAL_H
