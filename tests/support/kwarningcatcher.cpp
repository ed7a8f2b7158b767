#include "kwarningcatcher.h"

namespace {

QStringList& caught()
{
    static QStringList list;
    return list;
}

void collect(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtWarningMsg)
        caught().append(message);
}

} // namespace

KWarningCatcher::KWarningCatcher()
    : m_previous(qInstallMessageHandler(collect))
{
    caught().clear();
}

KWarningCatcher::~KWarningCatcher()
{
    qInstallMessageHandler(m_previous);
    caught().clear();
}

QStringList KWarningCatcher::warnings() const
{
    return caught();
}

void KWarningCatcher::clear()
{
    caught().clear();
}
