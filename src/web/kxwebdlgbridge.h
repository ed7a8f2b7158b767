#ifndef KXWEBDLGBRIDGE_H
#define KXWEBDLGBRIDGE_H

#include <QObject>
#include <QString>

class KxWebDlg;

// What a page sees as "zentoctx": the web dialog's bridge methods and
// nothing else of it. Publishing the dialog itself would hand page script
// every public slot of QDialog and QWidget as well (exec, show, close,
// deleteLater, ...). Each method forwards to the dialog's virtual
// operation of the same name. A child of the dialog.
class KxWebDlgBridge : public QObject
{
    Q_OBJECT

public:
    explicit KxWebDlgBridge(KxWebDlg* dialog);

    Q_INVOKABLE void resize(int contentWidth, int contentHeight);
    Q_INVOKABLE void moveTo(int x, int y);
    Q_INVOKABLE void accept();
    Q_INVOKABLE void reject();
    Q_INVOKABLE QString get(const QString& key);
    Q_INVOKABLE void set(const QString& key, const QString& value);
    Q_INVOKABLE void experiment(const QString& expId, const QString& expVar);
    Q_INVOKABLE void postEvent(const QString& eventName, const QString& eventCategory,
                               const QString& eventLable = QString(), int eventValue = 0,
                               const QString& viewName = QString());
    Q_INVOKABLE void postPageView(const QString& viewName, const QString& viewCategory);
    Q_INVOKABLE QString distSrc();
    Q_INVOKABLE QString lang();
    Q_INVOKABLE QString version();
    Q_INVOKABLE QString hdid();
    Q_INVOKABLE void setVisible(bool visible);
    Q_INVOKABLE QString readStrReg(const QString& key, const QString& valueName);
    Q_INVOKABLE int readIntReg(const QString& key, const QString& valueName);
    Q_INVOKABLE void writeStrReg(const QString& key, const QString& valueName,
                                 const QString& value);
    Q_INVOKABLE void writeIntReg(const QString& key, const QString& valueName, int value);
    Q_INVOKABLE QString readProductConfig(const QString& key);
    Q_INVOKABLE bool isFileExist(const QString& file);
    Q_INVOKABLE void login(const QString& onSuccess);
    Q_INVOKABLE void openAutoLoginUrl(const QString& url);
    Q_INVOKABLE bool isLogined();
    Q_INVOKABLE QString loginedUserId();
    Q_INVOKABLE bool isMimeTypeAvailable(const QString& type);
    Q_INVOKABLE QString availableMimeTypes();
    Q_INVOKABLE bool openUrl(const QString& url);
    Q_INVOKABLE bool isSupportWindowOpen();
    Q_INVOKABLE void setOnCloseCallback(const QString& callback);
    Q_INVOKABLE void setOnEscPressCallback(const QString& callback);

private:
    KxWebDlg* m_dialog;
};

#endif // KXWEBDLGBRIDGE_H
