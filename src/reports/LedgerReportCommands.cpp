#include "reports/LedgerReportCommands.h"
#include "pageout/PrintRegistry.h"
#include "reports/LedgerReportPrint.h"
#include "reports/ListDaichou.h"
#include "reports/RepoSales.h"
#include "reports/Zandaka.h"

namespace {

bool digitsOnly(const QString& t)
{
    if (t.isEmpty() || t.size() > 9) return false;
    for (QChar c : t)
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) return false;
    return true;
}

// MMDD of the date range, checked as the range screen checks its boxes.
bool monthDay(const QString& text, int* month, int* day, QString* error)
{
    const QString t = text.trimmed();
    if (t.size() != 4 || !digitsOnly(t)) {
        *error = QStringLiteral("--from と --to は月日を4桁（MMDD）で指定してください。");
        return false;
    }
    *error = ListDaichou::checkRangeBox(ListDaichou::RangeBox::Month, t.left(2), month);
    if (error->isEmpty()) *error = ListDaichou::checkRangeBox(ListDaichou::RangeBox::Day, t.mid(2), day);
    return error->isEmpty();
}

bool ledgerRange(const QMap<QString, QString>& o, LedgerRange* r, QString* error)
{
    r->view = o.value(QStringLiteral("view")).trimmed();
    if (r->view != QLatin1String("Tdc") && r->view != QLatin1String("Sdc")) {
        *error = QStringLiteral("--view には Tdc（得意先元帳）か Sdc（仕入先元帳）を指定してください。");
        return false;
    }
    const bool byMonth = o.contains(QStringLiteral("month"));
    const bool byDates = o.contains(QStringLiteral("from")) || o.contains(QStringLiteral("to"));
    if (byMonth == byDates || (byDates && !(o.contains(QStringLiteral("from")) && o.contains(QStringLiteral("to"))))) {
        *error = QStringLiteral("--month か、--from と --to のどちらかを指定してください。");
        return false;
    }
    r->byMonth = byMonth;
    if (byMonth) {
        *error = ListDaichou::checkRangeBox(ListDaichou::RangeBox::Getudo, o.value(QStringLiteral("month")), &r->month);
        if (!error->isEmpty()) return false;
    } else if (!monthDay(o.value(QStringLiteral("from")), &r->startMonth, &r->startDay, error)
               || !monthDay(o.value(QStringLiteral("to")), &r->endMonth, &r->endDay, error)) {
        return false;
    }
    for (const char* key : {"partner", "dest"}) {
        const QString k = QString::fromLatin1(key);
        if (!o.contains(k)) continue;
        if (!digitsOnly(o.value(k).trimmed())) {
            *error = QStringLiteral("--%1 にはコード（数字）を指定してください。").arg(k);
            return false;
        }
    }
    r->partner = o.value(QStringLiteral("partner")).trimmed().toLongLong();
    r->nou = o.value(QStringLiteral("dest")).trimmed().toLongLong();
    if (r->nou != 0 && (r->partner == 0 || r->view != QLatin1String("Tdc"))) {
        *error = QStringLiteral("--dest は得意先元帳（Tdc）で --partner と共に指定してください。");
        return false;
    }
    return true;
}

bool runList(PartnerMonthList& list, const PrintRequest& q, QString* error)
{
    int month = 0, sime = 0;
    *error = PartnerMonthList::checkMonth(q.options.value(QStringLiteral("month")), &month);
    if (error->isEmpty()) *error = PartnerMonthList::checkSime(q.options.value(QStringLiteral("sime")), &sime);
    if (!error->isEmpty()) return false;
    if (q.checkOnly) return true;
    // No rows and a store failure have been told by the list.
    if (!list.read(month, sime) || list.rowCount == 0) return false;
    if (!q.xlsx.isEmpty()) return saveSheet(list.sheet(), q.xlsx, error);
    return printPartnerList(list);
}

}  // namespace

bool runLedgerPrint(const PrintRequest& q, QString* error)
{
    LedgerRange r;
    if (!ledgerRange(q.options, &r, error)) return false;
    if (q.checkOnly) return true;
    ListDaichou v;
    if (!v.Init(r) || v.rowCount == 0) return false;
    if (!q.xlsx.isEmpty()) {
        ReportSheet sheet;
        return v.exportSheet(&sheet, error) && saveSheet(sheet, q.xlsx, error);
    }
    return printLedgerView(v);
}

bool runBalancePrint(const PrintRequest& q, QString* error)
{
    const QString code = q.options.value(QStringLiteral("list")).trimmed();
    if (code != QLatin1String("Uza") && code != QLatin1String("UzaDtl") && code != QLatin1String("Kza")) {
        *error = QStringLiteral("--list には Uza、UzaDtl か Kza を指定してください。");
        return false;
    }
    Zandaka list(code);
    return runList(list, q, error);
}

bool runSalesPrint(const PrintRequest& q, QString* error)
{
    const QString code = q.options.value(QStringLiteral("list")).trimmed();
    if (code != QLatin1String("Uza") && code != QLatin1String("Kza")) {
        *error = QStringLiteral("--list には Uza か Kza を指定してください。");
        return false;
    }
    RepoSales list(code);
    return runList(list, q, error);
}
