#ifndef KXJUMPURL_H
#define KXJUMPURL_H

#include <QString>
#include <QUrl>

// The address of a named page of the service under the product's jump
// base; empty when the product has no jump base.
QUrl kxGetJumpUrl(const QString& page);
QUrl kxConvertToJumpUrl(const QString& text);

#endif // KXJUMPURL_H
