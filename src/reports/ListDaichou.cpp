#include "reports/ListDaichou.h"
#include "entry/Convert.h"
#include "entry/Recordset.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {

const QString kNoRows = QStringLiteral("対象がありません。");

QSqlDatabase db() { return session().MasterDb; }

QString yearTitle()
{
    const Session& s = session();
    if (s.Hiz == 1) return QStringLiteral("平成") + QString::number(s.Nendo - 1988) + QStringLiteral("年度 ");
    return QString::number(s.Nendo) + QStringLiteral("年度");
}

QString partnerName(bool customer, qint64 code)
{
    const QString sql = customer ? QStringLiteral("SELECT Namae FROM Tor WHERE Code=?")
                                 : QStringLiteral("SELECT Namae FROM Sir WHERE Code=?");
    return NullToEmpty(scalar(db(), sql, {code})).trimmed();
}

QVariant nouColumn(qint64 tor, qint64 nou, const char* column)
{
    return scalar(db(), QStringLiteral("SELECT %1 FROM Nou WHERE TorCode=? AND Code=?").arg(QLatin1String(column)),
                  {tor, nou});
}

QString lineKubun(int kubun, bool supplier, bool print)
{
    switch (kubun) {
    case 0:
        if (print) return supplier ? QStringLiteral("仕  入") : QStringLiteral("売  上");
        return supplier ? QStringLiteral("仕入") : QStringLiteral("売上");
    case 1: return print ? QStringLiteral("返  品") : QStringLiteral("返品");
    case 2: return print ? QStringLiteral("値  引") : QStringLiteral("値引");
    case 3: return print ? QStringLiteral("経  費") : QStringLiteral("経費");
    default: return {};
    }
}

QString moneyKubun(int kubun, bool print)
{
    switch (kubun) {
    case 1: return print ? QStringLiteral("現  金") : QStringLiteral("現金");
    case 2: return QStringLiteral("小切手");
    case 3: return print ? QStringLiteral("振  込") : QStringLiteral("振込");
    case 4: return print ? QStringLiteral("手  形") : QStringLiteral("手形");
    case 5: return print ? QStringLiteral("相  殺") : QStringLiteral("相殺");
    case 6: return print ? QStringLiteral("調  整") : QStringLiteral("調整");
    default: return {};
    }
}

QDate dateOf(const QVariant& v) { return QDate::fromString(NullToEmpty(v).left(10), Qt::ISODate); }

// A number of the row as the screen shows it: Null shows nothing.
QString countText(const QVariant& v, const QString& pattern)
{
    return v.isNull() ? QString() : FormatNumber(double(v.toLongLong()), pattern);
}
QString priceText(const QVariant& v, const QString& pattern)
{
    return v.isNull() ? QString() : FormatNumber(Money::fromStore(v), pattern);
}
QVariant yenValue(const QVariant& v) { return v.isNull() ? QVariant() : QVariant(Money::fromStore(v).toDouble()); }

}  // namespace

QString ListDaichou::checkRangeBox(RangeBox box, const QString& text, int* value)
{
    const int top = box == RangeBox::Getudo ? 13 : box == RangeBox::Month ? 12 : 31;
    const QString t = text.trimmed();
    bool digits = !t.isEmpty() && t.size() <= 2;
    for (QChar c : t) digits = digits && c >= QLatin1Char('0') && c <= QLatin1Char('9');
    const int v = digits ? t.toInt() : 0;
    if (v < 1 || v > top) {
        if (top == 13) return QStringLiteral("範囲は１から１３です。");
        return top == 12 ? QStringLiteral("範囲は１から１２です。") : QStringLiteral("範囲は１から３１です。");
    }
    *value = v;
    return {};
}

bool ListDaichou::Init(const LedgerRange& r)
{
    range = r;
    const bool supplier = supplierView();
    const char* customerLabels[7] = {"前回請求額", "入金額", "繰越金額", "売上金額", "返品値引等", "消費税額", "税込売掛残高"};
    for (int i = 0; i < 7; ++i) LabelHeader[i] = QString::fromUtf8(customerLabels[i]);
    if (supplier) {
        LabelHeader[0] = QStringLiteral("前回仕入額");
        LabelHeader[1] = QStringLiteral("支払額");
        LabelHeader[3] = QStringLiteral("仕入金額");
        LabelHeader[6] = QStringLiteral("税込買掛残高");
    }

    if (r.partner == 0) {
        TorName = QStringLiteral("すべて選択");
    } else {
        TorName = partnerName(r.customerView(), r.partner);
        if (r.customerView() && r.nou != 0)
            TorName += QLatin1Char(' ') + NullToEmpty(nouColumn(r.partner, r.nou, "Tenmei")).trimmed();
    }
    tukiBox.clear();
    Range[0].clear();
    Range[1].clear();
    if (r.byMonth) {
        tukiBox = QString::number(r.month) + QStringLiteral("月度");
    } else {
        Range[0] = QString::number(r.startMonth) + QStringLiteral("月") + QString::number(r.startDay) + QStringLiteral("日");
        Range[1] = QString::number(r.endMonth) + QStringLiteral("月") + QString::number(r.endDay) + QStringLiteral("日");
    }

    // The month's figures belong to the ledger of what is billed: the customer, or a
    // destination billed on its own.
    headerShown_ = false;
    if (r.byMonth && (r.view == QLatin1String("Tdc") || r.view == QLatin1String("Sdc")))
        headerShown_ = r.nou == 0 || nouColumn(r.partner, r.nou, "SeiFlag").toInt() == 2;
    for (QString& v : LabelHValue) v.clear();
    if (headerShown_) ShowLedgerHeader();

    QString error;
    if (!OpenLedgerRows(QStringLiteral("DESC"), &error)) {
        // The rows of the range before are not this range's: none of them may show or open.
        rows = HeldRows();
        rowCount = 0;
        barMax = 0;
        Tell(error);
        return false;
    }
    if (rowCount == 0) {
        Tell(kNoRows);
        barMax = 0;
    } else {
        barMax = rowCount < PageRows + 1 ? 0 : rowCount - PageRows;
    }
    return true;
}

bool ListDaichou::OpenLedgerRows(const QString& sort, QString* error)
{
    const QString order = sort == QLatin1String("DESC") ? QStringLiteral("DESC") : QString();
    if (range.view != QLatin1String("Tdc") && range.view != QLatin1String("Sdc")) {
        Title = ledgerViewName(range.view);
        return openOrderRows(order, error);
    }
    Title = yearTitle() + ledgerViewName(range.view);
    UnitOfWork unit(db());
    if (!unit.active()) {
        if (error) *error = StoreErrorText(unit.error());
        return false;
    }
    const bool filled = range.byMonth ? FillMeiByMonth(db(), range, session().EigCode, error)
                                      : FillMeiByDate(db(), range, session().EigCode, error);
    if (!filled) return false;
    HeldRows read;
    // A null UriFlag sorts first, so within a date the lines come before the money.
    if (!readHeldRows(db(), QStringLiteral("SELECT * FROM Mei ORDER BY Hizuke %1,UriFlag,Dno,Eda").arg(order), {},
                      &read, error))
        return false;
    // The rows are held; Mei goes back as it was, so no other station ever sees it change
    // and no commit has to reach the disk.
    unit.rollback();
    rows = read;
    rowCount = rows.size();
    return true;
}

bool ListDaichou::openOrderRows(const QString& order, QString* error)
{
    const bool orders = range.view == QLatin1String("Jdc");
    const QString table = orders ? QStringLiteral("Dcd") : QStringLiteral("Dhd");
    QStringList terms;
    QVariantList binds;
    QString from = table;
    const QString p = table + QLatin1Char('.');
    if (range.partner != 0) {
        terms << p + (orders ? QStringLiteral("TorCode=?") : QStringLiteral("SirCode=?"));
        binds << range.partner;
        if (orders && range.nou != 0) {
            from = QStringLiteral("Dcd INNER JOIN Dcr ON (Dcd.Dno=Dcr.Dno) AND (Dcd.EigCode=Dcr.EigCode)");
            terms << QStringLiteral("Dcr.NouCode=?");
            binds << range.nou;
        }
    }
    if (range.byGetudo()) {
        terms << p + QStringLiteral("Getudo=?");
        binds << range.month;
    } else {
        const QDate f = range.from(), t = range.to();
        terms << p + QStringLiteral("Hizuke>=?") << p + QStringLiteral("Hizuke<=?");
        binds << (f.isValid() ? QVariant(f.toString(Qt::ISODate)) : QVariant())
              << (t.isValid() ? QVariant(t.toString(Qt::ISODate)) : QVariant());
    }
    terms << p + QStringLiteral("EigCode=?");
    binds << session().EigCode;
    const QString sql = QStringLiteral("SELECT %1* FROM %2 WHERE %3 ORDER BY %1Hizuke %4,%1Dno,%1Eda")
                            .arg(p, from, terms.join(QStringLiteral(" AND ")), order);
    HeldRows read;
    if (!readHeldRows(db(), sql, binds, &read, error)) return false;
    rows = read;
    rowCount = rows.size();
    return true;
}

bool ListDaichou::readHeader(Money v[7], bool* found) const
{
    const bool customer = range.view == QLatin1String("Tdc");
    Query q(db(), customer ? QStringLiteral("SELECT * FROM TtoD  WHERE TorCode=? AND   NouCode=? AND   EigCode=? AND   Getudo=?")
                           : QStringLiteral("SELECT * FROM TsiD  WHERE SirCode=? AND   EigCode=? AND   Getudo=?"),
            customer ? QVariantList{range.partner, range.nou, session().EigCode, range.month}
                     : QVariantList{range.partner, session().EigCode, range.month});
    *found = q.next();
    if (!*found) return q.ok();
    auto m = [&q](const char* c) { return Money::fromStore(q.value(QLatin1String(c))); };
    const Money zen = m("Zenkaigaku"), nTotal = m("NTotal"), gaku = m("Gaku");
    const Money others = m("HGaku") + m("NGaku") + m("KGaku"), zei = m("ZeiGaku");
    v[0] = zen;
    v[1] = nTotal;
    v[2] = zen - nTotal;
    v[3] = gaku;
    v[4] = others;
    v[5] = zei;
    v[6] = zen - nTotal + gaku + others + zei;
    return true;
}

void ListDaichou::ShowLedgerHeader()
{
    Money v[7];
    bool found = false;
    readHeader(v, &found);
    for (int i = 0; i < 7; ++i) LabelHValue[i] = found ? FormatNumber(v[i], QStringLiteral("###,###,##0")) : QStringLiteral("-");
}

QList<LedgerScreenRow> ListDaichou::ShowLedgerRows(int top) const
{
    QList<LedgerScreenRow> out;
    QDate above;
    for (int i = 0; i < PageRows; ++i) {
        const int r = top + i;
        LedgerScreenRow row;
        if (r >= 0 && r < rows.size()) {
            const QDate d = dateOf(rows.at(r, QStringLiteral("Hizuke")));
            if (i == 0 || d != above) row.Hizuke = d.isValid() ? d.toString(QStringLiteral("MM月dd日")) : QString();
            above = d;
            row.Kubun = kubunText(r);
            row.fHinNamae = NullToEmpty(rows.at(r, QStringLiteral("HinNamae")));
            row.fSuu = countText(rows.at(r, QStringLiteral("Suu")), QStringLiteral("###,###,###"));
            row.fTanka = priceText(rows.at(r, QStringLiteral("UTanka")), QStringLiteral("###,###,##0.00"));
            row.fGaku = priceText(rows.at(r, QStringLiteral("UGaku")), QStringLiteral("###,###,###"));
            row.Dno = rows.at(r, QStringLiteral("Dno")).toLongLong();
            row.UriFlag = NullToEmpty(rows.at(r, QStringLiteral("UriFlag")));
        }
        out << row;
    }
    return out;
}

bool ListDaichou::slipOf(int top, int line, LedgerSlipTarget* target) const
{
    const int r = top + line;
    if (line < 0 || line >= PageRows || r < 0 || r >= rows.size()) return false;
    const bool money = NullToEmpty(rows.at(r, QStringLiteral("UriFlag"))) == QLatin1String("*");
    if (range.view == QLatin1String("Tdc")) {
        target->form = money ? QStringLiteral("Cashier_frm") : QStringLiteral("Slip_frm");
        target->kind = money ? QStringLiteral("Dny") : QStringLiteral("Dur");
    } else if (range.view == QLatin1String("Sdc")) {
        target->form = money ? QStringLiteral("Cashier_frm") : QStringLiteral("Slip_frm");
        target->kind = money ? QStringLiteral("Dsh") : QStringLiteral("Dsr");
    } else {
        return false;
    }
    target->Dno = rows.at(r, QStringLiteral("Dno")).toLongLong();
    return true;
}

QString ListDaichou::kubunText(int row) const
{
    const int k = rows.at(row, QStringLiteral("Kubun")).toInt();
    if (NullToEmpty(rows.at(row, QStringLiteral("UriFlag"))) == QLatin1String("*")) return moneyKubun(k, false);
    return lineKubun(k, supplierView(), false);
}

QString ListDaichou::kubunPrintText(int row) const
{
    const int k = rows.at(row, QStringLiteral("Kubun")).toInt();
    if (NullToEmpty(rows.at(row, QStringLiteral("UriFlag"))) == QLatin1String("*")) return moneyKubun(k, true);
    return lineKubun(k, supplierView(), true);
}

bool ListDaichou::exportSheet(ReportSheet* sheet, QString* error)
{
    bool ok = OpenLedgerRows(QString(), error);
    if (ok && rowCount == 0) {
        if (error) *error = kNoRows;
        ok = false;
    }
    if (ok) {
        *sheet = ReportSheet();
        sheet->add({QStringLiteral("日  付"), QStringLiteral("区  分"), QStringLiteral("コード"), QStringLiteral("品名"),
                    QStringLiteral("数  量"), QStringLiteral("仕入単価"), QStringLiteral("仕入金額"), QStringLiteral("売上単価"),
                    QStringLiteral("売上金額")});
        // Purchase views keep the purchase price in the purchase columns; the others the
        // other way round.
        const bool supplier = range.view == QLatin1String("Sdc");
        for (int r = 0; r < rows.size(); ++r) {
            auto col = [&](const char* c) { return rows.at(r, QLatin1String(c)); };
            const QDate d = dateOf(col("Hizuke"));
            QVariantList cells{d.isValid() ? QVariant(d) : QVariant(), kubunText(r), col("HinCode"), col("HinNamae"),
                               col("Suu")};
            if (supplier)
                cells << yenValue(col("UTanka")) << yenValue(col("UGaku")) << yenValue(col("STanka")) << yenValue(col("sGaku"));
            else
                cells << yenValue(col("STanka")) << yenValue(col("sGaku")) << yenValue(col("UTanka")) << yenValue(col("UGaku"));
            sheet->add(cells);
            sheet->formats.insert({r + 2, 1}, QStringLiteral("yyyy/mm/dd"));
        }
    }
    QString again;
    if (!OpenLedgerRows(QStringLiteral("DESC"), &again) && ok) {
        if (error) *error = again;
        ok = false;
    }
    return ok;
}

QList<ListDaichou::HeaderCell> ListDaichou::printHeader() const
{
    if (!range.byMonth || range.partner == 0
        || (range.view != QLatin1String("Tdc") && range.view != QLatin1String("Sdc")))
        return {};
    const bool supplier = supplierView();
    Money v[7];
    bool found = false;
    readHeader(v, &found);
    const Money taxed = v[3] + v[4] + v[5];
    const Money values[8] = {v[0], v[1], v[2], v[3], v[4], v[5], taxed, taxed + v[2]};
    struct Place {
        int labelX;
        const char* customer;
        const char* supplier;
        int valueX;
    };
    static const Place places[8] = {
        {1980, "前回請求額", "前回未払額", 1800}, {4140, "入金金額", "支払金額", 3720},
        {6060, "繰越金額", "繰越金額", 5640},     {7980, "今回売上額", "今回仕入額", 7800},
        {10140, "返品値引等", "返品値引等", 9960}, {12300, "消費税", "消費税", 11640},
        {13980, "今回税込売上額", "今回税込仕入額", 14280}, {16740, "税込売掛残高", "税込買掛残高", 16800},
    };
    QList<HeaderCell> out;
    for (int i = 0; i < 8; ++i)
        out << HeaderCell{places[i].labelX, QString::fromUtf8(supplier ? places[i].supplier : places[i].customer),
                          places[i].valueX, found ? FormatNumber(values[i], QStringLiteral("###,###,##0")) : QStringLiteral("-")};
    return out;
}

QString ListDaichou::printPeriodLine() const
{
    if (range.byMonth) return tukiBox + QStringLiteral("   ") + TorName;
    return Range[0] + QStringLiteral(" より ") + Range[1] + QStringLiteral(" まで") + QStringLiteral("   ") + TorName;
}
