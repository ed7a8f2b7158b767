#ifndef KINSTANCEMESSAGE_H
#define KINSTANCEMESSAGE_H

#include <QByteArray>
#include <QStringList>

#include <optional>

// The one line a later start of the host sends the running one
// (KSingleInstance): a JSON object {"open": [arguments]}. Bytes in, the
// arguments out; nothing else is a message.
class KInstanceMessage
{
public:
    // The limit on one message, its line feed included; a longer one is
    // dropped.
    static constexpr int kMaxSize = 1024 * 1024;

    static QByteArray encode(const QStringList& arguments);
    // The arguments of one line (its line feed optional), or nothing for a
    // line that is no such message: not a JSON object, no "open" list, an
    // argument that is not a string, or too long.
    static std::optional<QStringList> decode(const QByteArray& line);
};

#endif // KINSTANCEMESSAGE_H
