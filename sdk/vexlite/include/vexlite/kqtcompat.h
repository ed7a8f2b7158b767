#ifndef VEXLITE_KQTCOMPAT_H
#define VEXLITE_KQTCOMPAT_H

// What differs between Qt 5.15 and Qt 6 where the code cannot be written
// once for both: the one place that asks which Qt it is built with. The
// frameworks, the plug-in, the applications and the tests use these names
// instead.

#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>
#include <QSettings>
#include <QString>
#include <QVariant>
#include <QtGlobal>

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QStringDecoder>
#else
#include <QTextCodec>
#endif

class QEnterEvent;
class QEvent;

namespace KQtCompat {

// The argument of QWidget::enterEvent, for overrides.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
using EnterEvent = QEnterEvent;
#else
using EnterEvent = QEvent;
#endif

// A variant without an answer: empty, or holding a null string, byte array,
// date or time. Qt 5's QVariant::isNull() says so; Qt 6's counts only the
// empty variant, and a null string in a variant would pass for an answer.
inline bool isNull(const QVariant& value)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    switch (value.userType()) {
    case QMetaType::QString:
        return value.toString().isNull();
    case QMetaType::QByteArray:
        return value.toByteArray().isNull();
    case QMetaType::QDate:
        return value.toDate().isNull();
    case QMetaType::QTime:
        return value.toTime().isNull();
    case QMetaType::QDateTime:
        return value.toDateTime().isNull();
    default:
        return value.isNull();
    }
#else
    return value.isNull();
#endif
}

// Images drawn at the device's pixel ratio (the @2x files): always so in
// Qt 6; Qt 5 is told before the application object exists.
inline void useHighDpiPixmaps()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
}

// INI files in UTF-8, as the suite writes them: Qt 6 always reads and
// writes them so, Qt 5 only when told.
inline void setIniUtf8(QSettings& settings)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    settings.setIniCodec("UTF-8");
#else
    Q_UNUSED(settings)
#endif
}

// The bytes as UTF-8 text, every one of them (a NUL does not end it) but a
// leading byte order mark; *valid tells whether they were UTF-8 at all.
inline QString decodeUtf8(const QByteArray& bytes, bool* valid)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(bytes);
    *valid = !decoder.hasError();
#else
    QTextCodec::ConverterState state;
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    *valid = state.invalidChars == 0;
#endif
    return text;
}

} // namespace KQtCompat

#endif // VEXLITE_KQTCOMPAT_H
