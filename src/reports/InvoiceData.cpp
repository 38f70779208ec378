#include "reports/InvoiceData.h"

#include "entry/Convert.h"
#include "shell/Session.h"
#include "slips/SlipStyles.h"
#include "store/Sql.h"

namespace {

// The closing month of a line is that of the line, the partner and office those of the head.
const QString kDetailSelect = QStringLiteral(
    "SELECT Dud.HinNamae AS aHinNamae, SUM(Dud.Suu) AS tSuu, Dud.UTanka AS UTanka, SUM(Dud.UGaku) AS tUGaku, "
    // The one MIN makes the bare name that of the group's first line, as it was first typed.
    "MIN(Dud.Dno * 100 + Dud.Eda) AS firstLine "
    // A line carries its slip's customer: joining on it too finds the lines through the index of
    // lines by customer and month instead of a pass over the whole month.
    "FROM Dud INNER JOIN Dur ON (Dud.EigCode = Dur.EigCode) AND (Dud.Dno = Dur.Dno) AND (Dud.TorCode = Dur.TorCode) "
    "WHERE Dur.TorCode = ? ");
const QString kDetailTail = QStringLiteral(
    "AND Dur.EigCode = ? AND Dud.Getudo = ? "
    "GROUP BY Dud.HinCode, Dud.UTanka ORDER BY Dud.HinCode, Dud.UTanka");
const QStringList kDetailMoney = {QStringLiteral("UTanka"), QStringLiteral("tUGaku")};

VtmlField field(const char* name, const char* kind, const QString& format, int x, bool total)
{
    VtmlField f;
    f.Name = QString::fromLatin1(name);
    f.Kind = QString::fromLatin1(kind);
    f.Format = format;
    f.X = short(x);
    f.Total = total ? 1 : 0;
    f.FontSize = 11;
    return f;
}

QString freeLine(int x, int y, const QString& text)
{
    return QStringLiteral("<FREE>%1,%2,%3").arg(x).arg(y).arg(text);
}

}  // namespace

int invoicePeriodYear(short month)
{
    const Session& s = session();
    return month < s.sTuki ? s.Nendo + 1 : s.Nendo;
}

InvoicePeriod invoicePeriod(short month, short sime)
{
    return InvoicePeriod{month, sime, invoicePeriodYear(month), session().Hiz == 1};
}

QList<qint64> invoiceCustomers(const QSqlDatabase& db, short sime, std::optional<qint64> from,
                               std::optional<qint64> to, QString* error)
{
    const bool range = from.has_value();
    Query q(db,
            range ? QStringLiteral("SELECT Code FROM Tor WHERE Sime = ? AND Code >= ? AND Code <= ? ORDER BY Code")
                  : QStringLiteral("SELECT Code FROM Tor WHERE Sime = ? ORDER BY Code"),
            range ? QVariantList{sime, *from, to.value_or(*from)} : QVariantList{sime});
    if (!q.ok() && error) *error = q.error().text();
    QList<qint64> out;
    while (q.next()) out << q.value(0).toLongLong();
    return out;
}

QList<qint64> invoiceDestinations(const QSqlDatabase& db, qint64 tor)
{
    Query q(db, QStringLiteral("SELECT Code FROM Nou WHERE TorCode = ? ORDER BY Code"), {tor});
    QList<qint64> out;
    while (q.next()) out << q.value(0).toLongLong();
    return out;
}

std::optional<InvoiceAmounts> invoiceAmounts(const QSqlDatabase& db, const InvoiceKey& key)
{
    Query q(db,
            QStringLiteral("SELECT KTotal, ZeiGaku FROM TtoD WHERE TorCode = ? AND NouCode = ? AND Getudo = ? "
                           "AND EigCode = ?"),
            {key.tor, key.nou, key.month, key.office});
    if (!q.next()) return std::nullopt;
    return InvoiceAmounts{Money::fromStore(q.value(0)), Money::fromStore(q.value(1))};
}

bool invoiceDue(const QSqlDatabase& db, const InvoiceKey& key)
{
    const std::optional<InvoiceAmounts> a = invoiceAmounts(db, key);
    return a && a->KTotal != Money();
}

InvoiceStatement invoiceLines(InvoiceStep step, const InvoiceKey& key)
{
    switch (step) {
    case InvoiceStep::Detail:
        return {kDetailSelect + QStringLiteral("AND Dur.NouCode = ? ") + kDetailTail,
                {key.tor, key.nou, key.office, key.month}, kDetailMoney};
    case InvoiceStep::AllDetail:
        return {kDetailSelect + kDetailTail, {key.tor, key.office, key.month}, kDetailMoney};
    case InvoiceStep::Summary:
        break;
    }
    return {QStringLiteral("SELECT Dur.NouCode, Nou.Namae AS aNamae, SUM(Dud.UGaku) AS tUGaku "
                           "FROM Dud INNER JOIN (Dur INNER JOIN Nou ON (Dur.NouCode = Nou.Code) "
                           "AND (Dur.TorCode = Nou.TorCode)) ON (Dud.EigCode = Dur.EigCode) AND (Dud.Dno = Dur.Dno) "
                           "AND (Dud.TorCode = Dur.TorCode) "
                           "WHERE Dur.TorCode = ? AND Dur.EigCode = ? AND Dud.Getudo = ? "
                           "GROUP BY Dur.NouCode ORDER BY Dur.NouCode"),
            {key.tor, key.office, key.month}, {QStringLiteral("tUGaku")}};
}

qint64 meanUnitPrice(Money amount, qint64 quantity)
{
    if (quantity == 0) return 0;
    const qint64 divisor = quantity * Money::Scale;
    qint64 q = amount.raw() / divisor;
    // Integer division cuts towards zero; the price is cut towards minus infinity.
    if ((amount.raw() % divisor != 0) && ((amount.raw() < 0) != (divisor < 0))) --q;
    return q;
}

InvoiceAddressee invoiceAddressee(const QSqlDatabase& db, InvoiceStep step, qint64 tor, qint64 nou)
{
    InvoiceAddressee a;
    if (step == InvoiceStep::Detail && nou != 0) {
        const QVariant name = scalar(db, QStringLiteral("SELECT Namae FROM Nou WHERE TorCode = ? AND Code = ?"), {tor, nou});
        a.found = name.isValid();
        a.name = NullToEmpty(name).trimmed();
        a.reference = QStringLiteral("(%1-%2)").arg(tor).arg(nou);
        return a;
    }
    const QVariant name = scalar(db, QStringLiteral("SELECT Namae FROM Tor WHERE Code = ?"), {tor});
    a.found = name.isValid();
    a.name = NullToEmpty(name).trimmed();
    a.reference = QStringLiteral("(%1)").arg(tor);
    return a;
}

QString invoiceDayText(short sime)
{
    return sime == 31 ? QStringLiteral("末") : FormatNumber(double(sime), QStringLiteral("##"));
}

QStringList invoiceAmountTexts(const InvoiceAmounts& a)
{
    using namespace InvoiceForm;
    return {FormatRight(a.KTotal, AmountFormat), FormatRight(a.ZeiGaku, AmountFormat),
            FormatRight(a.KTotal + a.ZeiGaku, AmountFormat)};
}

QStringList invoicePageLines(InvoiceStep step, const InvoiceAddressee& to, const InvoicePeriod& period,
                             const std::optional<InvoiceAmounts>& amounts, bool background)
{
    using namespace InvoiceForm;
    QStringList l;
    l << QStringLiteral("<AREA>%1,%2").arg(Width).arg(Height);
    // The plain-paper form goes first: the lines after it choose their own font again.
    if (background) l << QStringLiteral("<BKGRD>");
    l << QStringLiteral("<FONT>ＭＳ 明朝") << QStringLiteral("<SIZE>11");
    l << freeLine(NameX, NameY, to.name) << freeLine(RefX, PeriodY, to.reference);
    l << QStringLiteral("<LOCATE>%1,%2").arg(PageX).arg(PageY) << QStringLiteral("<PAGE>");
    if (period.era)
        l << freeLine(EraYearX, PeriodY, QStringLiteral("平成 ") + FormatNumber(double(period.year - 1988), QStringLiteral("##")));
    else
        l << freeLine(YearX, PeriodY, FormatNumber(double(period.year), QStringLiteral("####")));
    l << freeLine(MonthX, PeriodY, QString::number(period.month));
    l << freeLine(DayX, PeriodY, invoiceDayText(period.sime));
    if (step == InvoiceStep::Summary && amounts) {
        const QStringList t = invoiceAmountTexts(*amounts);
        l << freeLine(KTotalX, AmountsY, t[0]) << freeLine(ZeiX, AmountsY, t[1]) << freeLine(TotalX, AmountsY, t[2]);
    }
    l << QStringLiteral("<LOCATE>0,%1").arg(DataY) << QStringLiteral("<DTPOS>")
      << QStringLiteral("<ZOUBUN>%1").arg(RowPitch) << QStringLiteral("<DTCNT>%1").arg(Rows);
    return l;
}

QList<VtmlField> invoiceFields(InvoiceStep step)
{
    using namespace InvoiceForm;
    if (step == InvoiceStep::Summary)
        return {field("aNamae", "S", QStringLiteral("50"), NameColX, false),
                field("tUGaku", "N", LineAmountFormat, GakuX, true)};
    return {field("aHinNamae", "S", QStringLiteral("50"), NameColX, false),
            field("tSuu", "N", QuantityFormat, SuuX, false),
            field(step == InvoiceStep::AllDetail ? "@0" : "UTanka", "N", QuantityFormat, TankaX, false),
            field("tUGaku", "N", LineAmountFormat, GakuX, true)};
}

bool isPlainPaperStyle(const QSqlDatabase& db, short style)
{
    Query q(db, QStringLiteral("SELECT Contents FROM zSysFunc WHERE Code >= 1201 AND Code <= 1299 ORDER BY Code"));
    while (q.next()) {
        const std::optional<SlipStyleEntry> e = parseStyleRow(NullToEmpty(q.value(0)));
        if (e && e->value == style && e->name.contains(QStringLiteral("白紙"))) return true;
    }
    return false;
}
