#include "vex/kcommandfactoryitembase.h"

KCommandFactoryItemBase::KCommandFactoryItemBase(const QString& className)
    : m_className(className)
{}

KCommandFactoryItemBase::~KCommandFactoryItemBase() = default;
