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

#include <json/reader.h>
#include <json/value.h>
#include <json/writer.h>

#include <cstdint>
#include <exception>
#include <memory>

namespace {

const char kLogined[] = "IsLogined";
const char kName[] = "Name";
const char kId[] = "Id";
const char kAvatar[] = "UserAvatarImagePath";
const char kCompany[] = "IsCompanyAccount";
const char kEmit[] = "emit";
const char kSerial[] = "emitSerial";

// The simulator reads no larger state file.
constexpr qint64 kMaxStateFileSize = qint64(1024) * 1024;
const QByteArray kUtf8Bom("\xEF\xBB\xBF");

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

// As the simulator reads it: jsoncpp's defaults, which allow comments and
// trailing commas. False, with the reader's complaint, when it cannot.
bool parseState(const QByteArray& text, Json::Value* root, QString* error)
{
    std::string errors;
    bool parsed = false;
    try {
        const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
        parsed = reader->parse(text.constData(), text.constData() + text.size(), root, &errors);
    } catch (const std::exception& e) {
        // The reader gives up on very deep nesting by throwing.
        errors = e.what();
    }
    if (!parsed)
        *error = QString::fromStdString(errors).simplified();
    return parsed;
}

QByteArray jsonText(const QJsonValue& value)
{
    // A one-element array is the simplest document that holds any value.
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

QByteArray jsonText(bool value)
{
    return value ? QByteArray("true") : QByteArray("false");
}

bool isNonEmptyString(const Json::Value& value)
{
    return value.isString() && !value.asString().empty();
}

} // namespace

// The state file's text, changed member by member: a member's value is
// replaced where it stands, a missing member is added after the last one
// (on a line of its own where the members have theirs).
class KSimulatorStateEditor::Text
{
public:
    // False, with the reason, unless the text is an object as the simulator
    // reads it.
    bool load(const QByteArray& text, QString* error)
    {
        m_text = text;
        if (m_text.trimmed().isEmpty())
            m_text = "{\n}\n";
        // The reader skips a byte order mark and counts from after it.
        m_base = m_text.startsWith(kUtf8Bom) ? kUtf8Bom.size() : 0;
        QString complaint;
        if (!parseState(m_text, &m_root, &complaint)) {
            *error = tr("it is not JSON the simulator reads, so it was left as it is (%1)")
                         .arg(complaint);
            return false;
        }
        if (!m_root.isObject()) {
            *error = tr("it does not hold a JSON object, so it was left as it is");
            return false;
        }
        return true;
    }

    const Json::Value& root() const { return m_root; }
    QByteArray text() const { return m_text; }

    void set(const char* key, const QByteArray& value)
    {
        if (m_root.isMember(key)) {
            const Json::Value& old = m_root[key];
            m_text.replace(int(m_base + old.getOffsetStart()),
                           int(old.getOffsetLimit() - old.getOffsetStart()), value);
        } else {
            add(key, value);
        }
        QString unused;
        parseState(m_text, &m_root, &unused);
    }

private:
    void add(const char* key, const QByteArray& value)
    {
        const QByteArray member = jsonText(QString::fromUtf8(key)) + ": " + value;
        const int open = int(m_base + m_root.getOffsetStart());
        const Json::Value* first = nullptr;
        const Json::Value* last = nullptr;
        for (auto it = m_root.begin(); it != m_root.end(); ++it) {
            if (!first || it->getOffsetStart() < first->getOffsetStart())
                first = &*it;
            if (!last || it->getOffsetLimit() > last->getOffsetLimit())
                last = &*it;
        }
        if (!last) {
            // "{}" stays on one line, "{\n}" gets a line for the member.
            const int close = int(m_base + m_root.getOffsetLimit()) - 1;
            const bool lines = m_text.mid(open, close - open).contains('\n');
            m_text.insert(open + 1, lines ? "\n    " + member : member);
            return;
        }
        const int firstStart = int(m_base + first->getOffsetStart());
        const int lastEnd = int(m_base + last->getOffsetLimit());
        if (!m_text.mid(open, firstStart - open).contains('\n')) {
            m_text.insert(lastEnd, ", " + member);
            return;
        }
        // As indented as the line the last member starts on.
        const int lineStart = m_text.lastIndexOf('\n', int(m_base + last->getOffsetStart())) + 1;
        int indentEnd = lineStart;
        while (indentEnd < m_text.size() && (m_text[indentEnd] == ' ' || m_text[indentEnd] == '\t'))
            ++indentEnd;
        m_text.insert(lastEnd, ",\n" + m_text.mid(lineStart, indentEnd - lineStart) + member);
    }

    QByteArray m_text;
    Json::Value m_root;
    qint64 m_base = 0;
};

KSimulatorStateEditor::KSimulatorStateEditor(const QString& path)
    : m_path(path)
{}

QJsonObject KSimulatorStateEditor::read() const
{
    const QFileInfo info(m_path);
    QFile file(m_path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        return QJsonObject();
    Text text;
    QString error;
    if (!text.load(file.read(kMaxStateFileSize + 1), &error))
        return QJsonObject();
    Json::StreamWriterBuilder writer;
    writer["indentation"] = "";
    const std::string json = Json::writeString(writer, text.root());
    return QJsonDocument::fromJson(QByteArray::fromStdString(json)).object();
}

bool KSimulatorStateEditor::setSignedIn(bool signedIn)
{
    return edit([signedIn](Text& state) {
        state.set(kLogined, jsonText(signedIn));
        if (!signedIn || isNonEmptyString(state.root()[kName]))
            return;
        state.set(kName, jsonText(QStringLiteral("Demo User")));
        state.set(kId, jsonText(QStringLiteral("demo-0001")));
        if (!isNonEmptyString(state.root()[kAvatar]))
            state.set(kAvatar, jsonText(KDeskhiveClient::demoAvatarPath()));
    });
}

bool KSimulatorStateEditor::setCompanyAccount(bool company)
{
    return edit([company](Text& state) { state.set(kCompany, jsonText(company)); });
}

bool KSimulatorStateEditor::setAvatar(const QString& imagePath)
{
    return edit([&imagePath](Text& state) { state.set(kAvatar, jsonText(imagePath)); });
}

bool KSimulatorStateEditor::raise(const QString& signal)
{
    return edit([](Text&) {}, signal);
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

bool KSimulatorStateEditor::edit(const std::function<void(Text&)>& changes, const QString& signal)
{
    // Never opened unless it is a regular file: a pipe would block here.
    const QFileInfo info(m_path);
    QByteArray content;
    if (info.exists()) {
        QFile file(m_path);
        if (!info.isFile()) {
            m_error = tr("it is not a regular file");
            return false;
        }
        if (!file.open(QIODevice::ReadOnly)) {
            m_error = file.errorString();
            return false;
        }
        content = file.read(kMaxStateFileSize + 1);
        if (content.size() > kMaxStateFileSize) {
            m_error = tr("it is larger than a state file can be, so it was left as it is");
            return false;
        }
    }
    Text state;
    if (!state.load(content, &m_error))
        return false;
    changes(state);
    if (!signal.isEmpty()) {
        // Exact for any 64-bit count, however it got there.
        const Json::Value serial = state.root()[kSerial];
        state.set(kSerial, serial.isUInt64() && serial.asUInt64() < UINT64_MAX
                               ? QByteArray::number(quint64(serial.asUInt64()) + 1)
                               : QByteArray("1"));
        state.set(kEmit, jsonText(QJsonArray{signal}));
    } else if (state.root().isMember(kEmit) && !state.root()[kEmit].empty()) {
        state.set(kEmit, "[]");
    }

    // Replaced whole, so the simulator never reads half a file.
    QSaveFile file(m_path);
    const QByteArray text = state.text();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        m_error = file.errorString();
        return false;
    }
    m_error.clear();
    return true;
}
