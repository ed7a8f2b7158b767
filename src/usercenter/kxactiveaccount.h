#ifndef KXACTIVEACCOUNT_H
#define KXACTIVEACCOUNT_H

class IKAccountService;

// The account service of the host's active application, or null when no
// application is active or it has none.
IKAccountService* kxActiveAccountService();

// Whether the host's active application reports that its user was signed
// out because the network went away: what the user-centre button and
// command ask. False without an active application. The library's own;
// other modules ask the host, or KNetworkStateMonitor.
bool isLogoutDuetoOffLine();

#endif // KXACTIVEACCOUNT_H
