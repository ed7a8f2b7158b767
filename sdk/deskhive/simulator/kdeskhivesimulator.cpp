#include "kdeskhivesimulator.h"

#include "kdeskhivestatefile.h"
#include "ksimnimboclient.h"
#include "simulatorlogging.h"

#include <deskhive/livestateupdatecache.h>

#include <QCoreApplication>
#include <QPointer>

namespace {

// Deletes what is still alive when the library is unloaded before the
// application object goes: its code is about to go away.
struct KSimulatorHolder
{
    QPointer<KDeskhiveSimulator> simulator;
    bool created = false;
    ~KSimulatorHolder() { delete simulator.data(); }
};

KSimulatorHolder& holder()
{
    static KSimulatorHolder instance;
    return instance;
}

} // namespace

KDeskhiveSimulator* KDeskhiveSimulator::instance()
{
    KSimulatorHolder& h = holder();
    if (!h.created) {
        h.created = true;
        h.simulator = new KDeskhiveSimulator(QCoreApplication::instance());
    }
    return h.simulator;
}

KDeskhiveSimulator::KDeskhiveSimulator(QObject* parent)
    : QObject(parent)
    , m_stateFile(new KDeskhiveStateFile(KDeskhiveStateFile::defaultPath(), this))
    , m_client(new KSimNimboClient(m_stateFile, this))
    , m_cache(new ILiveStateUpdateCache(this))
    , m_dispatch(new QObject(this))
    , m_controller(new QObject(this))
{
    m_dispatch->setObjectName(QStringLiteral("LocalPushMessageDispatch"));
    m_controller->setObjectName(QStringLiteral("DeskhivePluginController"));
    connect(m_stateFile, SIGNAL(contentChanged()), this, SLOT(onStateFileChanged()));
}

INimboClient* KDeskhiveSimulator::nimboClient() const
{
    return m_client;
}

void KDeskhiveSimulator::onStateFileChanged()
{
    m_client->setState(m_stateFile->state());
    const QStringList requests = m_stateFile->requests();
    for (const QString& request : requests)
        raise(request);
}

void KDeskhiveSimulator::raise(const QString& request)
{
    // "name" or "name:argument"; only cloudsvrExitWithErrors takes one.
    const int colon = request.indexOf(QLatin1Char(':'));
    const QString name = colon < 0 ? request : request.left(colon);
    const QString argument = colon < 0 ? QString() : request.mid(colon + 1);

    if (name == QLatin1String("failedToLaunchCloudsvrProcess"))
        emit m_client->failedToLaunchCloudsvrProcess();
    else if (name == QLatin1String("cloudsvrExitWithErrors"))
        emit m_client->cloudsvrExitWithErrors(argument);
    else if (name == QLatin1String("occurIpcErrorsWhenGetUserInf"))
        emit m_cache->occurIpcErrorsWhenGetUserInf();
    else if (name == QLatin1String("occurRpcErrorsWhenGetUserInf"))
        emit m_cache->occurRpcErrorsWhenGetUserInf();
    else
        qCWarning(lcDeskhiveSimulator, "no signal \"%s\" to emit (state file %s)",
                  qUtf8Printable(request), qUtf8Printable(m_stateFile->path()));
}
