#include "app/PrintReports.h"
#include "app/PrintInvoices.h"
#include "app/PrintSummaries.h"
#include "app/PrintLedgers.h"
#include <QGuiApplication>
#include "ledgers/LedgerCommands.h"
#include "pageout/QtPrintCommand.h"

void registerPrintReports()
{
    registerVtmlPrintReport();
    registerInvoicePrints();
    registerSummaryPrints();
    registerLedgerPrints();
}

namespace {
QtMessageHandler g_qtMessages = nullptr;

// Standard error is for the command's own messages: a script reads them.
void quietStartup(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg && message.startsWith(QLatin1String("QStandardPaths:"))) return;
    if (g_qtMessages) g_qtMessages(type, context, message);
}
}  // namespace

int runPrintMain(int argc, char** argv, const QStringList& args)
{
    // Fonts and PDF writing need a GUI application, but never a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    g_qtMessages = qInstallMessageHandler(quietStartup);
    QGuiApplication app(argc, argv);
    registerPrintReports();
    return runPrintCommand(args, processConsole());
}
