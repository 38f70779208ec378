#include "reports/LedgerReportList.h"
#include "entry/Convert.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {

// The whole text as a number; nothing typed counts as 0, anything but digits fails.
bool wholeNumber(const QString& text, int* value)
{
    const QString t = text.trimmed();
    if (t.isEmpty()) {
        *value = 0;
        return true;
    }
    if (t.size() > 4) return false;
    for (QChar c : t)
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) return false;
    *value = t.toInt();
    return true;
}

const QString kAmount = QStringLiteral("###,###,###,##0");

}  // namespace

PartnerMonthList::PartnerMonthList(const QString& c, int figures) : code(c), sums(figures) {}

QString PartnerMonthList::checkMonth(const QString& text, int* month)
{
    int v = 0;
    if (!wholeNumber(text, &v) || v < 1 || v > 13) return QStringLiteral("月度の範囲は１から１３です。");
    *month = v;
    return {};
}

QString PartnerMonthList::checkSime(const QString& text, int* sime)
{
    int v = 0;
    if (!wholeNumber(text, &v) || v > 31) return QStringLiteral("締日の範囲は１から３１です。");
    *sime = v;
    return {};
}

QString partnerMonthStatement(const QString& code, int sime, QVariantList* binds, int month, short EigCode)
{
    QString sql;
    binds->clear();
    *binds << month;
    if (code == QLatin1String("Kza")) {
        sql = QStringLiteral("SELECT Tsi.*, TsiD.*  FROM Tsi INNER JOIN TsiD ON (Tsi.EigCode=TsiD.EigCode)  AND "
                             "(Tsi.SirCode=TsiD.SirCode) WHERE TsiD.Getudo=?"
                             " AND (Zenkaigaku<>0 OR Zeigaku<>0 OR KTotal<>0 OR NTotal<>0) "
                             " AND Tsi.EigCode=?");
    } else {
        // Uza: the customer's own rows and the destinations billed on their own. UzaDtl: every
        // destination with movement, and a customer's own row that has only a balance.
        const QString cond = code == QLatin1String("UzaDtl")
            ? QStringLiteral(" AND ((Zeigaku<>0 OR KTotal<>0 OR NTotal<>0) OR       (TtoD.NouCode=0 AND ZenkaiGaku<>0))")
            : QStringLiteral(" AND (Zenkaigaku<>0 OR Zeigaku<>0 OR KTotal<>0 OR NTotal<>0)  AND (Tto.NouCode=0 OR SeiFlag=2) ");
        sql = QStringLiteral("SELECT Tto.*, TtoD.*  FROM Tto INNER JOIN TtoD ON (Tto.EigCode=TtoD.EigCode)  AND "
                             "(Tto.NouCode=TtoD.NouCode) AND (Tto.TorCode=TtoD.TorCode) WHERE TtoD.Getudo=?")
              + cond + QStringLiteral(" AND Tto.EigCode=?");
    }
    *binds << EigCode;
    if (sime != 0) {
        sql += QStringLiteral(" AND Sime=?");
        *binds << sime;
    }
    sql += code == QLatin1String("Kza") ? QStringLiteral(" ORDER BY Tsi.SirCode,Tsi.EigCode")
                                        : QStringLiteral(" ORDER BY Tto.TorCode,Tto.NouCode,Tto.EigCode");
    return sql;
}

bool PartnerMonthList::read(int mo, int si)
{
    month = mo;
    sime = si;
    sums.fill(Money());
    QVariantList binds;
    const QString sql = partnerMonthStatement(code, sime, &binds, month, session().EigCode);
    HeldRows read;
    QString error;
    if (!readHeldRows(session().MasterDb, sql, binds, &read, &error)) {
        clear();
        Tell(error);
        return false;
    }
    rows = read;
    rowCount = rows.size();
    if (rowCount == 0) {
        barMax = 0;
        Tell(QStringLiteral("対象がありません。"));
        return true;
    }
    for (int r = 0; r < rowCount; ++r) addRow(r);
    barMax = rowCount < PageRows + 1 ? 0 : rowCount - PageRows;
    return true;
}

void PartnerMonthList::clear()
{
    rows = HeldRows();
    rowCount = 0;
    barMax = 0;
    sums.fill(Money());
}

void PartnerMonthList::addRow(int r)
{
    const QList<Money> f = screenFigures(r);
    for (int i = 0; i < sums.size(); ++i) sums[i] += f[i];
}

QStringList PartnerMonthList::screenRow(int r) const
{
    QStringList out{hCode(r), torName(r)};
    for (const Money& v : screenFigures(r)) out << moneyText(v, kAmount);
    return out;
}

QStringList PartnerMonthList::totals() const
{
    QStringList out;
    for (const Money& s : sums) out << moneyText(s, kAmount);
    return out;
}

Money PartnerMonthList::returnsEtc(int r) const { return m(r, "HGaku") + m(r, "NGaku") + m(r, "KGaku"); }

Money PartnerMonthList::m(int r, const char* column) const { return rows.money(r, QLatin1String(column)); }

bool PartnerMonthList::destinationRow(int r) const
{
    return !supplier() && rows.at(r, QStringLiteral("NouCode")).toLongLong() != 0;
}

QString PartnerMonthList::hCode(int r) const
{
    if (supplier()) return QString::number(rows.at(r, QStringLiteral("SirCode")).toLongLong());
    QString c = QString::number(rows.at(r, QStringLiteral("TorCode")).toLongLong());
    if (destinationRow(r)) c += QLatin1Char('-') + QString::number(rows.at(r, QStringLiteral("NouCode")).toLongLong());
    return c;
}

QString PartnerMonthList::torName(int r) const
{
    if (supplier()) return NullToEmpty(rows.at(r, QStringLiteral("SirNamae")));
    const QString name = NullToEmpty(rows.at(r, QStringLiteral("TorNamae")));
    if (!destinationRow(r)) return name;
    return name + QLatin1Char(' ') + NullToEmpty(rows.at(r, QStringLiteral("NouNamae")));
}

QString PartnerMonthList::yearTitle() const
{
    const Session& s = session();
    if (s.Hiz == 1) return QStringLiteral("平成 ") + QString::number(s.Nendo - 1988) + QStringLiteral("年度 ");
    return QString::number(s.Nendo) + QStringLiteral("年度");
}

QString PartnerMonthList::periodText() const
{
    const Session& s = session();
    const QString year = s.Hiz == 1 ? QStringLiteral("平成 ") + QString::number(s.Nendo - 1988) : QString::number(s.Nendo);
    QString day;
    if (sime == 31) day = QStringLiteral("末");
    else if (sime == 0) day = QStringLiteral("  ");
    else day = QString::number(sime);
    return year + QStringLiteral("年度 ") + QString::number(month) + QStringLiteral("月 ") + day + QStringLiteral("日締分");
}

QStringList PartnerMonthList::pageLines(const QString& spacedTitle) const
{
    return {QStringLiteral("<AREA>20640,16080"), QStringLiteral("<FONT>ＭＳ 明朝"), QStringLiteral("<SIZE>20"),
            QStringLiteral("<FREE>2880,120,") + spacedTitle, QStringLiteral("<CL>"), QStringLiteral("<SIZE>12"),
            QStringLiteral("<FREE>7680,120,") + periodText(), QStringLiteral("<CL>"), QStringLiteral("<LOCATE>14400,120"),
            QStringLiteral("<SIZE>9"), QStringLiteral("<PAGE>"), QStringLiteral("<LOCATE>14400,360"),
            QStringLiteral("<DATE>1"), QStringLiteral("<LOCATE>0,720"), QStringLiteral("<DTPOS>"),
            QStringLiteral("<ZOUBUN>240"), QStringLiteral("<DTCNT>50"), QStringLiteral("<SIZE>12")};
}

QList<VtmlField> PartnerMonthList::partnerFields() const
{
    const bool s = supplier();
    return {reportField(QStringLiteral(" ｺｰﾄﾞ"), s ? QStringLiteral("Tsi.SirCode") : QStringLiteral("Tto.TorCode"),
                        QStringLiteral("N"), QStringLiteral("#####"), 120, false, 12),
            reportField(s ? QStringLiteral("仕 入 先 名 称") : QStringLiteral("得 意 先 名 称"),
                        s ? QStringLiteral("SirNamae") : QStringLiteral("TorNamae"), QStringLiteral("S"),
                        QStringLiteral("30"), 120, false, 12)};
}

VtmlField PartnerMonthList::amountField(const QString& caption, const QString& name, short gap)
{
    return reportField(caption, name, QStringLiteral("N"), QStringLiteral("###,###,##0"), gap, true, 12);
}
