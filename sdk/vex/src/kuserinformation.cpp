#include "vex/ikuserinformation.h"

#include <vexlite/hostcontrol.h>

#include <QString>

#include <atomic>
#include <stdexcept>

namespace {

using namespace krt::hostcontrol;

// The one user information of the process. The host keeps a reference of
// its own, so the object outlives every caller's; the name itself lives in
// the profile's per-user store.
class KUserInformation final : public IKUserInformation
{
public:
    unsigned long AddRef() override { return ++m_refs; }

    unsigned long Release() override
    {
        unsigned long refs = m_refs.load();
        // The host's own reference is never given away.
        while (refs > 1 && !m_refs.compare_exchange_weak(refs, refs - 1)) {
        }
        if (refs <= 1) {
            qWarning("vex: the user information was released more often than it was handed out");
            return 1;
        }
        return refs - 1;
    }

    XRESULT getUserName(XBSTR* name) override
    {
        if (!name)
            return X_E_POINTER;
        *name = nullptr;
        if (userInformationFault() == UserNameUnreadable)
            return X_E_FAIL;
        const QString user = suiteUserName();
        *name = XSysAllocStringLen(reinterpret_cast<const XOLECHAR*>(user.utf16()),
                                   unsigned(user.size()));
        return *name ? X_S_OK : X_E_OUTOFMEMORY;
    }

    XRESULT setUserName(XBSTR name) override
    {
        if (userInformationFault() == UserNameWriteThrows)
            throw std::runtime_error("the user information cannot be written");
        setSuiteUserName(
            QString::fromUtf16(reinterpret_cast<const char16_t*>(name), int(XSysStringLen(name))));
        return X_S_OK;
    }

private:
    std::atomic<unsigned long> m_refs{1};
};

} // namespace

XRESULT vex_GetUserInformation(IKUserInformation** info)
{
    static KUserInformation information;
    if (!info)
        return X_E_POINTER;
    *info = nullptr;
    if (userInformationFault() == UserInformationUnavailable)
        return X_E_FAIL;
    information.AddRef();
    *info = &information;
    return X_S_OK;
}
