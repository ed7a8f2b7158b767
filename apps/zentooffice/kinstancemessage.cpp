#include "kinstancemessage.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString kOpen = QStringLiteral("open");

} // namespace

QByteArray KInstanceMessage::encode(const QStringList& arguments)
{
    const QJsonObject message{{kOpen, QJsonArray::fromStringList(arguments)}};
    return QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<QStringList> KInstanceMessage::decode(const QByteArray& line)
{
    if (line.size() > kMaxSize)
        return std::nullopt;
    const QJsonValue open = QJsonDocument::fromJson(line).object().value(kOpen);
    if (!open.isArray())
        return std::nullopt;
    QStringList arguments;
    const QJsonArray list = open.toArray();
    for (const QJsonValue& argument : list) {
        if (!argument.isString())
            return std::nullopt;
        arguments << argument.toString();
    }
    return arguments;
}
