#include "masters/SysFunc_frm.h"

#include <QLabel>
#include <QLineEdit>

#include "entry/Convert.h"
#include "entry/KeyCodes.h"
#include "masters/SystemRows.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

SysFunc_frm::SysFunc_frm(QWidget* parent) : EntryForm(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    buildForm(QStringLiteral("System Function"),
              {{QStringLiteral("Code"), QStringLiteral("00_N########"), QStringLiteral("Code")},
               {QStringLiteral("contents"), QStringLiteral("01_S50"), QStringLiteral("contents")}},
              false, false);
    rows_.open(session().MasterDb, QStringLiteral("zSysFunc"));
}

void SysFunc_frm::showRow()
{
    ebox()[0]->setText(FormatRight(double(rows_.currentKey()), QStringLiteral("#######0")));
    ebox()[1]->setText(NullToEmpty(rows_.value(QStringLiteral("contents"))));
}

void SysFunc_frm::formKeyDown(bool list, int index, int& keyCode, int shift)
{
    if (list || index != 0) return;
    if (keyCode == vbKeyTab) keyCode = shift == vbShiftMask ? vbKeyUp : vbKeyReturn;
    if (keyCode != vbKeyReturn && keyCode != vbKeyDown) return;
    QLineEdit* code = ebox()[0];
    const qint64 number = CodeNumber(code->text());
    if (number == 0 || number == bu_.CurCode) return;
    if (rows_.FindFirst(number)) {
        bu_.State = QStringLiteral("EDIT");
        showRow();
        mode()->setText(QStringLiteral("参照"));
        code->selectAll();
        bu_.CurCode = number;
        keyCode = 0;
        return;
    }
    bu_.State = QStringLiteral("NEW");
    bu_.clearDisplay();
    code->setText(FormatRight(double(number), QStringLiteral("#######0")));
    mode()->setText(QStringLiteral("新規"));
    bu_.CurCode = number;
}

void SysFunc_frm::Register(const QString&)
{
    bool ok = true;
    const qint32 code = ToInt32(ebox()[0]->text(), &ok);
    if (!ok) return;   // no row can have such a code
    saveSysFuncRow(rows_, code, ebox()[1]->text());
}

bool SysFunc_frm::deleteRec()
{
    const QString question = sysFuncDeleteQuestion(rows_);
    if (question.isEmpty()) return false;
    if (!Ask(question, QStringLiteral("OK"), QStringLiteral("キャンセル"))) return false;
    if (rows_.Delete() == ErrorClass::None) return true;
    Tell(StoreErrorText(rows_.lastError()));
    return false;
}
