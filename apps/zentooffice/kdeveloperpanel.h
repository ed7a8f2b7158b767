#ifndef KDEVELOPERPANEL_H
#define KDEVELOPERPANEL_H

#include "kfiletail.h"

#include <QDockWidget>
#include <QFileSystemWatcher>

class KMainWindow;
class KZentoOfficeHost;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QScrollArea;
class QTabWidget;
class QUrl;

// Drives what users otherwise meet only by chance. Through the cloud
// simulator's state file: sign in and out, company account, the user's
// picture, the client's four error signals. Through the host: signed out
// because the network went away, the interface language, the display
// scale, where the service pages come from (the internet, the local
// server, an unreachable one), the product features that decide who sees
// the account button and the personal centre, and whether its window is
// embedded in another program.
//
// It shows the usage events the plug-in's pages record through the host
// (krt::infocollect), reading only what was appended to their file, and
// the activity around them: the client's signals, the named commands and
// account-service calls that reached the host, the local server's
// requests and the addresses the desktop was asked to open while the
// pages were not the internet's.
class KDeveloperPanel : public QDockWidget
{
    Q_OBJECT

public:
    // A dock of window, which its embedding switch is about.
    KDeveloperPanel(KZentoOfficeHost* host, KMainWindow* window);
    ~KDeveloperPanel() override;

    // At most this many lines each in the activity and the event list.
    static constexpr int kMaxLines = 200;

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void refreshAccount();
    void refreshHost();
    void refreshEvents();
    void signIn();
    void signOut();
    void setCompanyAccount(bool company);
    void chooseAvatar(int index);
    void raiseError();
    void chooseLanguage(int index);
    void chooseScale(int index);
    void chooseServicePages(int index);
    void setFeature(bool supported);
    void setEmbedding(bool embedding);
    void clearEvents();
    void onUrlCaught(const QUrl& url);
    void onRequestServed(const QString& method, const QString& target, int status);
    void onLoginStatusChange();
    void onUserInfoChange();
    void onFailedToLaunch();
    void onExitWithErrors(const QString& message);
    void onIpcError();
    void onRpcError();
    void onCommandRun(const QString& name);
    void onAccountEntered(int code, const QString& first, const QString& second);

private:
    QWidget* createControls();
    QGroupBox* createAccountGroup();
    QGroupBox* createErrorsGroup();
    QGroupBox* createHostGroup();
    QGroupBox* createProductGroup();
    QWidget* createLogs();
    void retranslateUi();
    void addActivity(const QString& line);
    void reportWrite(bool written);
    void watchEvents();

    KZentoOfficeHost* m_host;
    KMainWindow* m_window;
    QScrollArea* m_scroll = nullptr;
    QGroupBox* m_accountGroup = nullptr;
    QPushButton* m_signIn = nullptr;
    QPushButton* m_signOut = nullptr;
    QCheckBox* m_company = nullptr;
    QLabel* m_avatarLabel = nullptr;
    QComboBox* m_avatar = nullptr;
    QGroupBox* m_errorsGroup = nullptr;
    QPushButton* m_launchError = nullptr;
    QPushButton* m_exitError = nullptr;
    QLineEdit* m_exitMessage = nullptr;
    QPushButton* m_ipcError = nullptr;
    QPushButton* m_rpcError = nullptr;
    QGroupBox* m_hostGroup = nullptr;
    QCheckBox* m_offline = nullptr;
    QLabel* m_languageLabel = nullptr;
    QComboBox* m_language = nullptr;
    QLabel* m_scaleLabel = nullptr;
    QComboBox* m_scale = nullptr;
    QLabel* m_pagesLabel = nullptr;
    QComboBox* m_pages = nullptr;
    QGroupBox* m_productGroup = nullptr;
    QCheckBox* m_simplified = nullptr;
    QCheckBox* m_intranet = nullptr;
    QCheckBox* m_embedding = nullptr;
    QTabWidget* m_logs = nullptr;
    QPlainTextEdit* m_activity = nullptr;
    QPlainTextEdit* m_events = nullptr;
    QPushButton* m_clearEvents = nullptr;
    QFileSystemWatcher m_watcher;
    KFileTail m_eventTail;
};

#endif // KDEVELOPERPANEL_H
