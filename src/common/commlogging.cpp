#include "commlogging.h"

Q_LOGGING_CATEGORY(lcAuthCommon, "auth.common", QtWarningMsg)
