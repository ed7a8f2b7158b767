#ifndef KDESKHIVESIMULATOR_H
#define KDESKHIVESIMULATOR_H

#include <QObject>
#include <QString>

class ILiveStateUpdateCache;
class INimboClient;
class KDeskhiveStateFile;
class KSimNimboClient;

// Everything the simulated library hands out, created together on the
// first call of an entry point and owned here. It lives as a child of the
// application object, so it goes before the application does; a library
// unloaded earlier takes it along.
class KDeskhiveSimulator : public QObject
{
    Q_OBJECT

public:
    // Null once the simulator has gone with the application object.
    static KDeskhiveSimulator* instance();

    QObject* localPushMessageDispatch() const { return m_dispatch; }
    INimboClient* nimboClient() const;
    ILiveStateUpdateCache* liveStateUpdateCache() const { return m_cache; }
    QObject* pluginController() const { return m_controller; }

private slots:
    void onStateFileChanged();

private:
    explicit KDeskhiveSimulator(QObject* parent);
    void raise(const QString& request);

    KDeskhiveStateFile* m_stateFile;
    KSimNimboClient* m_client;
    ILiveStateUpdateCache* m_cache;
    QObject* m_dispatch;
    QObject* m_controller;
};

#endif // KDESKHIVESIMULATOR_H
