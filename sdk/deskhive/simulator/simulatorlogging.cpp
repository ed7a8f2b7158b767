#include "simulatorlogging.h"

Q_LOGGING_CATEGORY(lcDeskhiveSimulator, "deskhive.simulator")
