#include "khttprequesthead.h"

#include <QList>

namespace {

// Where the head's final empty line ends (after its LF), or -1.
int headEnd(const QByteArray& received, int from)
{
    for (int lf = received.indexOf('\n', from); lf >= 0; lf = received.indexOf('\n', lf + 1)) {
        const int next = lf + 1;
        if (next < received.size() && received.at(next) == '\n')
            return next + 1;
        if (next + 1 < received.size() && received.at(next) == '\r' &&
            received.at(next + 1) == '\n')
            return next + 2;
    }
    return -1;
}

} // namespace

KHttpRequestHead KHttpRequestHead::parse(const QByteArray& received)
{
    KHttpRequestHead head;
    int start = 0;
    while (start < received.size() && (received.at(start) == '\r' || received.at(start) == '\n'))
        ++start;
    const int end = headEnd(received, start);
    if (end < 0) {
        head.m_state = received.size() > kMaxSize ? TooLarge : Incomplete;
        return head;
    }
    if (end > kMaxSize) {
        head.m_state = TooLarge;
        return head;
    }
    head.m_state = Complete;
    head.readLines(received.mid(start, end - start));
    return head;
}

void KHttpRequestHead::readLines(const QByteArray& head)
{
    QList<QByteArray> lines = head.split('\n');
    for (QByteArray& line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
    }
    const QList<QByteArray> requestLine = lines.value(0).split(' ');
    if (requestLine.size() == 3) {
        m_method = requestLine[0];
        m_target = requestLine[1];
        m_wellFormed =
            !m_method.isEmpty() && m_target.startsWith('/') && requestLine[2].startsWith("HTTP/1.");
    }
    for (int i = 1; i < lines.size() && !m_announcesBody; ++i) {
        const QByteArray name = lines[i].left(lines[i].indexOf(':')).trimmed().toLower();
        m_announcesBody = name == "content-length" || name == "transfer-encoding";
    }
}
