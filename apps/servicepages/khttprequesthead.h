#ifndef KHTTPREQUESTHEAD_H
#define KHTTPREQUESTHEAD_H

#include <QByteArray>

// The head of an HTTP request as the local service server reads it, from
// the bytes a client sent so far: the request line and whether a body is
// announced. Lines may end in CRLF or a bare LF; empty lines before the
// request line are skipped. Nothing else of the head is looked at.
class KHttpRequestHead
{
public:
    enum State {
        Incomplete, // no empty line yet: more may come
        Complete,   // the head ends within the limit
        TooLarge,   // the head is, or would be, longer than kMaxSize
    };

    // The longest head served, its final empty line included.
    static constexpr int kMaxSize = 16 * 1024;

    static KHttpRequestHead parse(const QByteArray& received);

    State state() const { return m_state; }
    // A complete head whose request line is "<method> <path> HTTP/1.<n>",
    // the path starting with "/".
    bool isWellFormed() const { return m_wellFormed; }
    QByteArray method() const { return m_method; }
    QByteArray target() const { return m_target; }
    // A Content-Length or Transfer-Encoding line: the client sends more
    // after the head.
    bool announcesBody() const { return m_announcesBody; }

private:
    void readLines(const QByteArray& head);

    State m_state = Incomplete;
    bool m_wellFormed = false;
    bool m_announcesBody = false;
    QByteArray m_method;
    QByteArray m_target;
};

#endif // KHTTPREQUESTHEAD_H
