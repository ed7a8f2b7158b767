#include "webdialog.h"

void useWebDialog(QTextStream& /*out*/) {}
