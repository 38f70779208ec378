#include "pageout/PrintRegistry.h"

namespace {
QList<PrintReportEntry>& registry()
{
    static QList<PrintReportEntry> r;
    return r;
}
}  // namespace

void registerPrintReport(const PrintReportEntry& e)
{
    // Registering twice (a test that builds the list again) replaces the entry.
    for (PrintReportEntry& old : registry())
        if (old.name == e.name) {
            old = e;
            return;
        }
    registry() << e;
}

const QList<PrintReportEntry>& printReports() { return registry(); }

const PrintReportEntry* findPrintReport(const QString& name)
{
    for (const PrintReportEntry& e : registry())
        if (e.name == name) return &e;
    return nullptr;
}
