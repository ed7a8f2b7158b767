#include "kxwebdlgengine.h"

KxWebDlgEngine::KxWebDlgEngine(QObject* parent)
    : QObject(parent)
{}
