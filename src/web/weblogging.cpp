#include "weblogging.h"

Q_LOGGING_CATEGORY(lcAuthWeb, "auth.web", QtWarningMsg)
