#ifndef KOPENCOMMAND_H
#define KOPENCOMMAND_H

#include <QString>
#include <QStringList>

// Hands a document, path or address to an application, the way macOS's
// "open -a" does. text() is the command line as the suite has always written
// it; what runs is program() with arguments(), never a shell, so nothing in
// the target can become a command of its own. On macOS that is "open"; on
// other systems, which have no "open -a", the application's own launcher is
// started with the target as its one argument.
class KOpenCommand
{
public:
    // open -a "<bundle>" "<target>"; elsewhere the launcher "zentooffice"
    // in the bundle directory.
    static KOpenCommand forSuite(const QString& bundle, const QString& target);
    // open -a /Applications/Safari.app "<url>"
    static KOpenCommand forSafari(const QString& url);
    static QString safariBundle();

    QString text() const { return m_text; }
    QString program() const { return m_program; }
    QStringList arguments() const { return m_arguments; }

    // True when the command FAILED: on macOS "open" could not be started or
    // ended with a non-zero status (it is waited for); elsewhere the launcher
    // could not be started (it runs on, detached).
    bool run() const;

private:
    KOpenCommand(const QString& application, const QString& target, const QString& text,
                 const QString& launcher);

    QString m_text;
    QString m_program;
    QStringList m_arguments;
};

#endif // KOPENCOMMAND_H
