#include "qcommfiletypes.h"

#include "qcommstores.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

struct SupportLists
{
    QStringList zento;
    QStringList tabix;
    QStringList slidex;
    QStringList pdf;
};

// The lists a suffix is found in, as bits, in the order the lookups ask them.
constexpr uint ZentoList = 1;
constexpr uint TabixList = 2;
constexpr uint SlidexList = 4;
constexpr uint PdfList = 8;

QStringList readList(const char* key, const char* builtin)
{
    QString text = QComm::readNimboRegValue(QLatin1String(key), QString());
    if (text.isEmpty())
        text = QLatin1String(builtin);
    return text.split(QLatin1Char(';'), Qt::KeepEmptyParts);
}

// The lists as a consumer sees them on its first call.
SupportLists currentLists()
{
    return {QComm::getZentoOpenAllSupportTypeList(), QComm::getTabixOpenAllSupportTypeList(),
            QComm::getSlidexOpenAllSupportTypeList(), QComm::getPdfOpenAllSupportType()};
}

uint listsHolding(const SupportLists& lists, const QString& suffix)
{
    const auto bit = [&](const QStringList& list, uint value) {
        return list.contains(suffix, Qt::CaseInsensitive) ? value : 0u;
    };
    return bit(lists.zento, ZentoList) | bit(lists.tabix, TabixList) |
           bit(lists.slidex, SlidexList) | bit(lists.pdf, PdfList);
}

// One consumer's copy of the lists with an index over it. A folder listing
// asks for every row, and comparing with each entry of four lists costs a
// dozen set look-ups; the index holds every entry case-folded once, so a
// look-up folds the suffix and probes a small hash table. QString compares
// without regard to case by folding each code unit, and so does the index;
// a suffix with surrogates, which needs their pairing, is compared with the
// lists themselves.
class SuffixIndex
{
public:
    explicit SuffixIndex(const SupportLists& lists);

    // The bits of the lists holding suffix.
    Q_ALWAYS_INLINE uint listsHolding(const QString& suffix) const
    {
        // Equal ignoring case means equal in length.
        const int length = suffix.size();
        if (length > m_longest)
            return 0;
        // Suffixes are nearly always short and ASCII: those are folded a
        // word at a time, without a loop.
        if (length > kWordKeyUnits)
            return listsHoldingGeneral(suffix);
        Key key = keyOf(suffix.constData(), length);
        if ((key.first | key.last) & (0xff80 * kLanes))
            return listsHoldingGeneral(suffix);
        key.first = foldAscii(key.first);
        key.last = foldAscii(key.last);
        for (uint at = key.hash(length) & m_mask;; at = (at + 1) & m_mask) {
            const Slot& slot = m_slots[at];
            if (!slot.lists || (slot.key == key && slot.length == length))
                return slot.lists;
        }
    }

private:
    // Four units to a word; the key holds the first four units of a text and
    // its last four, so for up to eight units the key and the length are the
    // text.
    static constexpr int kWordKeyUnits = 8;
    static constexpr quint64 kLanes = 0x0001000100010001ull;
    struct Key
    {
        quint64 first = 0;
        quint64 last = 0;

        uint hash(int length) const
        {
            return uint(((first ^ last << 1 ^ quint64(length)) * 0x9e3779b97f4a7c15ull) >> 32);
        }
        bool operator==(const Key& other) const
        {
            return first == other.first && last == other.last;
        }
    };

    struct Slot
    {
        Key key;
        int length = 0;
        uint lists = 0; // 0: empty
        int rest = 0;   // where a longer entry's folded units start in m_long
    };

    static Key keyOf(const QChar* chars, int length)
    {
        Key key;
        if (length >= 4) {
            std::memcpy(&key.first, chars, sizeof key.first);
            std::memcpy(&key.last, chars + length - 4, sizeof key.last);
        } else {
            for (int i = length; i-- > 0;)
                key.first = key.first << 16 | chars[i].unicode();
        }
        return key;
    }
    // Folds four ASCII units at once: 0x20 is added to the units from 'A'
    // to 'Z', found by where adding to each unit crosses 0x80.
    static quint64 foldAscii(quint64 units)
    {
        const quint64 fromA = units + (0x80 - u'A') * kLanes;
        const quint64 beyondZ = units + (0x80 - u'Z' - 1) * kLanes;
        return units | (fromA & ~beyondZ & 0x80 * kLanes) >> 2;
    }
    static QChar fold(QChar c) { return QChar(ushort(QChar::toCaseFolded(uint(c.unicode())))); }

    // The slot of the folded text, or the empty one where it would go.
    int slotOf(const QChar* folded, int length) const;
    // Folds chars into folded; false at a surrogate.
    using Folded = QVarLengthArray<QChar, 32>;
    static bool foldAll(const QChar* chars, int length, Folded& folded);
    Q_NEVER_INLINE uint listsHoldingGeneral(const QString& suffix) const;
    void insert(const QString& entry, uint list);

    SupportLists m_lists;
    std::vector<Slot> m_slots; // open addressing, a power of two of them
    std::vector<QChar> m_long; // entries longer than a key, folded, back to back
    uint m_mask = 0;
    int m_longest = 0;
};

SuffixIndex::SuffixIndex(const SupportLists& lists)
    : m_lists(lists)
{
    const int entries =
        lists.zento.size() + lists.tabix.size() + lists.slidex.size() + lists.pdf.size();
    // At most an eighth full: a miss mostly ends at its first slot.
    size_t size = 16;
    while (size < size_t(entries) * 8)
        size *= 2;
    m_slots.resize(size);
    m_mask = uint(size - 1);
    const auto add = [this](const QStringList& list, uint bit) {
        for (const QString& entry : list)
            insert(entry, bit);
    };
    add(lists.zento, ZentoList);
    add(lists.tabix, TabixList);
    add(lists.slidex, SlidexList);
    add(lists.pdf, PdfList);
}

bool SuffixIndex::foldAll(const QChar* chars, int length, Folded& folded)
{
    folded.clear();
    for (int i = 0; i < length; ++i) {
        if (chars[i].isSurrogate())
            return false;
        folded.push_back(fold(chars[i]));
    }
    return true;
}

int SuffixIndex::slotOf(const QChar* folded, int length) const
{
    const Key key = keyOf(folded, length);
    for (uint at = key.hash(length) & m_mask;; at = (at + 1) & m_mask) {
        const Slot& slot = m_slots[at];
        if (!slot.lists)
            return int(at);
        if (slot.key == key && slot.length == length &&
            (length <= kWordKeyUnits ||
             std::equal(folded, folded + length, m_long.begin() + slot.rest)))
            return int(at);
    }
}

uint SuffixIndex::listsHoldingGeneral(const QString& suffix) const
{
    Folded folded;
    if (!foldAll(suffix.constData(), suffix.size(), folded))
        return ::listsHolding(m_lists, suffix);
    return m_slots[size_t(slotOf(folded.data(), suffix.size()))].lists;
}

void SuffixIndex::insert(const QString& entry, uint list)
{
    const int length = entry.size();
    m_longest = std::max(m_longest, length);
    Folded folded;
    // Only a suffix with surrogates can equal such an entry; the lists answer
    // those.
    if (!foldAll(entry.constData(), length, folded))
        return;
    Slot& slot = m_slots[size_t(slotOf(folded.data(), length))];
    if (!slot.lists) {
        slot.key = keyOf(folded.data(), length);
        slot.length = length;
        if (length > kWordKeyUnits) {
            slot.rest = int(m_long.size());
            m_long.insert(m_long.end(), folded.begin(), folded.end());
        }
    }
    slot.lists |= list;
}

// A consumer's own copy of the lists, with its index. Out of line, so the
// consumers' look-ups stay short.
Q_NEVER_INLINE SuffixIndex indexOfCurrentLists()
{
    return SuffixIndex(currentLists());
}

bool isType(const QString& appType, const char* name)
{
    return appType.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

} // namespace

namespace QComm {

QStringList getZentoOpenAllSupportTypeList()
{
    static const QStringList list =
        readList("usercenter/allsupporttype/zentoopen",
                 "zento;zentt;doc;docx;dot;rtf;txt;htm;html;mht;mhtml;uof;xml;docm;zentos");
    return list;
}

QStringList getTabixOpenAllSupportTypeList()
{
    static const QStringList list =
        readList("usercenter/allsupporttype/tabixopen",
                 "tabix;tabixt;xls;xlsx;xlsm;xlsb;xlam;xltx;xltm;xls;xlt;xla;xlw;odc;uxdc;txt;xml;"
                 "htm;html;mht;mhtml;dbf;uof;prn;csv;tabixs;mdb;accdb;dqy;dbc;udl;dsn;odc;db;slk;"
                 "tabixx;xlk;dif");
    return list;
}

QStringList getSlidexOpenAllSupportTypeList()
{
    static const QStringList list =
        readList("usercenter/allsupporttype/slidexopen",
                 "deckr;deckrt;pptx;ppt;pptm;ppsx;pps;ppsm;potx;pot;potm;wpd;uof;deckrs");
    return list;
}

QStringList getPdfOpenAllSupportType()
{
    return readList("usercenter/allsupporttype/pdfopen", "pdf;epub;mobi");
}

void getZentoSupportList(QStringList& zento, QStringList& slidex, QStringList& tabix,
                         QStringList& pdf)
{
    static const SupportLists lists = currentLists();
    zento = lists.zento;
    slidex = lists.slidex;
    tabix = lists.tabix;
    pdf = lists.pdf;
}

QString getAppTypeBySuffix(const QString& suffix)
{
    static const SuffixIndex index = indexOfCurrentLists();
    const uint lists = index.listsHolding(suffix);
    // Extensions several applications open go to the first in this order.
    if (lists & ZentoList)
        return QStringLiteral("zento");
    if (lists & TabixList)
        return QStringLiteral("tabix");
    if (lists & SlidexList)
        return QStringLiteral("slidex");
    if (lists & PdfList)
        return QStringLiteral("pdf");
    return QString();
}

bool checkIsZentoSupport(const QString& appType, const QString& suffix)
{
    static const SuffixIndex index = indexOfCurrentLists();
    const bool any = isType(appType, "nimbo");
    const uint wanted = ((any || isType(appType, "zento")) ? ZentoList : 0u) |
                        ((any || isType(appType, "tabix")) ? TabixList : 0u) |
                        ((any || isType(appType, "slidex")) ? SlidexList : 0u) |
                        ((any || isType(appType, "pdf")) ? PdfList : 0u);
    return wanted && (index.listsHolding(suffix) & wanted);
}

bool checkIsVexSupport(const QString& suffix)
{
    static const SuffixIndex index = indexOfCurrentLists();
    return index.listsHolding(suffix) != 0;
}

} // namespace QComm
