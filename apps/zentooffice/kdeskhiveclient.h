#ifndef KDESKHIVECLIENT_H
#define KDESKHIVECLIENT_H

#include <QString>

class INimboClient;
class QObject;

// The suite's cloud library as the host itself reaches it: the same library
// the plug-in loads from addons/deskhive beside the program (loaded once per
// process, so both see one client), by its entry point.
class KDeskhiveClient
{
public:
    // The client object; null without the library.
    static INimboClient* client();
    // The user-information sync cache (ILiveStateUpdateCache); null without
    // the library.
    static QObject* syncCache();
    // The simulator's state file: $DESKHIVE_STATE, else state.json in
    // addons/deskhive beside the program.
    static QString stateFilePath();
    // The demo user's picture shipped beside the simulator.
    static QString demoAvatarPath();
};

#endif // KDESKHIVECLIENT_H
