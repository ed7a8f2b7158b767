#include "zentoofficelogging.h"

Q_LOGGING_CATEGORY(lcZentoOffice, "zentooffice", QtWarningMsg)
