#ifndef KDOCUMENTREQUEST_H
#define KDOCUMENTREQUEST_H

#include <QCoreApplication>
#include <QString>

// One command-line argument of the host as the helper layer's opening
// functions hand it over: a cloud document's address
// "<scheme>://type=open&fileid=<id>&displayname=<name in Base64>" (scheme
// "vexnimbo", or an application's own: "vexzento", "vextabix", "vexslidex",
// "vexpdf"), or the path of a local file (relative paths against the
// caller's working directory; "file:" addresses too). Anything else is
// invalid, with a one-line reason: among others a display name or file id
// that, decoded, is blank, not UTF-8 or holds control characters (a NUL
// included), and a path that is not a regular file.
class KDocumentRequest
{
    Q_DECLARE_TR_FUNCTIONS(KDocumentRequest)

public:
    enum Kind { Invalid, CloudDocument, LocalFile };

    static KDocumentRequest fromArgument(const QString& argument, const QString& workingDir);

    Kind kind() const { return m_kind; }
    bool isValid() const { return m_kind != Invalid; }
    QString argument() const { return m_argument; }
    // Why the argument was refused; empty for a valid one.
    QString error() const { return m_error; }

    // Cloud documents: the scheme in lower case, the file id, the decoded
    // display name.
    QString scheme() const { return m_scheme; }
    QString fileId() const { return m_fileId; }
    QString displayName() const { return m_displayName; }
    // Local files: the absolute, clean path.
    QString path() const { return m_path; }

    // The argument in a form that means the same from any working directory
    // (for handing to another instance): the address as given, or the
    // absolute path; empty for an invalid one.
    QString forwardable() const;
    // What a tab shows: the display name or the file name.
    QString title() const;

private:
    static KDocumentRequest invalid(const QString& argument, const QString& error);
    static KDocumentRequest cloudDocument(const QString& argument, const QString& scheme,
                                          const QString& query);
    static KDocumentRequest localFile(const QString& argument, const QString& path);

    Kind m_kind = Invalid;
    QString m_argument;
    QString m_error;
    QString m_scheme;
    QString m_fileId;
    QString m_displayName;
    QString m_path;
};

#endif // KDOCUMENTREQUEST_H
