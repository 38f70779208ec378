#include "masters/Deal_frm.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "entry/Convert.h"
#include "entry/KeyCodes.h"
#include "entry/QtChoiceLists.h"
#include "entry/QtListFields.h"
#include "entry/Utility.h"
#include "masters/DealRules.h"
#include "masters/QtMasterFields.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {
// Declared fields. The supplier's payment kind is declared last so that it is cbox(16), as
// the lists have always been numbered; it is laid out first among the supplier's fields.
enum Field {
    fCode = 0, fClass = 1, fName = 3, fShort = 4, fYubin = 6, fAddr1 = 7,
    fFirstCustomer = 18, fSime = 21, fBankCode = 25, fSeikyu = 26,
    fFirstSupplier = 27, fShiharai = 39, fSirShicode = 40, fCount = 41
};
// Items of the keyboard order.
constexpr int kItemClass = 1;
constexpr int kItemSime = 21;
// Boxes by their index in ebox.
enum Box { eCode = 0, eName = 2, eShort = 3, eYubin = 5, eAddr1 = 6, eSime = 12, eBankCode = 15, eSeikyu = 16, eShiharai = 23 };
// Lists by their index in cbox.
enum List { cClass = 0, cChi = 1, cKeisho = 2, cCku = 3, cZeituuchi = 4, cHsuType = 5, cHsu = 6,
            cTorShicode = 7, cTorTan = 8, cKTuki = 9, cSirTan = 10, cSimeFlag = 11, cShurui = 12,
            cFCode = 13, caCode = 14, cTesuryo = 15, cSirShicode = 16 };

QList<FieldDecl> dealFields(const DealKind& k)
{
    const QString side = QStringLiteral(" ");
    return {
        {"コード", "00_N#######", "Code"},
        {"分類コード", "01", k.classColumn},
        {"ふりがな", "02_S10", "Kana"},
        {"名称", "03_S20", "Namae"},
        {"略称", "04_S10", "Ryaku"},
        {"店名", "05_S20", "Tenmei"},
        {"郵便番号", "06_S8", "Yubin"},
        {"住所１", "07_S30", "Addr1"},
        {"住所２", "08_S30", "Addr2"},
        {"電話番号", "09_S12", "Tel"},
        {"FAX番号", "10_S12", "Fax"},
        {"担当者名", "11_S10", k.contactColumn},
        {"地位コード", "12", "ChiCode"},
        {"敬称", "13*", "KeishoCode"},
        {"地位コード", "14", "CkuCode"},   // the caption repeats, as it always has
        {"税額通知", "15*", "Zeituuchi"},
        {"端数処理ﾀｵﾌﾟ", "16*", "HsuType"},
        {"端数処理", "17*", "Hsu"},
        // customer
        {"支払コード", "18*", "Shicode", {}, 1},
        {"担当者", "19", "TanCode", {}, 1},
        {"ランク", "20_N##", "RCode", {}, 1},
        {"請求締日", "21_S10", "Sime", {}, 1},
        {"回収月", "22*", "KTuki", {}, 1},
        {"回収日", "23_N##", "KHi", {}, 1},
        {"月額最大売掛金", "24_N###,###,##0", "UMax", {}, 1},
        {"振込先銀行コード", "25_N#", "BankCode", side, 1},
        {"請求先コード", "26_N######", "Seikyu", side, 1},
        // supplier
        {"担当者", "28", "TanCode", {}, 1},
        {"締日反映", "29*", "SimeFlag", {}, 1},
        {"請求締日", "30_S10", "Sime", {}, 1},
        {"振込先銀行", "31_S20", "Bank", {}, 1},
        {"支店", "32_S20", "Mise", {}, 1},
        {"貯金種類", "33", "Shurui", {}, 1},
        {"口座番号", "34_S10", "Koza", {}, 1},
        {"カナ名称", "35_S20", "BKana", {}, 1},
        {"振込区分", "36*", "FCode", {}, 1},
        {"扱い", "37*", "aCode", {}, 1},
        {"手数料", "38*", "Tesuryo", {}, 1},
        {"手形ｻｲﾄ", "39_N##", "Saito", {}, 1},
        {"支払先ｺｰﾄﾞ", "40_N#####", "Shiharai", side, 1},
        {"支払コード", "27*", "Shicode", {}, 1},
    };
}
}  // namespace

Deal_frm::Deal_frm(QWidget* parent) : EntryForm(parent)
{
    // A fresh form for every opening, so the next one reads its own MenuKey.
    setAttribute(Qt::WA_DeleteOnClose);
    kind_ = dealKind(session().MenuKey);
    if (!kind_) kind_ = dealKind(QStringLiteral("Tor"));
    buildForm(kind_->title, dealFields(*kind_), true, true);
    QList<int> supplierRows = {fSirShicode};
    for (int f = fFirstSupplier; f < fSirShicode; ++f) supplierRows << f;
    PlaceRows(*this, supplierRows);
    fillLists();
    myrs_.open(session().MasterDb, kind_->menuKey);

    const int hideFrom = kind_->customer ? fFirstSupplier : fFirstCustomer;
    const int hideTo = kind_->customer ? fCount : fFirstSupplier;
    for (int f = hideFrom; f < hideTo; ++f) {
        QWidget* w = FieldWidget(*this, f);
        if (auto* list = qobject_cast<QComboBox*>(w)) bu_.setVisibleFalse(QStringLiteral("C"), int(cbox().indexOf(list)));
        else bu_.setVisibleFalse(QStringLiteral("E"), int(ebox().indexOf(qobject_cast<QLineEdit*>(w))));
        HideFieldRow(*this, f);
    }
    for (int f : {fBankCode, fSeikyu, fShiharai}) {
        QLabel* label = SideLabel(*this, f);
        auto* box = qobject_cast<QLineEdit*>(FieldWidget(*this, f));
        if (!label || !box) continue;
        label->clear();
        label->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('0')) * 20);
        // The label says what the box names; a box emptied (cleared, or by hand) names nothing.
        connect(box, &QLineEdit::textChanged, label, [label](const QString& t) {
            if (t.trimmed().isEmpty()) label->clear();
        });
    }
    bu_.clearDisplay();
}

void Deal_frm::fillLists()
{
    const QList<QComboBox*> c = cbox();
    if (kind_->customer) ListTbn(c[cClass]);
    else ListSbn(c[cClass]);
    ListChi(c[cChi]);
    SetListKeisho(c[cKeisho]);
    ListCku(c[cCku]);
    SetListZeituuchi(c[cZeituuchi]);
    SetListHsuType(c[cHsuType]);
    SetListHsu(c[cHsu]);
    SetListKingaku(c[cTorShicode]);
    ListTan(c[cTorTan]);
    SetListKaisyuTuki(c[cKTuki]);
    ListTan(c[cSirTan]);
    SetListHanei(c[cSimeFlag]);
    SetListYokin(c[cShurui]);
    SetListFurikomi(c[cFCode]);
    SetListAtukai(c[caCode]);
    SetListTesuryo(c[cTesuryo]);
    SetListKingaku(c[cSirShicode]);
}

QString Deal_frm::MenuKey() const { return kind_->menuKey; }
QLabel* Deal_frm::BankLabel() const { return SideLabel(*this, fBankCode); }
QLabel* Deal_frm::SeikyuLabel() const { return SideLabel(*this, fSeikyu); }
QLabel* Deal_frm::ShiharaiLabel() const { return SideLabel(*this, fShiharai); }

qint64 Deal_frm::nextFreeCode() const { return ::nextFreeCode(session().MasterDb, *kind_); }

bool Deal_frm::CheckTbnSbn()
{
    const QString refusal = classMissingMessage(session().MasterDb, *kind_);
    if (refusal.isEmpty()) return false;
    Tell(refusal);
    // Closed once the showing is over; nothing can be typed before that.
    QMetaObject::invokeMethod(this, [this] { bu_.Action(QStringLiteral("CLOSE")); }, Qt::QueuedConnection);
    return true;
}

void Deal_frm::showEvent(QShowEvent* event)
{
    EntryForm::showEvent(event);
    if (checked_) return;
    checked_ = true;
    CheckTbnSbn();
}

void Deal_frm::formKeyDown(bool list, int index, int& keyCode, int shift)
{
    if (keyCode == vbKeyTab) keyCode = shift == vbShiftMask ? vbKeyUp : vbKeyReturn;
    if (keyCode == vbKeyF10) {
        // Saving from the closing day box leaves it only afterwards: its guard comes first.
        if ((!list && index == eSime && guardSime()) || !checkBeforeSave()) keyCode = 0;
        return;
    }
    if (list) {
        if (keyCode == vbKeyF6) {
            listLookUp(index);
            keyCode = 0;
        }
        return;
    }
    const QList<QLineEdit*> b = ebox();
    if (keyCode == vbKeyF6 && (index == eCode || index == eShiharai)) {
        const QString table = index == eCode ? kind_->menuKey : QStringLiteral("Sir");
        const std::optional<QString> hit = LookUp(this, table, QStringLiteral("ALL"));
        keyCode = 0;
        if (!hit) return;
        b[index]->setText(*hit);
        keyCode = vbKeyReturn;
    }
    if (keyCode != vbKeyReturn) return;
    if (index == eYubin && HasText(b[eYubin]->text())) {
        const QString digits = DigitText(b[eYubin]->text());
        const QString address = digits == QLatin1String("0") ? QString() : ZipAddress(digits);
        if (!address.isEmpty()) b[eAddr1]->setText(CutToBytes(address, b[eAddr1]->maxLength()));
    } else if (index == eBankCode || index == eSeikyu || index == eShiharai) {
        fillSideLabel(index);
    }
}

void Deal_frm::listLookUp(int index)
{
    QString table;
    switch (index) {
    case cClass: table = kind_->classTable; break;
    case cChi: table = QStringLiteral("Chi"); break;
    case cCku: table = QStringLiteral("Cku"); break;
    case cTorTan:
    case cSirTan: table = QStringLiteral("Tan"); break;
    default: return;
    }
    const std::optional<QString> hit = LookUp(this, table);
    if (hit) FindListCode(cbox()[index], int(ToNum(*hit)));
}

void Deal_frm::fillSideLabel(int index)
{
    const QLineEdit* box = ebox()[index];
    const qint64 number = CodeNumber(box->text());
    QString text;
    if (index == eBankCode) text = bankText(session().MasterDb, int(number));
    else if (index == eSeikyu) text = partnerRyaku(session().MasterDb, QStringLiteral("Tor"), number);
    else text = partnerRyaku(session().MasterDb, QStringLiteral("Sir"), number);
    const int field = index == eBankCode ? fBankCode : index == eSeikyu ? fSeikyu : fShiharai;
    if (QLabel* label = SideLabel(*this, field)) label->setText(text);
}

void Deal_frm::eboxLeft(int index)
{
    const QList<QLineEdit*> b = ebox();
    if (index == eName) {
        CopyIfEmpty(b[eName], b[eShort]);
    } else if (index == eSime) {
        guardSime();
    }
}

bool Deal_frm::guardSime()
{
    if (!kind_->customer) return false;   // a supplier's closing day may change at any time
    // Every month already closed hangs on it: a customer's closing day stays as created.
    QLineEdit* sime = ebox()[eSime];
    const std::optional<int> stored = storedTorSime(session().MasterDb, CodeNumber(ebox()[eCode]->text()));
    if (!stored || ToNum(sime->text()) == *stored) return false;
    sime->setText(FormatRight(double(*stored), QStringLiteral("##")));
    Tell(QStringLiteral("締日は変更できません｡"));
    return true;
}

bool Deal_frm::checkBeforeSave()
{
    const DealCheck c = dealSaveCheck(*kind_, ebox()[eSime]->text(), ListCode(cbox()[cClass]));
    if (c.message.isEmpty()) return true;
    Tell(c.message);
    bu_.focusItem(c.onSime ? kItemSime : kItemClass);
    return false;
}

void Deal_frm::recFieldKeyDown(int& keyCode, int shift)
{
    if (keyCode == vbKeyReturn && !checkBeforeSave()) {
        keyCode = 0;
        return;
    }
    EntryForm::recFieldKeyDown(keyCode, shift);
}

void Deal_frm::commandClick(int index)
{
    if (index == 2 && !checkBeforeSave()) return;
    EntryForm::commandClick(index);
}

void Deal_frm::clearDisplay()
{
    for (QLabel* l : {BankLabel(), SeikyuLabel(), ShiharaiLabel()})
        if (l) l->clear();
}

void Deal_frm::Display()
{
    ShowFields(*this, kind_->menuKey, [this](const QString& column) { return myrs_.value(column); });
    if (kind_->customer) {
        fillSideLabel(eBankCode);
        fillSideLabel(eSeikyu);
    } else {
        fillSideLabel(eShiharai);
    }
}

void Deal_frm::Register(const QString& mode)
{
    // Reached past the keys' own checks only by a direct call; the store stays as it was.
    const DealCheck c = dealSaveCheck(*kind_, ebox()[eSime]->text(), ListCode(cbox()[cClass]));
    if (!c.message.isEmpty()) {
        Tell(c.message);
        return;
    }
    ColumnValues values;
    if (!ReadFields(*this, kind_->menuKey, values, {QStringLiteral("Code")})) return;
    const qint64 code = CodeNumber(ebox()[eCode]->text());
    if (kind_->customer && mode != QLatin1String("NEW")) {
        // A save that never left the box (a button) keeps the stored closing day all the same.
        if (const std::optional<int> stored = storedTorSime(session().MasterDb, code)) {
            for (ColumnValue& v : values)
                if (v.column == QLatin1String("Sime")) v.value = *stored;
        }
    }
    const DealSaveOutcome out = registerDeal(myrs_, *kind_, mode, code, values);
    if (out.codeChanged) ebox()[eCode]->setText(ToText(out.code));
}

bool Deal_frm::deleteRec()
{
    const qint64 code = CodeNumber(ebox()[eCode]->text());
    if (!myrs_.FindFirst(code)) return false;
    const QString refusal = dealSlipRefusal(session().MasterDb, *kind_, code);
    if (!refusal.isEmpty()) {
        Tell(refusal);
        return false;
    }
    if (!Ask(kind_->deleteQuestion, QStringLiteral("はい"), QStringLiteral("いいえ"))) return false;
    const ErrorClass e = myrs_.Delete();
    if (e == ErrorClass::None) return true;
    Tell(StoreErrorText(myrs_.lastError()));
    return false;
}
