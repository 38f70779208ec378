#include "slips/QtSlipPrint.h"

#include <QApplication>
#include <QPrinter>

#include "pageout/QtPageOutputs.h"
#include "shell/Session.h"
#include "slips/SlipSelect_frm.h"
#include "slips/SlipStyles.h"
#include "slips/Slip_prn.h"

namespace {
SlipPageDrawer& drawerHook()
{
    static SlipPageDrawer f;
    return f;
}
}  // namespace

void setPrinterQuestion(PrinterQuestion f) { setPrinterChooser(std::move(f)); }
void setSlipPageDrawer(SlipPageDrawer f) { drawerHook() = std::move(f); }

bool PrintSlip(long dno)
{
    Session& s = session();
    s.SlipPrinting = true;
    bool printed = false;
    if (drawerHook()) {
        printed = drawerHook()(dno);
    } else {
        Slip_prn prn(s.MasterDb);
        printed = prn.PrintSlip(dno, nullptr);
    }
    s.SlipPrinting = false;
    return printed;
}

void printAfterSave(const QString& kind, long dno)
{
    // A purchase slip is saved by F9 and nothing is printed.
    if (kind != QLatin1String("Dur") || dno <= 0) return;
    Session& s = session();
    const short oldStyle = s.SlipStyle;
    QWidget* screen = QApplication::activeWindow();
    if (slipStyleQuestionOn()) {
        SlipSelect_frm select(screen);
        select.Init(QStringLiteral("Nou"));
        const int answer = select.choose();
        if (screen) screen->activateWindow();
        if (answer == -1) return;
        s.SlipStyle = short(answer);
    }
    // The printer question comes first, in preview mode as well; cancelling prints nothing.
    std::unique_ptr<PageOutput> out = makePrinterOutput(screen);
    if (out && s.PreviewMode) out = makePreviewOutput(screen);
    if (out) printTo(*out, [dno] { return PrintSlip(dno); });
    s.SlipStyle = oldStyle;
}
