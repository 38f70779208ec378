#include "slips/QtSlipPrint.h"

#include <QGuiApplication>
#include <QPrintDialog>
#include <QPrinter>

#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "slips/SlipSelect_frm.h"
#include "slips/SlipStyles.h"

namespace {
PrinterQuestion& printerHook()
{
    static PrinterQuestion f;
    return f;
}
SlipPageDrawer& drawerHook()
{
    static SlipPageDrawer f;
    return f;
}

bool askPrinter(QPrinter& printer)
{
    if (printerHook()) return printerHook()(printer);
    // Nobody can answer a dialog on the offscreen platform.
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) return true;
    QPrintDialog dialog(&printer);
    return dialog.exec() == QDialog::Accepted;
}
}  // namespace

void setPrinterQuestion(PrinterQuestion f) { printerHook() = std::move(f); }
void setSlipPageDrawer(SlipPageDrawer f) { drawerHook() = std::move(f); }
bool slipPageDrawerInstalled() { return bool(drawerHook()); }

bool PrintSlip(long dno, QPrinter& printer)
{
    // The mark of a print in progress, up for exactly the length of the print.
    Session& s = session();
    s.SlipPrinting = true;
    bool printed = false;
    if (!drawerHook())
        Tell(QStringLiteral("納品書の印刷はまだ用意されていません。伝票は保存されています。"));
    else
        printed = drawerHook()(dno, printer);
    s.SlipPrinting = false;
    return printed;
}

void printAfterSave(const QString& kind, long dno)
{
    // A purchase slip is saved by F9 and nothing is printed.
    if (kind != QLatin1String("Dur") || dno <= 0) return;
    Session& s = session();
    const short oldStyle = s.SlipStyle;
    if (slipStyleQuestionOn()) {
        SlipSelect_frm select;
        select.Init(QStringLiteral("Nou"));
        const int answer = select.choose();
        if (answer == -1) return;
        s.SlipStyle = short(answer);
    }
    QPrinter printer;
    if (askPrinter(printer)) PrintSlip(dno, printer);
    s.SlipStyle = oldStyle;
}
