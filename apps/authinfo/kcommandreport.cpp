#include "kcommandreport.h"

#include <vex/kcommandfactory.h>
#include <vexlite/hostcontrol.h>
#include <vexlite/krtauth.h>

#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QTextStream>
#include <QUrl>

namespace {

constexpr int kLabelWidth = 10;

// Every scheme a command of the suite may hand to the desktop; the empty
// one catches an empty address.
const char* const kSchemes[] = {"", "http", "https", "file", "mailto", "ftp"};

// Stands in for the desktop's URL handler while a command runs.
class KUrlRecorder : public QObject
{
    Q_OBJECT

public:
    KUrlRecorder()
    {
        for (const char* scheme : kSchemes)
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "open");
    }
    ~KUrlRecorder() override
    {
        for (const char* scheme : kSchemes)
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }

    QStringList opened;

public slots:
    void open(const QUrl& url) { opened.append(url.toString(QUrl::FullyEncoded)); }
};

void line(QTextStream& out, const char* label, const QString& value)
{
    out << "  " << QString::fromLatin1(label).leftJustified(kLabelWidth) << "  " << value << '\n';
}

QString quoted(const QString& name)
{
    return name.isEmpty() ? QStringLiteral("empty") : QLatin1Char('"') + name + QLatin1Char('"');
}

} // namespace

void KCommandReport::printClasses(QTextStream& out)
{
    for (const QString& name : KCommandFactory::registeredClasses())
        out << name << '\n';
    out.flush();
}

void KCommandReport::run(QTextStream& out, const QString& name)
{
    const QString userBefore = krt::hostcontrol::suiteUserName();
    KUrlRecorder recorder;
    const bool goOn = krt::auth::prehook(name, false, nullptr);
    const QString userAfter = krt::hostcontrol::suiteUserName();

    out << "Command " << name << '\n';
    line(out, "Result",
         goOn ? QStringLiteral("true (the host goes on)")
              : QStringLiteral("false (the host stops)"));
    if (recorder.opened.isEmpty())
        line(out, "Opened", QStringLiteral("nothing"));
    for (const QString& url : qAsConst(recorder.opened))
        line(out, "Opened", url.isEmpty() ? QStringLiteral("(an empty address)") : url);
    line(out, "User name",
         (userAfter.isEmpty() ? QStringLiteral("(none)") : userAfter) +
             (userAfter == userBefore ? QStringLiteral(", unchanged")
                                      : QStringLiteral(", was %1").arg(quoted(userBefore))));
    out.flush();
}

#include "kcommandreport.moc"
