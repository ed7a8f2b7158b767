#include "kxwebdlgbridge.h"

#include "kxwebdlg.h"

namespace {

// The bridge's meta-object without QObject's part: its methods start at
// index 0 and nothing of QObject (deleteLater, destroyed, objectName)
// follows from it. Engines offer pages what an object's metaObject()
// lists, QtWebKit's bridge and QWebChannel alike.
QMetaObject ownMembersOnly()
{
    QMetaObject meta = KxWebDlgBridge::staticMetaObject;
    meta.d.superdata = nullptr;
    return meta;
}

const QMetaObject kOwnMembersOnly = ownMembersOnly();

// The published object: the bridge presenting only its own members. Calls
// through that meta-object carry its indices, which the bridge's own
// qt_metacall counts from QObject's first member on.
class KxWebDlgBridgeFacade final : public KxWebDlgBridge
{
public:
    using KxWebDlgBridge::KxWebDlgBridge;

    const QMetaObject* metaObject() const override { return &kOwnMembersOnly; }

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override
    {
        // QtWebKit calls with -1 where no method fits the arguments.
        if (id < 0)
            return id;
        switch (call) {
        case QMetaObject::InvokeMetaMethod:
        case QMetaObject::RegisterMethodArgumentMetaType:
            id += QObject::staticMetaObject.methodCount();
            break;
        default:
            // The facade lists no properties, so no property call is one
            // of its own.
            return -1;
        }
        return KxWebDlgBridge::qt_metacall(call, id, arguments);
    }
};

} // namespace

KxWebDlgBridge* KxWebDlgBridge::create(KxWebDlg* dialog, Gate gate)
{
    return new KxWebDlgBridgeFacade(dialog, std::move(gate));
}

KxWebDlgBridge::KxWebDlgBridge(KxWebDlg* dialog, Gate gate)
    : QObject(dialog)
    , m_dialog(dialog)
    , m_gate(std::move(gate))
{}

bool KxWebDlgBridge::admit(const char* method, std::initializer_list<Text> texts)
{
    for (const Text& text : texts) {
        if (text.text->size() > text.limit) {
            qWarning("Refused zentoctx.%s: a text of %d characters, more than %d", method,
                     int(text.text->size()), text.limit);
            return false;
        }
    }
    return m_gate();
}

void KxWebDlgBridge::resize(int contentWidth, int contentHeight)
{
    if (admit("resize"))
        m_dialog->resize(contentWidth, contentHeight);
}

void KxWebDlgBridge::moveTo(int x, int y)
{
    if (admit("moveTo"))
        m_dialog->moveTo(x, y);
}

void KxWebDlgBridge::accept()
{
    if (admit("accept"))
        m_dialog->accept();
}

void KxWebDlgBridge::reject()
{
    if (admit("reject"))
        m_dialog->reject();
}

QString KxWebDlgBridge::get(const QString& key)
{
    return admit("get", {{&key, kMaxKeyLength}}) ? m_dialog->get(key) : QString();
}

void KxWebDlgBridge::set(const QString& key, const QString& value)
{
    if (admit("set", {{&key, kMaxKeyLength}, {&value, kMaxValueLength}}))
        m_dialog->set(key, value);
}

void KxWebDlgBridge::experiment(const QString& expId, const QString& expVar)
{
    if (admit("experiment", {{&expId, kMaxTextLength}, {&expVar, kMaxTextLength}}))
        m_dialog->experiment(expId, expVar);
}

void KxWebDlgBridge::postEvent(const QString& eventName, const QString& eventCategory,
                               const QString& eventLable, int eventValue, const QString& viewName)
{
    if (admit("postEvent", {{&eventName, kMaxTextLength},
                            {&eventCategory, kMaxTextLength},
                            {&eventLable, kMaxTextLength},
                            {&viewName, kMaxTextLength}}))
        m_dialog->postEvent(eventName, eventCategory, eventLable, eventValue, viewName);
}

void KxWebDlgBridge::postPageView(const QString& viewName, const QString& viewCategory)
{
    if (admit("postPageView", {{&viewName, kMaxTextLength}, {&viewCategory, kMaxTextLength}}))
        m_dialog->postPageView(viewName, viewCategory);
}

QString KxWebDlgBridge::distSrc()
{
    return admit("distSrc") ? m_dialog->distSrc() : QString();
}

QString KxWebDlgBridge::lang()
{
    return admit("lang") ? m_dialog->lang() : QString();
}

QString KxWebDlgBridge::version()
{
    return admit("version") ? m_dialog->version() : QString();
}

QString KxWebDlgBridge::hdid()
{
    return admit("hdid") ? m_dialog->hdid() : QString();
}

void KxWebDlgBridge::setVisible(bool visible)
{
    if (admit("setVisible"))
        m_dialog->setVisible(visible);
}

QString KxWebDlgBridge::readStrReg(const QString& key, const QString& valueName)
{
    return admit("readStrReg", {{&key, kMaxKeyLength}, {&valueName, kMaxKeyLength}})
               ? m_dialog->readStrReg(key, valueName)
               : QString();
}

int KxWebDlgBridge::readIntReg(const QString& key, const QString& valueName)
{
    return admit("readIntReg", {{&key, kMaxKeyLength}, {&valueName, kMaxKeyLength}})
               ? m_dialog->readIntReg(key, valueName)
               : 0;
}

void KxWebDlgBridge::writeStrReg(const QString& key, const QString& valueName, const QString& value)
{
    if (admit("writeStrReg",
              {{&key, kMaxKeyLength}, {&valueName, kMaxKeyLength}, {&value, kMaxValueLength}}))
        m_dialog->writeStrReg(key, valueName, value);
}

void KxWebDlgBridge::writeIntReg(const QString& key, const QString& valueName, int value)
{
    if (admit("writeIntReg", {{&key, kMaxKeyLength}, {&valueName, kMaxKeyLength}}))
        m_dialog->writeIntReg(key, valueName, value);
}

QString KxWebDlgBridge::readProductConfig(const QString& key)
{
    return admit("readProductConfig", {{&key, kMaxKeyLength}}) ? m_dialog->readProductConfig(key)
                                                               : QString();
}

bool KxWebDlgBridge::isFileExist(const QString& file)
{
    return admit("isFileExist", {{&file, kMaxTextLength}}) ? m_dialog->isFileExist(file) : false;
}

void KxWebDlgBridge::login(const QString& onSuccess)
{
    if (admit("login", {{&onSuccess, kMaxTextLength}}))
        m_dialog->login(onSuccess);
}

void KxWebDlgBridge::openAutoLoginUrl(const QString& url)
{
    if (admit("openAutoLoginUrl", {{&url, kMaxTextLength}}))
        m_dialog->openAutoLoginUrl(url);
}

bool KxWebDlgBridge::isLogined()
{
    return admit("isLogined") ? m_dialog->isLogined() : false;
}

QString KxWebDlgBridge::loginedUserId()
{
    return admit("loginedUserId") ? m_dialog->loginedUserId() : QString();
}

bool KxWebDlgBridge::isMimeTypeAvailable(const QString& type)
{
    return admit("isMimeTypeAvailable", {{&type, kMaxTextLength}})
               ? m_dialog->isMimeTypeAvailable(type)
               : false;
}

QString KxWebDlgBridge::availableMimeTypes()
{
    return admit("availableMimeTypes") ? m_dialog->availableMimeTypes() : QString();
}

bool KxWebDlgBridge::openUrl(const QString& url)
{
    return admit("openUrl", {{&url, kMaxTextLength}}) ? m_dialog->openUrl(url) : false;
}

bool KxWebDlgBridge::isSupportWindowOpen()
{
    return admit("isSupportWindowOpen") ? m_dialog->isSupportWindowOpen() : false;
}

void KxWebDlgBridge::setOnCloseCallback(const QString& callback)
{
    if (admit("setOnCloseCallback", {{&callback, kMaxTextLength}}))
        m_dialog->setOnCloseCallback(callback);
}

void KxWebDlgBridge::setOnEscPressCallback(const QString& callback)
{
    if (admit("setOnEscPressCallback", {{&callback, kMaxTextLength}}))
        m_dialog->setOnEscPressCallback(callback);
}
