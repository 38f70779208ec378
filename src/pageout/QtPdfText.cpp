// Copyable Japanese in PDF files. The PDF writer names each glyph by the first code point the
// font shows with it, and a Japanese font shares the glyph of an ideograph with the radical
// of the same shape, which comes first: 金 would copy, search and read back as the radical ⾦.
// The finished file's glyph-to-text maps are written again with the ideographs, and the
// positions of the objects after them moved on by the change.
#include <QHash>
#include <QList>
#include <QRawFont>
#include <QRegularExpression>
#include "pageout/QtPageSurface.h"

namespace {

bool isRadical(uint cp) { return cp >= 0x2E80 && cp <= 0x2FDF; }

// The ideograph that a radical stands for, 0 when there is none.
uint ideographFor(uint radical)
{
    static const QHash<uint, uint> map = [] {
        QHash<uint, uint> m;
        // The Kangxi radicals decompose to their ideographs.
        for (uint cp = 0x2F00; cp <= 0x2FD5; ++cp) {
            const QString n = QString(QChar(char16_t(cp))).normalized(QString::NormalizationForm_KC);
            if (n.size() == 1 && n.at(0).unicode() >= 0x3400) m.insert(cp, n.at(0).unicode());
        }
        // The supplement has no decompositions: the ideograph that shares the radical's glyph
        // in the page fonts is the one meant.
        QString unified;
        for (uint cp = 0x4E00; cp <= 0x9FFF; ++cp) unified += QChar(char16_t(cp));
        for (const char* family : {"IPAMincho", "IPAGothic", "IPAexMincho", "IPAexGothic"}) {
            const QRawFont raw = QRawFont::fromFont(QFont(QString::fromLatin1(family)));
            if (!raw.isValid()) continue;
            const QList<quint32> glyphs = raw.glyphIndexesForString(unified);
            QHash<quint32, uint> byGlyph;
            for (qsizetype i = 0; i < glyphs.size(); ++i)
                if (glyphs[i] != 0 && !byGlyph.contains(glyphs[i])) byGlyph.insert(glyphs[i], 0x4E00 + uint(i));
            for (uint cp = 0x2E80; cp <= 0x2EFF; ++cp) {
                if (m.contains(cp)) continue;
                const QList<quint32> g = raw.glyphIndexesForString(QString(QChar(char16_t(cp))));
                if (!g.isEmpty() && g[0] != 0 && byGlyph.contains(g[0])) m.insert(cp, byGlyph.value(g[0]));
            }
        }
        return m;
    }();
    return map.value(radical);
}

// The "<hex>" tokens of a line, "[" and "]" kept as tokens of their own.
QList<QByteArray> tokens(QByteArrayView line)
{
    QList<QByteArray> out;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '[' || c == ']') out << QByteArray(1, c);
        if (c != '<') continue;
        const qsizetype close = line.sliced(i).indexOf('>');
        if (close < 0) break;
        out << line.sliced(i + 1, close - 1).toByteArray();
        i += close;
    }
    return out;
}

// The hex of a destination one further on: the last two bytes count up.
QByteArray nextHex(const QByteArray& hex)
{
    if (hex.size() < 4) return hex;
    bool ok = false;
    const uint tail = hex.right(4).toUInt(&ok, 16);
    return hex.left(hex.size() - 4) + QByteArray::number((tail + 1) & 0xFFFF, 16).toUpper().rightJustified(4, '0');
}

// The mappings of a cmap body as single ones, with the radicals put right. Empty when nothing
// needed putting right.
QByteArray rebuiltMappings(QByteArrayView body)
{
    QList<QPair<QByteArray, QByteArray>> maps;   // source glyph hex, destination hex
    int section = 0;                              // 2 ranges, 1 single mappings
    bool changed = false;
    for (QByteArrayView line : QByteArray(body.toByteArray()).split('\n')) {
        if (line.endsWith("beginbfrange")) section = 2;
        else if (line.endsWith("beginbfchar")) section = 1;
        else if (line.startsWith("endbf")) section = 0;
        if (section == 0 || line.endsWith("begin" + QByteArray(section == 2 ? "bfrange" : "bfchar"))) continue;
        const QList<QByteArray> t = tokens(line);
        if (section == 1 && t.size() >= 2) {
            maps << qMakePair(t[0], t[1]);
        } else if (section == 2 && t.size() >= 3) {
            bool ok1 = false, ok2 = false;
            const uint from = t[0].toUInt(&ok1, 16);
            const uint to = t[1].toUInt(&ok2, 16);
            if (!ok1 || !ok2 || to < from) return {};
            const bool list = t[2] == "[";
            QByteArray dst = list ? QByteArray() : t[2];
            for (uint g = from; g <= to; ++g) {
                const QByteArray src = QByteArray::number(g, 16).toUpper().rightJustified(t[0].size(), '0');
                if (list) {
                    const qsizetype k = 3 + (g - from);
                    if (k >= t.size() || t[k] == "]") return {};
                    maps << qMakePair(src, t[k]);
                } else {
                    maps << qMakePair(src, dst);
                    dst = nextHex(dst);
                }
            }
        }
    }
    for (auto& m : maps) {
        bool ok = false;
        const uint cp = m.second.size() == 4 ? m.second.toUInt(&ok, 16) : 0;
        const uint to = ok && isRadical(cp) ? ideographFor(cp) : 0;
        if (to != 0) {
            m.second = QByteArray::number(to, 16).toUpper().rightJustified(4, '0');
            changed = true;
        }
    }
    if (!changed) return {};
    QByteArray out;
    for (qsizetype i = 0; i < maps.size(); i += 100) {
        const qsizetype n = qMin<qsizetype>(100, maps.size() - i);
        out += QByteArray::number(n) + " beginbfchar\n";
        for (qsizetype k = i; k < i + n; ++k) out += '<' + maps[k].first + "> <" + maps[k].second + ">\n";
        out += "endbfchar\n";
    }
    return out;
}

struct Edit {
    qsizetype from, to;   // bytes replaced
    QByteArray with;
};

// The edit of the stream object that holds the cmap at `at`, when it needs one.
bool cmapEdit(const QByteArray& pdf, qsizetype at, Edit* edit)
{
    const QByteArray lengthKey = "<< /Length ";
    const qsizetype streamKey = pdf.lastIndexOf("stream\n", at);
    const qsizetype dict = pdf.lastIndexOf(lengthKey, at);
    const qsizetype bodyFrom = pdf.indexOf("endcodespacerange\n", at);
    const qsizetype bodyTo = pdf.indexOf("endcmap", at);
    const qsizetype end = pdf.indexOf("endstream", at);
    if (streamKey < 0 || dict < 0 || dict > streamKey || bodyFrom < 0 || bodyTo < bodyFrom || end < bodyTo) return false;
    // Only the plain form: a direct length, no filter.
    static const QRegularExpression plain(QStringLiteral("^<< /Length (\\d+) >>\\n$"));
    const QRegularExpressionMatch m = plain.match(QString::fromLatin1(pdf.mid(dict, streamKey - dict)));
    if (!m.hasMatch()) return false;
    const qsizetype length = m.captured(1).toLongLong();
    const qsizetype contentFrom = streamKey + 7;
    if (contentFrom + length > end) return false;
    const qsizetype mapsFrom = bodyFrom + 18;
    const QByteArray maps = rebuiltMappings(QByteArrayView(pdf).sliced(mapsFrom, bodyTo - mapsFrom));
    if (maps.isEmpty()) return false;
    const QByteArray content = pdf.mid(contentFrom, mapsFrom - contentFrom) + maps
                               + pdf.mid(bodyTo, contentFrom + length - bodyTo);
    edit->from = dict;
    edit->to = contentFrom + length;
    edit->with = lengthKey + QByteArray::number(content.size()) + " >>\nstream\n" + content;
    return true;
}

}  // namespace

void fixPdfToUnicode(QByteArray& pdf)
{
    QList<Edit> edits;
    for (qsizetype at = pdf.indexOf("begincmap"); at >= 0; at = pdf.indexOf("begincmap", at + 1)) {
        Edit e;
        if (cmapEdit(pdf, at, &e)) edits << e;
    }
    if (edits.isEmpty()) return;
    // The cross-reference table names every object's position; those behind an edit move.
    const qsizetype startKey = pdf.lastIndexOf("startxref");
    bool ok = false;
    const qsizetype xref = startKey < 0 ? -1 : pdf.mid(startKey + 9, 24).trimmed().split('\n').value(0).trimmed().toLongLong(&ok);
    if (!ok || xref <= edits.last().to || !pdf.mid(xref).startsWith("xref\n")) return;
    auto moved = [&](qsizetype offset) {
        qsizetype shift = 0;
        for (const Edit& e : edits)
            if (offset >= e.to) shift += e.with.size() - (e.to - e.from);
        return offset + shift;
    };
    QByteArray table = pdf.mid(xref, startKey - xref);
    QList<QByteArray> lines = table.split('\n');
    for (QByteArray& l : lines) {
        if (l.size() < 18 || !l.contains(" n")) continue;
        const qsizetype offset = l.left(10).toLongLong(&ok);
        if (ok) l.replace(0, 10, QByteArray::number(moved(offset)).rightJustified(10, '0'));
    }
    QByteArray out;
    qsizetype at = 0;
    for (const Edit& e : edits) {
        out += pdf.mid(at, e.from - at) + e.with;
        at = e.to;
    }
    out += pdf.mid(at, xref - at);
    out += lines.join('\n');
    out += "startxref\n" + QByteArray::number(moved(xref)) + " \n%%EOF\n";
    pdf = out;
}
