#include "masters/Kaisya_frm.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "entry/Convert.h"
#include "entry/Dates.h"
#include "entry/KeyCodes.h"
#include "entry/QtChoiceLists.h"
#include "entry/QtListFields.h"
#include "entry/Recordset.h"
#include "masters/CompanyRules.h"
#include "masters/QtMasterFields.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {
// Items; each field is declared at its item number.
enum Item {
    iName = 0, iSKai = 9, iEKai = 10, iSime = 11, iZeituuchi = 13, iHsuType = 14, iHsu = 15, iHiz = 16,
    iYear = 22, iMonth = 23, iDay = 24, iRateOld = 25, iRateNew = 26, iFirstBank = 27
};
const QString kCom = QStringLiteral("Com");
const QString kRatePicture = QStringLiteral("#0.00");

QList<FieldDecl> companyFields()
{
    const QString side = QStringLiteral(" ");
    QList<FieldDecl> f = {
        {"会社名", "00_S20", "Kaisya"},
        {"店名", "01_S20", "Tenmei"},
        {"会社名略称.", "02_S10", "Ryaku"},
        {"電話番号", "03_S12", "Tel"},
        {"ファックス", "04_S12", "Fax"},
        {"郵便番号", "05_S8", "Yubin"},
        {"住所１", "06_S30", "Addr1"},
        {"住所２", "07_S30", "Addr2"},
        {"会計期", "08_N###", "Ki"},
        {"開始会計期間", "09_S8", "SKai", side},
        {"終了会計期間", "10_S8", "EKai", side},
        {"請求締日", "11_N##", "Sime"},
        {"支払日", "12_N##", "sDate"},
        {"税額通知", "13*", "Zeituuchi"},
        {"端数処理ﾀｲﾌﾟ", "14*", "HsuType"},
        {"端数処理", "15*", "Hsu"},
        {"日付の設定", "16*", "Hiz"},
    };
    const char* const ranks[] = {"ランクＡ", "ランクＢ", "ランクＣ", "ランクＤ", "ランクＥ"};
    for (int i = 0; i < 5; ++i)
        f << FieldDecl{QString::fromUtf8(ranks[i]), QStringLiteral("%1_N##0.00").arg(17 + i),
                       QStringLiteral("Kake%1").arg(i + 1)};
    // The rate change: its date (kept in UserOP 725), the rate until then and the one after.
    f << FieldDecl{"税率変更日（年）", "22_S4", {}, {}, 1} << FieldDecl{"税率変更日（月）", "23_S4", {}, {}, 1}
      << FieldDecl{"税率変更日（日）", "24_S4", {}, side, 1}
      << FieldDecl{"消費税率（旧）", "25_N#0.00", "Zeiritu", {}, 1} << FieldDecl{"消費税率（新）", "26_N#0.00", {}, {}, 1};
    const char* const marks[] = {"①", "②", "③", "④"};
    for (int a = 0; a < 4; ++a) {
        const int item = iFirstBank + a * 4;
        const QString m = QString::fromUtf8(marks[a]);
        const QString n = QString::number(a + 1);
        f << FieldDecl{"振込先銀行" + m, QStringLiteral("%1_S20").arg(item), "Bank" + n, {}, 1}
          << FieldDecl{"振込先銀行支店" + m, QStringLiteral("%1_S20").arg(item + 1), "Mise" + n, {}, 1}
          << FieldDecl{"預金種類" + m, QString::number(item + 2), "shurui" + n, {}, 1}
          << FieldDecl{"口座番号" + m, QStringLiteral("%1_S10").arg(item + 3), "koza" + n, {}, 1};
    }
    return f;
}
}  // namespace

Kaisya_frm::Kaisya_frm(QWidget* parent) : EntryForm(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    buildForm(QStringLiteral("会社マスター"), companyFields(), false, false);
    auto list = [this](int item) { return qobject_cast<QComboBox*>(FieldWidget(*this, item)); };
    SetListZeituuchi(list(iZeituuchi));
    SetListHsuType(list(iHsuType));
    SetListHsu(list(iHsu));
    SetListHiz(list(iHiz));
    for (int a = 0; a < 4; ++a) SetListYokin(list(iFirstBank + a * 4 + 2));
    for (QLabel* l : {start(), fin(), weekday()}) {
        l->clear();
        l->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('0')) * 6);
    }
    bu_.clearDisplay();
    Display();
}

QLabel* Kaisya_frm::start() const { return SideLabel(*this, iSKai); }
QLabel* Kaisya_frm::fin() const { return SideLabel(*this, iEKai); }
QLabel* Kaisya_frm::weekday() const { return SideLabel(*this, iDay); }
QLineEdit* Kaisya_frm::item(int i) const { return qobject_cast<QLineEdit*>(FieldWidget(*this, i)); }

int Kaisya_frm::itemOfBox(int index) const
{
    QLineEdit* box = index >= 0 && index < ebox().size() ? ebox()[index] : nullptr;
    for (int i = 0; i < fields().size(); ++i)
        if (box && FieldWidget(*this, i) == box) return i;
    return -1;
}

void Kaisya_frm::Display()
{
    const std::optional<QVariantMap> row = ReadRow(session().MasterDb, kCom, {});
    if (row) {
        ShowFields(*this, kCom, [&](const QString& c) { return Col(*row, c); }, {QStringLiteral("Zeiritu")});
        start()->setText(periodMonth(NullToEmpty(Col(*row, QStringLiteral("SKai")))));
        fin()->setText(periodMonth(NullToEmpty(Col(*row, QStringLiteral("EKai")))));
    }
    checkedSKai_ = item(iSKai)->text();
    const Session& s = session();
    const DateBoxes d = DateToBoxes(s.TaxChangeDate);
    item(iYear)->setText(d.year);
    item(iMonth)->setText(d.month);
    item(iDay)->setText(d.day);
    weekday()->setText(d.weekday);
    item(iRateOld)->setText(FormatRight(s.Zeiritu, kRatePicture));
    item(iRateNew)->setText(FormatRight(s.TaxRateNew, kRatePicture));
}

void Kaisya_frm::formKeyDown(bool list, int index, int& keyCode, int shift)
{
    if (keyCode == vbKeyTab) keyCode = shift == vbShiftMask ? vbKeyUp : vbKeyReturn;
    if (keyCode == vbKeyF1) {   // the company cannot be cleared
        keyCode = 0;
        return;
    }
    if (keyCode == vbKeyF10) {
        saveAndClose();
        keyCode = 0;
        return;
    }
    if (list || keyCode != vbKeyReturn) return;
    const int it = itemOfBox(index);
    if (it == iName && !HasText(item(iName)->text())) {
        keyCode = 0;   // the company name is required
    } else if (it == iDay) {
        const DateBoxes d = DateToBoxes(BoxesToDate(item(iYear)->text(), item(iMonth)->text(), item(iDay)->text()));
        item(iYear)->setText(d.year);
        item(iMonth)->setText(d.month);
        item(iDay)->setText(d.day);
        weekday()->setText(d.weekday);
    }
}

void Kaisya_frm::eboxLeft(int index)
{
    const int it = itemOfBox(index);
    if (it == iSKai) {
        checkedSKai_.clear();   // leaving the box always works the period out again
        applyStartPeriod();
    } else if (it == iEKai) {
        fin()->setText(periodMonth(item(iEKai)->text()));
    }
}

void Kaisya_frm::recFieldKeyDown(int& keyCode, int shift)
{
    // Saving the company ends the form, from here as from F10: a cleared screen saved again
    // would empty the company.
    if (keyCode == vbKeyReturn) {
        saveAndClose();
        keyCode = 0;
        return;
    }
    EntryForm::recFieldKeyDown(keyCode, shift);
}

void Kaisya_frm::commandClick(int index)
{
    if (index == 1) return;   // no clearing
    if (index == 2) {
        saveAndClose();
        return;
    }
    EntryForm::commandClick(index);
}

// The start date's checks; a date not yet worked out sets the months and the end date.
bool Kaisya_frm::applyStartPeriod()
{
    QLineEdit* box = item(iSKai);
    const StartPeriod p = checkStartPeriod(box->text(), session().Nendo, int(ToNum(item(iSime)->text())));
    if (!p.message.isEmpty()) {
        Tell(p.message);
        SelectAll(box);
        return false;
    }
    if (box->text() != checkedSKai_) {
        start()->setText(p.start);
        item(iEKai)->setText(p.eKai);
        fin()->setText(p.fin);
        checkedSKai_ = box->text();
    }
    return true;
}

void Kaisya_frm::saveAndClose()
{
    saved_ = false;
    // F10 and the button save without leaving the field: the start date is checked here too,
    // or a year the store has no file for would be written.
    if (!applyStartPeriod()) {
        item(iSKai)->setFocus();
        return;
    }
    bu_.Action(QStringLiteral("REGISTER"));
    // A store that refused has said so; the screen stays with what was typed.
    if (saved_) bu_.Action(QStringLiteral("CLOSE"));
}

void Kaisya_frm::Register(const QString&)
{
    ColumnValues com;
    if (!ReadFields(*this, kCom, com)) return;
    // The first month follows the period; without one shown the stored month stays.
    if (HasText(start()->text())) com << ColumnValue{QStringLiteral("sTuki"), int(ToInt16(start()->text()))};
    RateChange rates;
    rates.changeDate = BoxesToDate(item(iYear)->text(), item(iMonth)->text(), item(iDay)->text());
    rates.zeiritu = ToCur(item(iRateOld)->text());
    rates.newRateText = item(iRateNew)->text();
    QSqlError err;
    saved_ = saveCompany(session().MasterDb, com, rates, &err);
    if (!saved_) Tell(StoreErrorText(err));
}

bool Kaisya_frm::deleteRec()
{
    Tell(QStringLiteral("会社は削除できません｡"));
    return false;
}

void Kaisya_frm::clearDisplay()
{
    start()->clear();
    fin()->clear();
}
