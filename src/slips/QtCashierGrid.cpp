// The money rows of Cashier_frm: the focus walk of each cell, row shifting and the sum.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "entry/Convert.h"
#include "entry/KeyCodes.h"
#include "slips/Cashier_frm.h"
#include "slips/QtSlipScreens.h"

namespace {
QLineEdit* edit(QWidget* w) { return qobject_cast<QLineEdit*>(w); }
QComboBox* combo(QWidget* w) { return qobject_cast<QComboBox*>(w); }
}  // namespace

void Cashier_frm::pushRows()
{
    for (int r = 0; r < CashSlipEditor::RowCount; ++r) {
        CashRow& row = ed_.rows[r];
        row.Kubun = combo(cells_[r][dKubun])->currentIndex();
        row.Naiyou = edit(cells_[r][dNaiyou])->text();
        row.Gaku = edit(cells_[r][dGaku])->text();
    }
}

void Cashier_frm::pullRows()
{
    for (int r = 0; r < CashSlipEditor::RowCount; ++r) {
        const CashRow& row = ed_.rows[r];
        QComboBox* k = combo(cells_[r][dKubun]);
        k->setCurrentIndex(row.Kubun < k->count() ? row.Kubun : -1);
        if (edit(cells_[r][dNaiyou])->text() != row.Naiyou) edit(cells_[r][dNaiyou])->setText(row.Naiyou);
        if (edit(cells_[r][dGaku])->text() != row.Gaku) edit(cells_[r][dGaku])->setText(row.Gaku);
    }
    gakukei_->setText(ed_.Gakukei);
}

void Cashier_frm::focusCell(GridField f, int row)
{
    if (row < 0 || row >= CashSlipEditor::RowCount) return;
    cells_[row][f]->setFocus(Qt::OtherFocusReason);
}

void Cashier_frm::gridLeft(GridField f, int row)
{
    QLineEdit* b = edit(cells_[row][f]);
    if (!b) return;
    if (f == dNaiyou) {
        const QString cut = CutToBytes(b->text(), 30);
        if (cut != b->text()) b->setText(cut);
        return;
    }
    const QString shown = CashSlipEditor::formatGaku(b->text());
    if (shown != b->text()) b->setText(shown);
    pushRows();
    ed_.SumGaku();
    gakukei_->setText(ed_.Gakukei);
}

void Cashier_frm::rowDelete(int row)
{
    pushRows();
    ed_.deleteCashRow(row);
    pullRows();
}

void Cashier_frm::rowInsert(int row)
{
    pushRows();
    ed_.insertCashRow(row);
    pullRows();
}

bool Cashier_frm::gridKey(GridField f, int row, int key)
{
    const bool enter = key == vbKeyReturn;
    const bool up = key == vbKeyUp, down = key == vbKeyDown;
    if (key == vbKeyEscape) {
        bu_.Action(QStringLiteral("CLOSE"));
        return true;
    }
    if (key == vbKeyTab) return true;
    switch (f) {
    case dKubun:
        if (enter) {
            pushRows();
            ed_.takeUsualKind(row);
            pullRows();
            focusCell(dNaiyou, row);
        } else if (up) {
            if (row > 0) focusCell(dKubun, row - 1);
            else bu_.focusItem(8);
        } else if (down) {
            focusCell(dKubun, row + 1);
        } else if (key == vbKeyDelete) {
            pushRows();
            ed_.blankRow(row);
            pullRows();
        } else {
            return false;
        }
        return true;
    case dNaiyou:
        if (enter || down) focusCell(dGaku, row);
        else if (up) focusCell(dKubun, row);
        else return false;
        return true;
    case dGaku:
        if (enter) {
            gridLeft(dGaku, row);
            if (row < CashSlipEditor::RowCount - 1) focusCell(dKubun, row + 1);
            // The last row asks before it saves; on no the amount keeps the focus.
            else if (SlipScreens::askPlain(QStringLiteral("確認"), QStringLiteral("登録します。\nよろしいですか？"), false))
                doFunctionKey(vbKeyF10);
        } else if (up) {
            focusCell(dNaiyou, row);
        } else if (!down) {
            return false;
        }
        return true;
    default:
        return false;
    }
}
