#ifndef FUZZSUPPORT_H
#define FUZZSUPPORT_H

#include <QString>

// What every fuzz target needs around the code it drives.
namespace AuthFuzz {

// Drops Qt's messages: warnings the code under test gives once per odd
// input would otherwise drown libFuzzer's own output. Fatal ones still end
// the run.
void silenceQtMessages();

// A private folder for files an input has to become, on a memory file
// system where there is one (writes of settings files sync to disk). HOME
// and the XDG folders point below it, so nothing reaches the user's files.
// Removed when the process ends.
QString scratchDir();

// A broken promise of the code under test: says what, and aborts so that
// libFuzzer keeps the input.
void require(bool holds, const char* what);

} // namespace AuthFuzz

#endif // FUZZSUPPORT_H
