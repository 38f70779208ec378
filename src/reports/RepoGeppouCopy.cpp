#include "reports/RepoGeppouCopy.h"
#include "entry/Convert.h"
#include "entry/Recordset.h"
#include "entry/Utility.h"
#include "pageout/ReportRows.h"
#include "pageout/Vtml.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {

const QString kDay = QStringLiteral("###");

QStringList rowColumns()
{
    QStringList c{QStringLiteral("aHinCode"), QStringLiteral("aNamae"), QStringLiteral("tSuuT"), QStringLiteral("tGaku")};
    for (int d = 0; d < RepoGeppou::Days; ++d) c << QStringLiteral("d%1").arg(d);
    return c;
}

void field(VtmlField& f, const char* caption, const QString& name, const char* kind, const QString& format)
{
    VtmlFieldClear(f);
    f.Caption = QString::fromUtf8(caption);
    f.Name = name;
    f.Kind = QString::fromLatin1(kind);
    f.Format = format;
    f.Gap = 120;
    VtmlAddField(f);
}

} // namespace

MonthlyCopy::MonthlyCopy() = default;
MonthlyCopy::~MonthlyCopy() = default;

QString MonthlyCopy::dayHeader(const QDate& from, const QDate& to)
{
    QString text;
    for (QDate d = from; d.isValid() && d <= to; d = d.addDays(1)) text += FormatRight(double(d.day()), kDay);
    return text;
}

bool MonthlyCopy::PrintMonthlyCopy(const GeppouRequest& base, qint64 customer, qint64 dest, bool* printed,
                                   QString* error)
{
    *printed = false;
    GeppouRequest r = base;
    r.customer = customer;
    r.dest = dest;
    RepoGeppou month;
    if (!month.load(r, error)) return false;
    if (month.rows().isEmpty()) return true;

    QList<QVariantList> values;
    for (const GeppouRow& g : month.rows()) {
        QVariantList v{g.aHinCode, g.aNamae, g.tSuuT, moneyVariant(g.tGaku)};
        for (const QVariant& d : g.days) v << d;
        values << v;
    }
    rows_ = listRows(rowColumns(), values);

    const Session& s = session();
    Query ledger(s.MasterDb, QStringLiteral("SELECT KTotal,Zeigaku FROM TtoD WHERE TorCode=? AND EigCode=? AND Getudo=?"),
                 {customer, s.EigCode, r.month});
    if (!ledger.ok()) {
        if (error) *error = StoreErrorText(ledger.error());
        return false;
    }

    VtmlClear();
    PbSetNoTotals(true);
    VtmlField f;
    field(f, "商品コード", QStringLiteral("@0"), "S", QStringLiteral("10"));
    field(f, "商品名", QStringLiteral("aNamae"), "S", QStringLiteral("20"));
    VtmlFieldClear(f);
    f.Caption = dayHeader(month.from(), month.to());
    f.Name = QStringLiteral("@1");
    f.Kind = QStringLiteral("S");
    f.Format = QStringLiteral("96");
    VtmlAddField(f);
    field(f, "個数", QStringLiteral("tSuuT"), "N", QStringLiteral("##,###"));
    field(f, "単価", QStringLiteral("@2"), "N", QStringLiteral("##,###"));
    field(f, "金額", QStringLiteral("tGaku"), "N", QStringLiteral("###,###"));
    PbSetRows(rows_.get());
    PbSetForm(this);

    VtmlAddLine(QStringLiteral("<AREA>20640,16080"));
    VtmlAddLine(QStringLiteral("<FONT>ＭＳ 明朝"));
    VtmlAddLine(QStringLiteral("<SIZE>16"));
    VtmlAddLine(QStringLiteral("<FREE>2880,120,販売商品月次控"));
    QString addressee = CodeName(QStringLiteral("Tor"), customer) + QStringLiteral(" 様 ");
    if (dest != 0) addressee += NouName(customer, dest) + QStringLiteral(" 分");
    VtmlAddLine(QStringLiteral("<FREE>5600,120,") + addressee);
    // The month's sales from the ledger, of whichever destination row comes first.
    if (ledger.next()) {
        const Money sales = Money::fromStore(ledger.value(0));
        const Money tax = Money::fromStore(ledger.value(1));
        VtmlAddLine(QStringLiteral("<SIZE>11"));
        VtmlAddLine(QStringLiteral("<FREE>5000,600,当月売上　") + FormatNumber(sales, QStringLiteral("##,###,###")));
        VtmlAddLine(QStringLiteral("<FREE>8000,600,消費税額　") + FormatNumber(tax, QStringLiteral("###,###")));
        VtmlAddLine(QStringLiteral("<FREE>11000,600,税込売上額　") + FormatNumber(sales + tax, QStringLiteral("###,###")));
    }
    VtmlAddLine(QStringLiteral("<LOCATE>0,1200"));
    VtmlAddLine(QStringLiteral("<DTPOS>"));
    VtmlAddLine(QStringLiteral("<ZOUBUN>240"));
    VtmlAddLine(QStringLiteral("<DTCNT>50"));
    VtmlAddLine(QStringLiteral("<SIZE>12"));
    if (!VtmlPrint()) return false;
    *printed = true;
    return true;
}

bool MonthlyCopy::printAll(const GeppouRequest& r, int* sheets, QString* error)
{
    *sheets = 0;
    QString why;
    const QList<QPair<qint64, qint64>> list = RepoGeppou::sheets(r, &why);
    if (!why.isEmpty()) {
        if (error) *error = why;
        return false;
    }
    MonthlyCopy copy;
    for (const auto& sheet : list) {
        bool printed = false;
        if (!copy.PrintMonthlyCopy(r, sheet.first, sheet.second, &printed, error)) return false;
        if (printed) ++*sheets;
    }
    return true;
}

QVariant MonthlyCopy::alpha(short& n)
{
    if (!rows_) return {};
    switch (n) {
    case 0: {
        QString code = NullToEmpty(rows_->value(QStringLiteral("aHinCode")));
        return ZeroStrip(code);
    }
    case 1: {
        // A day without lines is 0, which the picture draws as blanks.
        QString text;
        for (int d = 0; d < RepoGeppou::Days; ++d)
            text += FormatRight(rows_->value(QStringLiteral("d%1").arg(d)).toDouble(), kDay);
        return text;
    }
    case 2: {
        const qint64 suu = rows_->value(QStringLiteral("tSuuT")).toLongLong();
        return suu == 0 ? 0.0 : variantMoney(rows_->value(QStringLiteral("tGaku"))) / double(suu);
    }
    default:
        return {};
    }
}
