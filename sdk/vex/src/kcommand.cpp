#include "vex/kcommand.h"

#include <QAction>
#include <QCoreApplication>

KCommand::KCommand(QObject* parent, QObject* host)
    : QObject(parent)
    , m_host(host)
{}

KCommand::~KCommand() = default;

void KCommand::setName(const QString& name)
{
    if (name == m_name)
        return;
    m_name = name;
    propertyChanged();
}

void KCommand::setText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    propertyChanged();
}

void KCommand::setDetail(const QString& detail)
{
    if (detail == m_detail)
        return;
    m_detail = detail;
    propertyChanged();
}

void KCommand::setIcon(const QIcon& icon)
{
    // Icons have no equality; a copy of the same icon shares its key.
    if (icon.cacheKey() == m_icon.cacheKey())
        return;
    m_icon = icon;
    propertyChanged();
}

void KCommand::setVisible(bool visible)
{
    if (visible == m_visible)
        return;
    m_visible = visible;
    propertyChanged();
}

void KCommand::setEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    propertyChanged();
}

bool KCommand::canUpdate() const
{
    return !m_updatesSuspended && !QCoreApplication::closingDown();
}

void KCommand::setUpdatesSuspended(bool suspended)
{
    m_updatesSuspended = suspended;
}

void KCommand::update() {}

KCommand* KCommand::clone(QObject* parent, QObject* host)
{
    auto* command = new KCommand(parent, host);
    command->copyProperties(this);
    return command;
}

void KCommand::copyProperties(const KCommand* other)
{
    if (!other || other == this)
        return;
    setName(other->m_name);
    setText(other->m_text);
    setDetail(other->m_detail);
    setIcon(other->m_icon);
    setVisible(other->m_visible);
    setEnabled(other->m_enabled);
}

int KCommand::childCount() const
{
    return 0;
}

KCommand* KCommand::childAt(int /*index*/) const
{
    return nullptr;
}

QWidget* KCommand::createPocketWidget(QWidget* /*parent*/)
{
    return nullptr;
}

QAction* KCommand::action()
{
    if (!m_action) {
        m_action = new QAction(this);
        syncAction();
    }
    return m_action;
}

void KCommand::syncAction()
{
    if (!m_action)
        return;
    m_action->setObjectName(m_name);
    m_action->setText(m_text);
    m_action->setToolTip(m_detail.isEmpty() ? m_text : m_detail);
    m_action->setIcon(m_icon);
    m_action->setVisible(m_visible);
    m_action->setEnabled(m_enabled);
}

void KCommand::propertyChanged()
{
    syncAction();
    emit changed();
}
