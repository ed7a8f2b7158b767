#ifndef KXPLUGINTRANSLATOR_H
#define KXPLUGINTRANSLATOR_H

// The plug-in's own translation catalogue, compiled in as
// ":/auth_plugin/i18n/authplugin_<language>.qm", installed into the
// application for the host's interface language (krt::i18n::uiLocale()).
//
// Installed when the host first asks for the handler and again checked
// whenever it creates one of the plug-in's commands, before the command
// sets its texts. Not from a static initialiser: the library is loaded
// (and its statics run) before the host necessarily has its application
// object, without which Qt has nowhere to install a catalogue, and before
// it has settled its language. Each call follows a language the host
// switched to meanwhile. The catalogue removes itself from the application
// when the library is unloaded.
//
// True when a catalogue of the plug-in is installed for the language now;
// false for English (the source texts need none), for a language without a
// catalogue, without an application object, or off the application's
// thread (where nothing is changed).
bool kxInstallPluginTranslator();

#endif // KXPLUGINTRANSLATOR_H
