#include "slips/SlipDno_frm.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "entry/Convert.h"
#include "entry/KeyCodes.h"
#include "shell/Dialogs.h"
#include "slips/SlipDnoCounters.h"

namespace {
const QString kFormat = QStringLiteral("#####0");
}

bool SlipDno_frm::mayOpen()
{
    SlipCounters c = slipCounterFields();
    if (readSlipCounters(c)) return true;
    Tell(QStringLiteral("Eigマスターのエラーです。"));
    return false;
}

SlipDno_frm::SlipDno_frm(QWidget* parent) : EntryForm(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    QList<FieldDecl> fields;
    const SlipCounters c = slipCounterFields();
    for (int i = 0; i < int(c.size()); ++i)
        fields << FieldDecl{c[i].caption, QStringLiteral("%1_N%2").arg(i, 2, 10, QLatin1Char('0')).arg(kFormat), c[i].column};
    buildForm(QStringLiteral("伝票番号"), fields, false, false);
    RecField()->setProperty("text", QStringLiteral("確認"));
    RecField()->setFixedWidth(RecField()->fontMetrics().horizontalAdvance(QStringLiteral("確認")) + 16);
    mode()->hide();
    setMinimumWidth(380);
    // Esc leaves, F10 or Enter on "確認" saves; there is nothing to delete here.
    Command(0)->setText(QStringLiteral("ESC:戻る"));
    Command(1)->hide();
    Command(3)->hide();
    clearDisplay();
}

void SlipDno_frm::clearDisplay()
{
    SlipCounters c = slipCounterFields();
    if (!readSlipCounters(c)) return;
    for (int i = 0; i < int(c.size()); ++i) ebox()[i]->setText(FormatRight(double(c[i].value), kFormat));
}

void SlipDno_frm::Register(const QString&)
{
    SlipCounters c = slipCounterFields();
    for (int i = 0; i < int(c.size()); ++i) {
        bool ok = true;
        c[i].value = ToInt32(DigitText(ebox()[i]->text()), &ok);
        // A counter of 0 would offer slip number 0, which no list shows.
        if (c[i].value < 1) {
            Tell(QStringLiteral("伝票番号が不正です。"));
            bu_.focusItem(i);
            return;
        }
    }
    if (writeSlipCounters(c)) close();
}

void SlipDno_frm::recFieldKeyDown(int& keyCode, int)
{
    if (keyCode == vbKeyReturn || keyCode == vbKeyF10) Register(bu_.State);
    else if (keyCode == vbKeyUp) bu_.moveLastItem();
    else if (keyCode == vbKeyEscape) bu_.Action(QStringLiteral("CLOSE"));
    keyCode = 0;
}
