#include "app/PrintSummaries.h"
#include "pageout/PrintRegistry.h"
#include "reports/QtSummaryPrints.h"

namespace {

void add(const char* name, const QString& usage, const QStringList& options, const QStringList& required,
         std::function<bool(const PrintRequest&, QString*)> run)
{
    PrintReportEntry e;
    e.name = QString::fromLatin1(name);
    e.usage = usage;
    e.options = options;
    e.required = required;
    e.xlsx = true;
    e.run = std::move(run);
    registerPrintReport(e);
}

} // namespace

void registerSummaryPrints()
{
    add("products", QStringLiteral("--mode Uri|Kai --from YYYYMMDD --to YYYYMMDD [--partner C]  商品別売上集計・商品別仕入集計"),
        {QStringLiteral("mode"), QStringLiteral("from"), QStringLiteral("to"), QStringLiteral("partner")},
        {QStringLiteral("mode"), QStringLiteral("from"), QStringLiteral("to")}, printProducts);
    add("monthly",
        QStringLiteral("--month M --sime D [--customer C] [--dest N] [--split 0|1]  販売商品月次控"),
        {QStringLiteral("month"), QStringLiteral("sime"), QStringLiteral("customer"), QStringLiteral("dest"),
         QStringLiteral("split")},
        {QStringLiteral("month"), QStringLiteral("sime")}, printMonthly);
    add("cutoff", QStringLiteral("--code URI|KAI|TAN --from YYYYMMDD --to YYYYMMDD [--order 1|2|3]  帳端 (担当者別売上ほか)"),
        {QStringLiteral("code"), QStringLiteral("from"), QStringLiteral("to"), QStringLiteral("order")},
        {QStringLiteral("code"), QStringLiteral("from"), QStringLiteral("to")}, printCutoff);
}
