#include "usercenterlogging.h"

Q_LOGGING_CATEGORY(lcAuthUserCenter, "auth.usercenter", QtWarningMsg)
