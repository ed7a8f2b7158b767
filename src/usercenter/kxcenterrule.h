#ifndef KXCENTERRULE_H
#define KXCENTERRULE_H

#include <json/value.h>

class KMainWindow;
class QObject;

// The main window that holds object: the nearest KMainWindow among its
// parents (for a command without one, among its host's). Null when there
// is none.
KMainWindow* kxHoldingMainWindow(const QObject* object);

// The rule the user-centre entry and the personal-centre entry share: the
// product has a user centre for the account in info (a company account, or
// the simplified user centre for everybody), and the main window that holds
// command is not embedding.
bool kxHasUserCenter(const QObject* command, const Json::Value& info);

#endif // KXCENTERRULE_H
