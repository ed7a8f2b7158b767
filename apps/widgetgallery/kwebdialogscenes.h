#ifndef KWEBDIALOGSCENES_H
#define KWEBDIALOGSCENES_H

#include <QString>

class QDialog;
class QTextStream;
class QWidget;

// The web dialog as the suite shows it: with a page of the cloud service (a
// stand-in page compiled into the gallery) and with the library's offline
// page after the service could not be reached.
namespace KWebDialogScenes {

// False in a build without a web engine, which has no web dialog: the
// dialogs are null and there are no pictures.
bool available();

// Web dialogs (KxWebDlg), owned by the caller.
QDialog* createServiceDialog(QWidget* parent);
QDialog* createOfflineDialog(QWidget* parent);

// Writes webdlg-service-<lang>.png and webdlg-offline-<lang>.png into dir at
// 100 %, for English ("en") and Chinese ("zh_CN"). False when a picture
// could not be written.
bool writeScreenshots(const QString& dir, QTextStream& err);

} // namespace KWebDialogScenes

#endif // KWEBDIALOGSCENES_H
