// `velmora print ledger | balances | sales`: the partner ledgers, balance lists and sales lists.
#include "app/PrintLedgers.h"
#include "pageout/PrintRegistry.h"
#include "reports/LedgerReportCommands.h"

void registerLedgerPrints()
{
    auto entry = [](const char* name, const char* usage, const QStringList& options, const QStringList& required,
                    std::function<bool(const PrintRequest&, QString*)> run) {
        PrintReportEntry e;
        e.name = QString::fromLatin1(name);
        e.usage = QString::fromUtf8(usage);
        e.options = options;
        e.required = required;
        e.xlsx = true;
        e.run = std::move(run);
        registerPrintReport(e);
    };
    entry("ledger", "--view Tdc|Sdc (--month M | --from MMDD --to MMDD) [--partner C] [--dest N]  得意先元帳・仕入先元帳",
          {"view", "month", "from", "to", "partner", "dest"}, {"view"}, runLedgerPrint);
    entry("balances", "--list Uza|UzaDtl|Kza --month M [--sime D]  売掛・買掛残高一覧", {"list", "month", "sime"},
          {"list", "month"}, runBalancePrint);
    entry("sales", "--list Uza|Kza --month M [--sime D]  売上・仕入一覧表", {"list", "month", "sime"}, {"list", "month"},
          runSalesPrint);
}
