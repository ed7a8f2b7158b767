#include "deskhive/nimboclient.h"

// Out of line so that the vtable and the meta-object have one home.
INimboClient::INimboClient(QObject* parent)
    : QObject(parent)
{}

INimboClient::~INimboClient() = default;
