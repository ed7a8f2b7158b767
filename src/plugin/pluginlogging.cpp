#include "pluginlogging.h"

Q_LOGGING_CATEGORY(lcAuthPlugin, "auth.plugin", QtWarningMsg)
