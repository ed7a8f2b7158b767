#include "kxwebdlgbridge.h"

#include "kxwebdlg.h"

KxWebDlgBridge::KxWebDlgBridge(KxWebDlg* dialog)
    : QObject(dialog)
    , m_dialog(dialog)
{}

void KxWebDlgBridge::resize(int contentWidth, int contentHeight)
{
    m_dialog->resize(contentWidth, contentHeight);
}

void KxWebDlgBridge::moveTo(int x, int y)
{
    m_dialog->moveTo(x, y);
}

void KxWebDlgBridge::accept()
{
    m_dialog->accept();
}

void KxWebDlgBridge::reject()
{
    m_dialog->reject();
}

QString KxWebDlgBridge::get(const QString& key)
{
    return m_dialog->get(key);
}

void KxWebDlgBridge::set(const QString& key, const QString& value)
{
    m_dialog->set(key, value);
}

void KxWebDlgBridge::experiment(const QString& expId, const QString& expVar)
{
    m_dialog->experiment(expId, expVar);
}

void KxWebDlgBridge::postEvent(const QString& eventName, const QString& eventCategory,
                               const QString& eventLable, int eventValue, const QString& viewName)
{
    m_dialog->postEvent(eventName, eventCategory, eventLable, eventValue, viewName);
}

void KxWebDlgBridge::postPageView(const QString& viewName, const QString& viewCategory)
{
    m_dialog->postPageView(viewName, viewCategory);
}

QString KxWebDlgBridge::distSrc()
{
    return m_dialog->distSrc();
}

QString KxWebDlgBridge::lang()
{
    return m_dialog->lang();
}

QString KxWebDlgBridge::version()
{
    return m_dialog->version();
}

QString KxWebDlgBridge::hdid()
{
    return m_dialog->hdid();
}

void KxWebDlgBridge::setVisible(bool visible)
{
    m_dialog->setVisible(visible);
}

QString KxWebDlgBridge::readStrReg(const QString& key, const QString& valueName)
{
    return m_dialog->readStrReg(key, valueName);
}

int KxWebDlgBridge::readIntReg(const QString& key, const QString& valueName)
{
    return m_dialog->readIntReg(key, valueName);
}

void KxWebDlgBridge::writeStrReg(const QString& key, const QString& valueName, const QString& value)
{
    m_dialog->writeStrReg(key, valueName, value);
}

void KxWebDlgBridge::writeIntReg(const QString& key, const QString& valueName, int value)
{
    m_dialog->writeIntReg(key, valueName, value);
}

QString KxWebDlgBridge::readProductConfig(const QString& key)
{
    return m_dialog->readProductConfig(key);
}

bool KxWebDlgBridge::isFileExist(const QString& file)
{
    return m_dialog->isFileExist(file);
}

void KxWebDlgBridge::login(const QString& onSuccess)
{
    m_dialog->login(onSuccess);
}

void KxWebDlgBridge::openAutoLoginUrl(const QString& url)
{
    m_dialog->openAutoLoginUrl(url);
}

bool KxWebDlgBridge::isLogined()
{
    return m_dialog->isLogined();
}

QString KxWebDlgBridge::loginedUserId()
{
    return m_dialog->loginedUserId();
}

bool KxWebDlgBridge::isMimeTypeAvailable(const QString& type)
{
    return m_dialog->isMimeTypeAvailable(type);
}

QString KxWebDlgBridge::availableMimeTypes()
{
    return m_dialog->availableMimeTypes();
}

bool KxWebDlgBridge::openUrl(const QString& url)
{
    return m_dialog->openUrl(url);
}

bool KxWebDlgBridge::isSupportWindowOpen()
{
    return m_dialog->isSupportWindowOpen();
}

void KxWebDlgBridge::setOnCloseCallback(const QString& callback)
{
    m_dialog->setOnCloseCallback(callback);
}

void KxWebDlgBridge::setOnEscPressCallback(const QString& callback)
{
    m_dialog->setOnEscPressCallback(callback);
}
