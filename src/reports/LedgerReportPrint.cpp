#include "reports/LedgerReportPrint.h"
#include <QDate>
#include "entry/Convert.h"
#include "pageout/Excel.h"
#include "pageout/ReportForm.h"
#include "pageout/ReportRows.h"
#include "pageout/Vtml.h"
#include "reports/LedgerReportList.h"
#include "reports/ListDaichou.h"
#include "shell/Dialogs.h"

namespace {

class LedgerPrintForm : public ReportForm {
public:
    explicit LedgerPrintForm(const ListDaichou& v) : view_(v) {}
    QVariant alpha(short& n) override
    {
        const int r = view_.rows.current();
        switch (n) {
        case 0: {
            // The date on every printed row, even where the screen leaves it out.
            const QDate d = QDate::fromString(view_.rows.at(r, QStringLiteral("Hizuke")).toString().left(10), Qt::ISODate);
            return FormatNumber(double(d.month()), QStringLiteral("##")) + QLatin1Char('/')
                   + FormatNumber(double(d.day()), QStringLiteral("##"));
        }
        case 1: return view_.kubunPrintText(r);
        case 3:
            if (view_.rows.at(r, QStringLiteral("UriFlag")).toString() != QLatin1String("*")) return QString();
            // Taken off entry 7, which is no column: the money stays inside the "税抜金額"
            // totals, and the "*" marks it.
            PbSetPageTotal(7, PbPageTotal(7) - view_.rows.money(r, QStringLiteral("UGaku")));
            PbSetRunningTotal(7, PbRunningTotal(7) - view_.rows.money(r, QStringLiteral("UGaku")));
            return QStringLiteral("*");
        default: return {};
        }
    }

private:
    const ListDaichou& view_;
};

class ListPrintForm : public ReportForm {
public:
    explicit ListPrintForm(const PartnerMonthList& l) : list_(l) {}
    QVariant alpha(short& n) override { return moneyVariant(list_.alphaValue(n, list_.rows.current())); }

private:
    const PartnerMonthList& list_;
};

bool addAll(const ReportDocument& d)
{
    for (const VtmlField& f : d.fields)
        if (!VtmlAddField(f)) return false;
    for (const QString& l : d.lines)
        if (!VtmlAddLine(l)) return false;
    return true;
}

ReportDocument ledgerDocument(const ListDaichou& v)
{
    ReportDocument d;
    const QString amount = QStringLiteral("#,###,###,###");
    d.fields = {reportField(QStringLiteral("日  付"), QStringLiteral("@0"), QStringLiteral("S"), QStringLiteral("5"), 240, false),
                reportField(QStringLiteral("区  分"), QStringLiteral("@1"), QStringLiteral("S"), QStringLiteral("6"), 240, false),
                reportField(QStringLiteral("商  品  名"), QStringLiteral("HinNamae"), QStringLiteral("S"), QStringLiteral("30"), 240, false),
                reportField(QStringLiteral("数  量"), QStringLiteral("Suu"), QStringLiteral("N"), QStringLiteral("##,###"), 240, true),
                reportField(QStringLiteral("単  価"), QStringLiteral("UTanka"), QStringLiteral("N"), QStringLiteral("###,###,##0.00"), 240, false),
                reportField(QStringLiteral("税抜金額"), QStringLiteral("UGaku"), QStringLiteral("N"), amount, 240, true),
                reportField(QString(), QStringLiteral("@3"), QStringLiteral("S"), QString(), 240, false)};
    d.lines = {QStringLiteral("<AREA>21600,16080"), QStringLiteral("<SIZE>12"), QStringLiteral("<CENTER>"),
               QStringLiteral("<FONT>ＭＳ 明朝"), QStringLiteral("<SIZE>18"), textLine(ledgerViewName(v.range.view)),
               QStringLiteral("<LEFT>"), QStringLiteral("<SIZE>12"), QStringLiteral("<LOCATE>12960,240"), QStringLiteral("<DATE>1"),
               QStringLiteral("<LOCATE>16800,24"), QStringLiteral("<PAGE>"), QStringLiteral("<SIZE>14"),
               QStringLiteral("<LOCATE>480,120"), textLine(v.printPeriodLine()), QStringLiteral("<SIZE>12")};
    for (const ListDaichou::HeaderCell& c : v.printHeader()) {
        d.lines << QStringLiteral("<FREE>%1,720,%2").arg(c.labelX).arg(c.label);
        d.lines << QStringLiteral("<FREE>%1,960,%2").arg(c.valueX).arg(c.value);
    }
    d.lines << QStringLiteral("<LOCATE>1200,1440") << QStringLiteral("<DTPOS>") << QStringLiteral("<ZOUBUN>240")
            << QStringLiteral("<DTCNT>50");
    return d;
}

}  // namespace

bool printLedgerView(ListDaichou& v)
{
    if (v.rowCount == 0) return true;
    QString error;
    if (!v.OpenLedgerRows(QString(), &error)) {
        Tell(error);
        return false;
    }
    LedgerPrintForm form(v);
    v.rows.rewind();
    v.rows.setMoneyColumns({QStringLiteral("UTanka"), QStringLiteral("UGaku")});
    VtmlClear();
    const ReportDocument d = ledgerDocument(v);
    for (const VtmlField& f : d.fields) VtmlAddField(f);
    PbSetRows(&v.rows);
    PbSetForm(&form);
    for (const QString& l : d.lines) VtmlAddLine(l);
    const bool printed = VtmlPrint();
    if (!v.OpenLedgerRows(QStringLiteral("DESC"), &error)) {
        Tell(error);
        return false;
    }
    return printed;
}

bool printPartnerList(PartnerMonthList& l)
{
    if (l.rowCount == 0) return true;
    ListPrintForm form(l);
    l.rows.rewind();
    l.rows.setMoneyColumns({QStringLiteral("Zenkaigaku"), QStringLiteral("NTotal"), QStringLiteral("Gaku"),
                            QStringLiteral("Zeigaku")});
    VtmlClear();
    const ReportDocument d = l.printDocument();
    PbSetRows(&l.rows);
    PbSetForm(&form);
    addAll(d);
    return VtmlPrint();
}

void writeSheet(const ReportSheet& sheet, ExcelBook& book)
{
    for (int r = 0; r < sheet.rows.size(); ++r)
        for (int c = 0; c < sheet.rows[r].size(); ++c) book.setCell(r + 1, c + 1, sheet.rows[r][c]);
    for (auto it = sheet.formats.constBegin(); it != sheet.formats.constEnd(); ++it)
        book.setFormat(it.key().first, it.key().second, it.value());
}

bool saveSheet(const ReportSheet& sheet, const QString& path, QString* error)
{
    ExcelBook book;
    if (!book.open()) {
        if (error) *error = QStringLiteral("エクセルファイルを作成できません。");
        return false;
    }
    writeSheet(sheet, book);
    return book.saveAs(path, error);
}
