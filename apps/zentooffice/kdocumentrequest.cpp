#include "kdocumentrequest.h"

#include <vexlite/kqtcompat.h>

#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <QUrl>

namespace {

const char* const kSchemes[] = {"vexnimbo", "vexzento", "vextabix", "vexslidex", "vexpdf"};

// The bytes as text, every one of them (a NUL does not end it); null when
// they are not UTF-8.
QString utf8Text(const QByteArray& bytes)
{
    bool valid = false;
    const QString text = KQtCompat::decodeUtf8(bytes, &valid);
    return valid ? text : QString();
}

// Something a tab can show: not blank, and no control characters (NUL,
// line breaks, escapes).
bool isShowable(const QString& text)
{
    if (text.trimmed().isEmpty())
        return false;
    for (const QChar c : text) {
        if (c.category() == QChar::Other_Control)
            return false;
    }
    return true;
}

} // namespace

KDocumentRequest KDocumentRequest::fromArgument(const QString& argument, const QString& workingDir)
{
    if (argument.trimmed().isEmpty())
        return invalid(argument, tr("an empty argument"));

    const int separator = argument.indexOf(QLatin1String("://"));
    if (separator > 0) {
        const QString scheme = argument.left(separator).toLower();
        for (const char* known : kSchemes) {
            if (scheme == QLatin1String(known))
                return cloudDocument(argument, scheme, argument.mid(separator + 3));
        }
        if (scheme == QLatin1String("file")) {
            const QUrl url(argument);
            if (url.isLocalFile())
                return localFile(argument, url.toLocalFile());
        }
        return invalid(argument, tr("neither a document address nor a file"));
    }
    return localFile(argument, QDir(workingDir).absoluteFilePath(argument));
}

KDocumentRequest KDocumentRequest::invalid(const QString& argument, const QString& error)
{
    KDocumentRequest request;
    request.m_argument = argument;
    request.m_error = error;
    return request;
}

KDocumentRequest KDocumentRequest::cloudDocument(const QString& argument, const QString& scheme,
                                                 const QString& query)
{
    // Every value decoded whole first, then checked: a NUL must not cut
    // "open\0x" to "open" or a name to its first part.
    QString type;
    QString fileId;
    QByteArray encodedName;
    bool hasName = false;
    const QStringList items = query.split(QLatin1Char('&'));
    for (const QString& item : items) {
        const int equals = item.indexOf(QLatin1Char('='));
        const QString key = item.left(equals);
        // Base64 may end in "="; only the first one separates.
        const QByteArray value =
            equals < 0 ? QByteArray()
                       : QByteArray::fromPercentEncoding(item.mid(equals + 1).toUtf8());
        if (key == QLatin1String("type")) {
            type = utf8Text(value);
        } else if (key == QLatin1String("fileid")) {
            fileId = utf8Text(value);
        } else if (key == QLatin1String("displayname")) {
            encodedName = value;
            hasName = true;
        }
    }
    if (type != QLatin1String("open"))
        return invalid(argument, tr("the address does not ask to open a document"));
    if (!isShowable(fileId))
        return invalid(argument, tr("the address names no file id"));
    const QByteArray::FromBase64Result name =
        QByteArray::fromBase64Encoding(encodedName, QByteArray::AbortOnBase64DecodingErrors);
    if (!hasName || !name)
        return invalid(argument, tr("the address has no display name in Base64"));
    const QString displayName = utf8Text(name.decoded);
    if (!isShowable(displayName))
        return invalid(argument, tr("the display name is empty, not UTF-8 or holds control "
                                    "characters"));

    KDocumentRequest request;
    request.m_kind = CloudDocument;
    request.m_argument = argument;
    request.m_scheme = scheme;
    request.m_fileId = fileId;
    request.m_displayName = displayName;
    return request;
}

KDocumentRequest KDocumentRequest::localFile(const QString& argument, const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return invalid(argument, tr("no such file"));
    if (info.isDir())
        return invalid(argument, tr("a folder, not a file"));
    if (!info.isFile())
        return invalid(argument, tr("a pipe, device or socket, not a regular file"));
    if (!info.isReadable())
        return invalid(argument, tr("the file cannot be read"));

    KDocumentRequest request;
    request.m_kind = LocalFile;
    request.m_argument = argument;
    request.m_path = QDir::cleanPath(info.absoluteFilePath());
    return request;
}

QString KDocumentRequest::forwardable() const
{
    switch (m_kind) {
    case CloudDocument:
        return m_argument;
    case LocalFile:
        return m_path;
    case Invalid:
        break;
    }
    return QString();
}

QString KDocumentRequest::title() const
{
    return m_kind == LocalFile ? QFileInfo(m_path).fileName() : m_displayName;
}
