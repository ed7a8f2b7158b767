// A build without a web engine has no web dialog: the gallery leaves its
// button and its pictures out.

#include "kwebdialogscenes.h"

namespace KWebDialogScenes {

bool available()
{
    return false;
}

QDialog* createServiceDialog(QWidget* /*parent*/)
{
    return nullptr;
}

bool writeScreenshots(const QString& /*dir*/, QTextStream& /*err*/)
{
    return true;
}

} // namespace KWebDialogScenes
