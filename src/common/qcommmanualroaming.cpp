#include "qcommmanualroaming.h"

#include "commlogging.h"

#include <vexlite/kqtcompat.h>

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QPair>
#include <QSettings>
#include <QVector>

#include <algorithm>
#include <memory>

namespace {

const QLatin1String kFileGroup("file");

QString listPath(const QString& dir)
{
    return QStringLiteral("%1%2%3").arg(dir, QDir::separator(), QComm::MANUAL_ROAMING_CONFIG_FILE);
}

// The value of c as a digit in base (8 or 16), or -1.
int digitIn(char c, int base)
{
    const char lower = char(c | 0x20);
    const int digit = c >= '0' && c <= '9'           ? c - '0'
                      : lower >= 'a' && lower <= 'f' ? lower - 'a' + 10
                                                     : base;
    return digit < base ? digit : -1;
}

// The text of an INI file with its escapes undone as the settings class's
// reader undoes them (\x.., \0.., C's escapes, a line continuation; any
// other escaped character is dropped), byte by byte.
QByteArray unescaped(const QByteArray& text)
{
    static const QByteArray escaped("abfnrtv\"?'\\");
    static const QByteArray meant("\a\b\f\n\r\t\v\"?'\\");
    QByteArray plain;
    plain.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) != '\\' || i + 1 == text.size()) {
            plain += text.at(i);
            continue;
        }
        const char kind = text.at(++i);
        const int base = kind == 'x' ? 16 : kind >= '0' && kind <= '7' ? 8 : 0;
        if (base == 0) {
            const int at = escaped.indexOf(kind);
            if (at >= 0)
                plain += meant.at(at);
            continue;
        }
        // "\x" without a digit gives nothing.
        if (base == 16 && (i + 1 == text.size() || digitIn(text.at(i + 1), 16) < 0))
            continue;
        int code = base == 16 ? 0 : kind - '0';
        for (int digit; i + 1 < text.size() && (digit = digitIn(text.at(i + 1), base)) >= 0; ++i)
            code = (code * base + digit) & 0xFFFF;
        plain += char(code & 0xFF);
    }
    return plain;
}

// Whether the list file holds a value the settings class would rebuild
// from binary data ("@Variant(...)"): its reader trusts the lengths stored
// there, so a damaged one can take gigabytes or end the program. The list
// only ever holds times and Base64 keys, so such a file is not a list this
// code wrote; it is left alone, read as empty and never rewritten. The
// marker is looked for with the escapes undone and quotes and white space
// dropped, so no spelling of it slips through; what that wrongly refuses is
// no list either.
bool holdsBinaryValue(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QByteArray plain = unescaped(file.readAll());
    plain.replace('"', QByteArray());
    return plain.simplified().replace(' ', QByteArray()).contains("@Variant(");
}

// The list of dir, entered at its "file" group; written back when destroyed.
// None when the file is not one to touch (see above).
std::unique_ptr<QSettings> openList(const QString& dir)
{
    const QString path = listPath(dir);
    if (holdsBinaryValue(path)) {
        qCWarning(lcAuthCommon, "the roaming list %s holds binary values; left as it is",
                  qUtf8Printable(path));
        return nullptr;
    }
    auto list = std::make_unique<QSettings>(path, QSettings::IniFormat);
    KQtCompat::setIniUtf8(*list);
    list->beginGroup(kFileGroup);
    return list;
}

QString keyOf(const QString& file)
{
    // A path is taken up to its first zero character, as the client does.
    QString key = QString::fromLatin1(QByteArray(file.toUtf8().constData()).toBase64());
    // The settings class drops a "/" that ends a key; a "=" after it, which
    // Base64 readers skip, keeps it. UTF-8 never makes the other keys it
    // would change (one that starts with "/" or holds "//"): those need
    // bytes from 0xFC up.
    if (key.endsWith(QLatin1Char('/')))
        key += QLatin1Char('=');
    return key;
}

// The path a key names: its Base64 decoded up to the first zero byte, if
// that is UTF-8 text, as every path a writer of the list starts from is.
// Otherwise none: the key is damage, not an entry.
QString nameOf(const QString& key)
{
    const QByteArray path(QByteArray::fromBase64(key.toUtf8()).constData());
    const QString name = QString::fromUtf8(path);
    return name.toUtf8() == path ? name : QString();
}

// Of a damaged file ("[file/" and a key below it) the settings class makes
// keys it never writes itself, with a "/" at either end or two together. It
// cannot address them, and it writes them back in a form that every reader
// then takes for an entry: before an edit, the group keeps every other key
// and loses those.
void dropDamage(QSettings& list)
{
    const auto stray = [](const QString& key) {
        return key.startsWith(QLatin1Char('/')) || key.endsWith(QLatin1Char('/')) ||
               key.contains(QLatin1String("//"));
    };
    // The group's keys, listed from the top: its own listing can miss them.
    list.endGroup();
    const QString prefix = kFileGroup + QLatin1Char('/');
    QStringList keys;
    for (const QString& key : list.allKeys()) {
        if (key.startsWith(prefix))
            keys.append(key.mid(prefix.size()));
    }
    list.beginGroup(kFileGroup);
    if (std::none_of(keys.cbegin(), keys.cend(), stray))
        return;
    QVector<QPair<QString, QVariant>> kept;
    for (const QString& key : keys) {
        if (!stray(key))
            kept.append({key, list.value(key)});
    }
    list.remove(QString());
    for (const auto& entry : kept)
        list.setValue(entry.first, entry.second);
}

} // namespace

namespace QComm {

QStringList getManualRoamingFiles(const QString& dir)
{
    QStringList files;
    if (dir.isEmpty())
        return files;
    const auto list = openList(dir);
    if (!list)
        return files;
    for (const QString& key : list->allKeys()) {
        const QString name = nameOf(key);
        if (!name.isEmpty() && !files.contains(name))
            files.append(name);
    }
    return files;
}

void addManualRoamingFiles(const QString& dir, const QString& file)
{
    // An empty path (or one that starts with a zero) has no key: the
    // settings class would take it for the whole group.
    if (dir.isEmpty() || keyOf(file).isEmpty())
        return;
    const auto list = openList(dir);
    if (!list)
        return;
    dropDamage(*list);
    list->setValue(keyOf(file), static_cast<uint>(QDateTime::currentDateTime().toSecsSinceEpoch()));
}

void delManualRoamingFiles(const QString& dir, const QString& file)
{
    // Removing the empty key would remove every path in the list.
    if (dir.isEmpty() || keyOf(file).isEmpty())
        return;
    const auto list = openList(dir);
    if (!list)
        return;
    dropDamage(*list);
    list->remove(keyOf(file));
    list->endGroup();
}

} // namespace QComm
