#pragma once
// Reads an .xlsx back the plain way: unzip its XML and look at the cells.
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

inline QString zipEntry(const QString& file, const QString& entry)
{
    QProcess p;
    p.start(QStringLiteral("unzip"), {QStringLiteral("-p"), file, entry});
    p.waitForFinished(30000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

// The first sheet: every cell's shown value (shared strings resolved) and number format.
class SheetXml {
public:
    explicit SheetXml(const QString& file)
    {
        const QString sheet = zipEntry(file, QStringLiteral("xl/worksheets/sheet1.xml"));
        const QString shared = zipEntry(file, QStringLiteral("xl/sharedStrings.xml"));
        const QString styles = zipEntry(file, QStringLiteral("xl/styles.xml"));
        ok = !sheet.isEmpty();
        QStringList strings;
        static const QRegularExpression si(QStringLiteral("<si><t[^>]*>(.*?)</t></si>"));
        for (auto m = si.globalMatch(shared); m.hasNext();) strings << unescape(m.next().captured(1));
        QMap<QString, QString> numFmts;
        static const QRegularExpression fmt(QStringLiteral("<numFmt numFmtId=\"(\\d+)\" formatCode=\"([^\"]*)\""));
        for (auto m = fmt.globalMatch(styles); m.hasNext();) {
            const auto x = m.next();
            numFmts[x.captured(1)] = unescape(x.captured(2));
        }
        QStringList xfFormats;
        const qsizetype cellXfs = styles.indexOf(QStringLiteral("<cellXfs"));
        static const QRegularExpression xf(QStringLiteral("<xf numFmtId=\"(\\d+)\""));
        for (auto m = xf.globalMatch(styles.mid(cellXfs)); m.hasNext();) xfFormats << numFmts.value(m.next().captured(1));
        static const QRegularExpression c(QStringLiteral("<c r=\"([A-Z]+\\d+)\"([^>]*?)(/>|>(.*?)</c>)"));
        for (auto m = c.globalMatch(sheet); m.hasNext();) {
            const auto x = m.next();
            const QString attrs = x.captured(2);
            static const QRegularExpression v(QStringLiteral("<v>(.*?)</v>"));
            const QString value = v.match(x.captured(4)).captured(1);
            const bool isShared = attrs.contains(QStringLiteral("t=\"s\""));
            cells_[x.captured(1)] = isShared ? strings.value(value.toInt()) : value;
            static const QRegularExpression s(QStringLiteral("s=\"(\\d+)\""));
            const auto sm = s.match(attrs);
            if (sm.hasMatch()) formats_[x.captured(1)] = xfFormats.value(sm.captured(1).toInt());
        }
    }
    bool ok = false;
    QString cell(const QString& ref) const { return cells_.value(ref); }
    bool has(const QString& ref) const { return cells_.contains(ref); }
    QString format(const QString& ref) const { return formats_.value(ref); }
    QStringList refs() const { return cells_.keys(); }

private:
    static QString unescape(QString s)
    {
        return s.replace(QStringLiteral("&lt;"), QStringLiteral("<")).replace(QStringLiteral("&gt;"), QStringLiteral(">"))
            .replace(QStringLiteral("&quot;"), QStringLiteral("\"")).replace(QStringLiteral("&amp;"), QStringLiteral("&"));
    }
    QMap<QString, QString> cells_, formats_;
};
