#ifndef VEXLITE_KHOSTPROFILE_H
#define VEXLITE_KHOSTPROFILE_H

#include "vexlite/hostcontrol.h"

#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <QTranslator>
#include <QVariant>

#include <array>
#include <functional>

class IKAuthorizationHandler;

// The stand-in host's whole state: what a host profile directory says, plus
// what a host application or test set through the control API. One instance
// per process, loaded from the default profile on first use. Every member
// function takes the lock, so the krt::* functions may be called from the
// thread pool as the real host allows.
class KHostProfile
{
public:
    static KHostProfile& instance();

    bool load(const QString& dir, QString* error);
    void reset(const QString& dir);
    bool save(const QString& dir, QString* error);
    QString dir();

    IKAuthorizationHandler* handler();
    void setHandler(IKAuthorizationHandler* handler);

    QString productString(const QString& key);
    void setProductString(const QString& key, const QString& value);
    bool isFeatureSupported(const QString& feature);
    void setFeatureSupported(const QString& feature, bool supported);
    bool isOverseas();
    void setOverseas(bool overseas);

    QVariant configValue(const QString& key, unsigned mask);
    void setConfigValue(unsigned layer, const QString& key, const QVariant& value);

    // Values of the profile's "info" section (version, identifiers).
    QString infoString(const QString& key);
    void setInfoString(const QString& key, const QString& value);
    // Null when the section has no such key, where infoString() says "".
    QVariant infoValue(const QString& key);
    void removeInfo(const QString& key);
    // The info key that holds a value of krt::KUWPCommonSettings: "infoGUID"
    // is kept as "uwpInfoGUID". Empty for an empty key.
    static QString uwpInfoKey(const QString& key);

    QString language();
    void setLanguage(const QString& language);
    QString translate(const char* context, const char* sourceText, const char* id, int n);

    // The display scale the host runs at instead of the screen's, 0 when the
    // screen decides (profile: "display": { "scale": 1.5 }).
    qreal displayScale();
    void setDisplayScale(qreal scale);

    // The profile's "commands" section: command trees by root id.
    QVariantList commandTree(const QString& id);
    void setCommandTree(const QString& id, const QVariantList& tree);

    // Records the command, then hands it to the command runner.
    void recordExecutedCommand(const QString& name);
    QStringList executedCommands();
    void clearExecutedCommands();
    void setCommandRunner(std::function<void(const QString&)> runner);

    // The shell's active application and the suite account it offers.
    QString activeApp();
    void setActiveApp(const QString& name);
    bool accountLogined();
    QString accountUserName();
    void setAccount(bool logined, const QString& userName);
    bool logoutDuetoOffLine();
    void setLogoutDuetoOffLine(bool offline);
    // Records the call, then tells the observer.
    void recordAccountEntry(int code, const QString& first, const QString& second);
    QList<krt::hostcontrol::AccountEntryCall> accountEntryCalls();
    void clearAccountEntryCalls();
    void setAccountEntryObserver(
        std::function<void(const krt::hostcontrol::AccountEntryCall&)> observer);

    krt::hostcontrol::UserInformationFault userInformationFault();
    void setUserInformationFault(krt::hostcontrol::UserInformationFault fault);

    // Where usage events are kept: the profile's per-user data.
    QString infoCollectFile();

private:
    KHostProfile();
    void ensureLoadedLocked();
    void clearLocked(const QString& dir);
    bool readLocked(QString* error);
    void loadTranslatorLocked();

    static constexpr int kLayerCount = 5;

    QRecursiveMutex m_mutex;
    bool m_loaded = false;
    QString m_dir;
    IKAuthorizationHandler* m_handler = nullptr;
    QHash<QString, QString> m_productStrings;
    QHash<QString, bool> m_features;
    bool m_overseas = false;
    std::array<QHash<QString, QVariant>, kLayerCount> m_configs;
    QJsonObject m_info;
    QString m_language;
    QTranslator m_translator;
    QHash<QByteArray, QString> m_trCache;
    qreal m_displayScale = 0;
    QJsonObject m_commandTrees;
    QStringList m_executedCommands;
    // The host application's wiring, kept when another profile is loaded.
    std::function<void(const QString&)> m_commandRunner;
    std::function<void(const krt::hostcontrol::AccountEntryCall&)> m_accountEntryObserver;
    QString m_activeApp;
    bool m_accountLogined = false;
    QString m_accountUserName;
    bool m_logoutDuetoOffLine = false;
    QList<krt::hostcontrol::AccountEntryCall> m_accountEntryCalls;
    krt::hostcontrol::UserInformationFault m_userInformationFault =
        krt::hostcontrol::NoUserInformationFault;
};

#endif // VEXLITE_KHOSTPROFILE_H
