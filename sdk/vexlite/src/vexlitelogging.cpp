#include "vexlitelogging.h"

Q_LOGGING_CATEGORY(lcVexLite, "vexlite")
