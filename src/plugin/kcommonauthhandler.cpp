#include "kcommonauthhandler.h"
#include "pluginlogging.h"

#include <vex/ikuserinformation.h>

#include <exception>

namespace {

// One reference of the suite's user information, released however the
// scope is left.
class KUserInformationRef
{
public:
    explicit KUserInformationRef(IKUserInformation* info)
        : m_info(info)
    {}
    ~KUserInformationRef()
    {
        if (m_info)
            m_info->Release();
    }
    KUserInformationRef(const KUserInformationRef&) = delete;
    KUserInformationRef& operator=(const KUserInformationRef&) = delete;

    IKUserInformation* operator->() const { return m_info; }

private:
    IKUserInformation* m_info;
};

// A system string, freed however the scope is left.
class KSysString
{
public:
    KSysString() = default;
    ~KSysString() { XSysFreeString(m_string); }
    KSysString(const KSysString&) = delete;
    KSysString& operator=(const KSysString&) = delete;

    XBSTR get() const { return m_string; }
    XBSTR* receive() { return &m_string; }

private:
    XBSTR m_string = nullptr;
};

} // namespace

bool KCommonAuthHandler::prehook(const QString& name, void* data)
{
    if (name == QLatin1String("ProcUserRegister")) {
        // Nothing may leave through the host's interface, a failure of the
        // host's own objects included; the command goes on regardless.
        try {
            processUserName();
        } catch (const std::exception& e) {
            qCWarning(lcAuthPlugin, "the suite user name was not set: %s", e.what());
        } catch (...) {
            qCWarning(lcAuthPlugin, "the suite user name was not set");
        }
    }
    // The base form is called directly: a handler further down must not be
    // asked again through the table.
    return KAuthorizationHandler::prehook(name, data, nullptr);
}

void KCommonAuthHandler::processUserName()
{
    IKUserInformation* raw = nullptr;
    if (!XSucceeded(vex_GetUserInformation(&raw)) || !raw)
        return;
    const KUserInformationRef info(raw);
    KSysString name;
    if (XSucceeded(info->getUserName(name.receive())) && XSysStringLen(name.get()) > 0)
        return;

    // Environment values end at their first zero byte already.
    const QString user = QString::fromUtf8(qgetenv("USER"));
    if (!XSysReAllocString(name.receive(), reinterpret_cast<const XOLECHAR*>(user.utf16())))
        return;
    info->setUserName(name.get());
}
