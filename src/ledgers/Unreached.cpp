#include "ledgers/Unreached.h"
#include <algorithm>
#include <QMap>
#include "ledgers/LedgerRun.h"

namespace {

const QString kProducts = QStringLiteral("商品台帳");
const QString kCustomers = QStringLiteral("得意先台帳");
const QString kSuppliers = QStringLiteral("仕入先台帳");

// Slips of one report line at most; the rest are counted.
constexpr int kShownSlips = 40;

QString officeMissing(const QVariant& office)
{
    return QStringLiteral("営業所 %1 が営業所マスターにありません").arg(office.toString());
}

QString monthOutside(const QVariant& getudo)
{
    return QStringLiteral("締め月 %1 が 1 から 13 ではありません").arg(getudo.isNull() ? QStringLiteral("（なし）") : getudo.toString());
}

// The reason of the customer ledger's query for a line of another office that exists.
constexpr int kOtherOffice = 6;

// Reads (Dno, EigCode, Eda, why, detail) rows into `out`; `reason` turns a row into words.
void collect(LedgerRun& run, const QString& ledger, const QString& slip, const QString& sql, const QVariantList& binds,
             const std::function<QString(int why, const QVariant& detail, const QVariant& office)>& reason,
             QList<UnreachedLine>& out)
{
    QSqlQuery& q = run.query(sql, binds);
    while (q.next()) {
        const int why = q.value(3).toInt();
        out << UnreachedLine{ledger, slip, q.value(0).toLongLong(), static_cast<short>(q.value(1).toInt()),
                             q.value(2).toInt(), reason(why, q.value(4), q.value(1)),
                             !(ledger == kCustomers && why == kOtherOffice)};
    }
}

// The product ledger takes a line by the calendar month of its date.
void productLines(LedgerRun& run, const QString& table, const QString& slip, QList<UnreachedLine>& out)
{
    const QString month = monthOf(QStringLiteral("Hizuke"));
    collect(run, kProducts, slip,
            QStringLiteral("SELECT Dno, EigCode, Eda, CASE WHEN EigCode NOT IN (SELECT Code FROM Eig) THEN 1 ELSE 2 END, "
                           "Hizuke FROM %1 WHERE ThiFlag=? AND (COALESCE(%2, 0) NOT BETWEEN 1 AND 12 "
                           "OR EigCode NOT IN (SELECT Code FROM Eig)) ORDER BY EigCode, Dno, Eda")
                .arg(table, month),
            {run.flag},
            [](int why, const QVariant& date, const QVariant& office) {
                if (why == 1) return officeMissing(office);
                return QStringLiteral("日付 %1 が日付ではありません").arg(date.isNull() ? QStringLiteral("（なし）") : date.toString());
            },
            out);
}

// The customer ledger takes the session office's lines of customers in the masters, by
// closing month, through their slip heads and by the customer's tax mode.
void customerLines(LedgerRun& run, QList<UnreachedLine>& out)
{
    collect(run, kCustomers, QStringLiteral("売上伝票"),
            QStringLiteral("SELECT Dud.Dno, Dud.EigCode, Dud.Eda, CASE "
                           "WHEN Dud.EigCode NOT IN (SELECT Code FROM Eig) THEN 1 "
                           "WHEN Tor.Code IS NULL THEN 2 "
                           "WHEN Dud.Getudo IS NULL OR Dud.Getudo NOT BETWEEN 1 AND 13 THEN 3 "
                           "WHEN Dur.Dno IS NULL THEN 4 "
                           "WHEN Tor.Zeituuchi IS NULL OR Tor.Zeituuchi NOT BETWEEN 1 AND 4 THEN 5 "
                           "WHEN Dud.EigCode<>? THEN %1 END AS why, "
                           "CASE WHEN Tor.Code IS NULL THEN Dud.TorCode WHEN Dud.Getudo IS NULL "
                           "OR Dud.Getudo NOT BETWEEN 1 AND 13 THEN Dud.Getudo ELSE Dud.TorCode END "
                           "FROM Dud LEFT JOIN Tor ON Tor.Code=Dud.TorCode "
                           "LEFT JOIN Dur ON Dur.Dno=Dud.Dno AND Dur.EigCode=Dud.EigCode "
                           "WHERE Dud.ThiFlag=? AND why IS NOT NULL ORDER BY Dud.EigCode, Dud.Dno, Dud.Eda")
                .arg(kOtherOffice),
            {run.office, run.flag},
            [&run](int why, const QVariant& detail, const QVariant& office) {
                switch (why) {
                case 1: return officeMissing(office);
                case 2: return QStringLiteral("得意先 %1 が得意先マスターにありません").arg(detail.toString());
                case 3: return monthOutside(detail);
                case 4: return QStringLiteral("伝票の見出しがありません");
                case 5: return QStringLiteral("得意先 %1 の消費税通知が 1 から 4 ではありません").arg(detail.toString());
                default:
                    // The run clears every mark, these lines' too: no later run takes them.
                    return QStringLiteral("営業所 %1 の台帳処理では入らず、この後の台帳処理でも入りません").arg(run.office);
                }
            },
            out);
}

// The supplier ledger takes lines by closing month; a supplier missing from the masters gets
// month rows but no ledger head, so no list shows it.
void supplierLines(LedgerRun& run, QList<UnreachedLine>& out)
{
    collect(run, kSuppliers, QStringLiteral("仕入伝票"),
            QStringLiteral("SELECT Dsd.Dno, Dsd.EigCode, Dsd.Eda, CASE "
                           "WHEN Dsd.EigCode NOT IN (SELECT Code FROM Eig) THEN 1 "
                           "WHEN Sir.Code IS NULL THEN 2 "
                           "WHEN Dsd.Getudo IS NULL OR Dsd.Getudo NOT BETWEEN 1 AND 13 THEN 3 END AS why, "
                           "CASE WHEN Sir.Code IS NULL THEN Dsd.SirCode ELSE Dsd.Getudo END "
                           "FROM Dsd LEFT JOIN Sir ON Sir.Code=Dsd.SirCode "
                           "WHERE Dsd.ThiFlag=? AND why IS NOT NULL ORDER BY Dsd.EigCode, Dsd.Dno, Dsd.Eda"),
            {run.flag},
            [](int why, const QVariant& detail, const QVariant& office) {
                if (why == 1) return officeMissing(office);
                if (why == 2) return QStringLiteral("仕入先 %1 が仕入先マスターにありません").arg(detail.toString());
                return monthOutside(detail);
            },
            out);
}

} // namespace

QList<UnreachedLine> findUnreachedLines(LedgerRun& run)
{
    QList<UnreachedLine> out;
    productLines(run, QStringLiteral("Dud"), QStringLiteral("売上伝票"), out);
    productLines(run, QStringLiteral("Dsd"), QStringLiteral("仕入伝票"), out);
    customerLines(run, out);
    supplierLines(run, out);
    return out;
}

QString unreachedReport(const QList<UnreachedLine>& lines)
{
    if (lines.isEmpty()) return {};
    // One line per ledger, slip and reason with the slip's line numbers; the lines of another
    // office one line per office, with the number of slips and lines.
    struct Group { QString head, reason; bool bySlip; QStringList edas; QList<qint64> slips; };
    QList<Group> groups;
    QMap<QString, int> at;
    for (const UnreachedLine& l : lines) {
        const QString number = l.dno < 0 ? QStringLiteral("No.%1（取消分）").arg(-l.dno) : QStringLiteral("No.%1").arg(l.dno);
        const QString head = l.bySlip ? QStringLiteral("%1：%2 %3（営業所 %4）").arg(l.ledger, l.slip, number).arg(l.office)
                                      : QStringLiteral("%1：営業所 %2 の%3").arg(l.ledger).arg(l.office).arg(l.slip);
        const QString key = head + QLatin1Char('\t') + l.reason;
        if (!at.contains(key)) {
            at.insert(key, int(groups.size()));
            groups << Group{head, l.reason, l.bySlip, {}, {}};
        }
        Group& g = groups[at.value(key)];
        g.edas << QString::number(l.eda);
        if (!g.slips.contains(l.dno)) g.slips << l.dno;
    }
    // The count per office first: it is short, and the slip lines may run past what is shown.
    std::stable_partition(groups.begin(), groups.end(), [](const Group& g) { return !g.bySlip; });
    QStringList text{QStringLiteral("台帳に入らなかった明細があります（%1 行）。").arg(lines.size())};
    for (int i = 0; i < groups.size() && i < kShownSlips; ++i) {
        const Group& g = groups[i];
        if (g.bySlip)
            text << QStringLiteral("%1 %2行目：%3").arg(g.head, g.edas.join(QStringLiteral(", ")), g.reason);
        else
            text << QStringLiteral("%1 %2 枚 %3 行：%4").arg(g.head).arg(g.slips.size()).arg(g.edas.size()).arg(g.reason);
    }
    if (groups.size() > kShownSlips) text << QStringLiteral("ほか %1 件").arg(groups.size() - kShownSlips);
    return text.join(QLatin1Char('\n'));
}
