#ifndef KXWEBDLGBRIDGE_H
#define KXWEBDLGBRIDGE_H

#include <QObject>
#include <QString>

#include <functional>
#include <initializer_list>

class KxWebDlg;

// What a page sees as "zentoctx": the web dialog's bridge methods and
// nothing else. Publishing the dialog itself would hand page script every
// public slot of QDialog and QWidget (exec, show, close, ...); publishing a
// plain QObject would still hand it QObject's own (deleteLater, destroyed,
// objectName). create() makes an object whose meta-object holds the bridge
// methods only, which is all a web engine offers a page. Each method checks
// the call and forwards to the dialog's virtual operation of the same name.
// A child of the dialog.
class KxWebDlgBridge : public QObject
{
    Q_OBJECT

public:
    // Asked before every call: whether the page may call the bridge now
    // (the dialog refuses calls that a frame of another origin could make).
    using Gate = std::function<bool()>;

    // Longest text a page may pass to any method, and to keys and stored
    // values: longer ones are refused with a warning, and the call gives
    // its empty answer.
    static constexpr int kMaxTextLength = 16 * 1024;
    static constexpr int kMaxKeyLength = 256;
    static constexpr int kMaxValueLength = 4 * 1024;

    static KxWebDlgBridge* create(KxWebDlg* dialog, Gate gate);

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

protected:
    KxWebDlgBridge(KxWebDlg* dialog, Gate gate);

private:
    struct Text
    {
        const QString* text;
        int limit;
    };
    // Whether the call runs: the gate lets it, and no text is too long.
    bool admit(const char* method, std::initializer_list<Text> texts = {});

    KxWebDlg* m_dialog;
    Gate m_gate;
};

#endif // KXWEBDLGBRIDGE_H
