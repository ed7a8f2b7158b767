#include "ksimulatorstateeditor.h"

#include "kdeskhiveclient.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPainter>
#include <QSaveFile>

namespace {

const QString kLogined = QStringLiteral("IsLogined");
const QString kName = QStringLiteral("Name");
const QString kId = QStringLiteral("Id");
const QString kAvatar = QStringLiteral("UserAvatarImagePath");
const QString kCompany = QStringLiteral("IsCompanyAccount");
const QString kEmit = QStringLiteral("emit");
const QString kSerial = QStringLiteral("emitSerial");

QString initials(const QString& name)
{
    QString letters;
    const QStringList words = name.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& word : words) {
        if (letters.size() < 2)
            letters += word.at(0).toUpper();
    }
    return letters.isEmpty() ? QStringLiteral("?") : letters;
}

} // namespace

KSimulatorStateEditor::KSimulatorStateEditor(const QString& path)
    : m_path(path)
{}

QJsonObject KSimulatorStateEditor::read() const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return QJsonObject();
    return QJsonDocument::fromJson(file.readAll()).object();
}

bool KSimulatorStateEditor::setSignedIn(bool signedIn)
{
    QJsonObject state = read();
    state[kLogined] = signedIn;
    if (signedIn && state.value(kName).toString().isEmpty()) {
        state[kName] = QStringLiteral("Demo User");
        state[kId] = QStringLiteral("demo-0001");
        if (state.value(kAvatar).toString().isEmpty())
            state[kAvatar] = KDeskhiveClient::demoAvatarPath();
    }
    return write(state);
}

bool KSimulatorStateEditor::setCompanyAccount(bool company)
{
    QJsonObject state = read();
    state[kCompany] = company;
    return write(state);
}

bool KSimulatorStateEditor::setAvatar(const QString& imagePath)
{
    QJsonObject state = read();
    state[kAvatar] = imagePath;
    return write(state);
}

bool KSimulatorStateEditor::raise(const QString& signal)
{
    return write(read(), signal);
}

QString KSimulatorStateEditor::makeInitialsAvatar(const QString& tag, const QString& name,
                                                  const QColor& colour) const
{
    QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(image.rect());
    QFont font = painter.font();
    font.setPixelSize(26);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(image.rect(), Qt::AlignCenter, initials(name));
    painter.end();
    const QString path = QFileInfo(m_path).dir().filePath(QStringLiteral("avatar-%1.png").arg(tag));
    return image.save(path) ? path : QString();
}

bool KSimulatorStateEditor::write(QJsonObject state, const QString& signal)
{
    if (signal.isEmpty()) {
        state.remove(kEmit);
    } else {
        state[kEmit] = QJsonArray{signal};
        state[kSerial] = state.value(kSerial).toInt() + 1;
    }
    // Replaced whole, so the simulator never reads half a file.
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly)) {
        m_error = file.errorString();
        return false;
    }
    file.write(QJsonDocument(state).toJson());
    if (!file.commit()) {
        m_error = file.errorString();
        return false;
    }
    m_error.clear();
    return true;
}
