#include "authinfokeys.h"

const char* KEY_SEPARATOR = "/";
const char* GROUP_AUTH = "Auth";
const char* GROUP_PRODUCT = "Product";
const char* GROUP_SERVER = "Server";
const char* GROUP_SUPPORT = "Support";
const char* GROUP_PATENT = "Patent";
