#include "masters/Nou_frm.h"
#include <QPushButton>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "entry/Convert.h"
#include "entry/KeyCodes.h"
#include "entry/QtChoiceLists.h"
#include "entry/Recordset.h"
#include "entry/QtListFields.h"
#include "entry/Utility.h"
#include "masters/NouRules.h"
#include "masters/QtMasterFields.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {
enum Field { fTor = 0, fCode = 1, fFirstData = 2 };
enum Box { eTor = 0, eCode = 1, eName = 3, eShort = 4, eYubin = 7, eAddr1 = 8 };
enum List { cChi = 0, cKeisho = 1, cSeiFlag = 2, cCku = 3 };
const QString kCodePicture = QStringLiteral("######");

QList<FieldDecl> nouFields()
{
    return {
        {"得意先コード", "00_N######", "TorCode", QStringLiteral(" ")},
        {"納入先コード", "01_N######", "Code"},
        {"ふりがな", "02_S10", "Kana"},
        {"納入先名", "03_S20", "Namae"},
        {"納入先略称", "04_S10", "Ryaku"},
        {"店名", "05_S20", "Tenmei"},
        {"担当者地位", "06", "ChiCode"},
        {"担当者", "07_S10", "Ntantou"},
        {"敬称", "08*", "KeishoCode"},
        {"郵便番号", "09_S8", "Yubin", {}, 1},
        {"住所１", "10_S30", "Addr1", {}, 1},
        {"住所２", "11_S30", "Addr2", {}, 1},
        {"電話番号", "12_S12", "Tel", {}, 1},
        {"FAX番号", "13_S12", "Fax", {}, 1},
        {"請求先", "14*", "SeiFlag", {}, 1},
        {"地区コード", "15", "CkuCode", {}, 1},
    };
}
}  // namespace

Nou_frm::Nou_frm(QWidget* parent) : EntryForm(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    buildForm(QStringLiteral("納入先マスター"), nouFields(), false, true);
    // This screen's clear button has always been captioned in half-width kana.
    for (QPushButton* b : commandButtons())
        if (b->text() == QLatin1String("画面クリア(F1)")) b->setText(QStringLiteral("画面ｸﾘｱ(F1)"));
    const QList<QComboBox*> c = cbox();
    ListChi(c[cChi]);
    SetListKeisho(c[cKeisho]);
    SetListSeikyu(c[cSeiFlag]);
    ListCku(c[cCku]);
    if (QLabel* l = TorLabel()) {
        l->clear();
        l->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('0')) * 22);
    }
    bu_.clearDisplay();
}

QLabel* Nou_frm::TorLabel() const { return SideLabel(*this, fTor); }

qint64 Nou_frm::torCode() const { return CodeNumber(ebox()[eTor]->text()); }

qint64 Nou_frm::nextFreeNouCode() const { return ::nextFreeNouCode(session().MasterDb, torCode()); }

void Nou_frm::formKeyDown(bool list, int index, int& keyCode, int shift)
{
    if (keyCode == vbKeyTab) keyCode = shift == vbShiftMask ? vbKeyUp : vbKeyReturn;
    if (list) return;
    const QList<QLineEdit*> b = ebox();
    if (keyCode == vbKeyF6 && index == eTor) {
        // A class first, then its customers.
        keyCode = 0;
        const std::optional<QString> tbn = LookUp(this, QStringLiteral("Tbn"));
        if (!tbn) return;
        const std::optional<QString> tor = LookUp(this, QStringLiteral("Tor"), tbn->trimmed());
        if (!tor) return;
        b[eTor]->setText(*tor);
        // The lookup window held the focus, so the field may never see itself left: show the name now.
        eboxLeft(eTor);
        keyCode = vbKeyReturn;
    } else if (keyCode == vbKeyF6 && index == eCode) {
        keyCode = 0;
        const std::optional<QString> nou = LookUp(this, QStringLiteral("Nou"), ToText(torCode()));
        if (!nou) return;
        b[eCode]->setText(*nou);
        keyCode = vbKeyReturn;
    }
    if (keyCode != vbKeyReturn) return;
    if (index == eCode) findDestination();
}

void Nou_frm::findDestination()
{
    QLineEdit* box = ebox()[eCode];
    qint64 code = CodeNumber(box->text());
    if (code == 0) code = nextFreeNouCode();
    const std::optional<QVariantMap> row = nouRow(session().MasterDb, torCode(), code);
    if (!row) {
        // A new destination: the other fields start empty.
        ClearFieldsFrom(*this, fFirstData);
        bu_.State = QStringLiteral("NEW");
        mode()->setText(QStringLiteral("新規"));
    } else {
        bu_.State = QStringLiteral("EDIT");
        mode()->setText(QStringLiteral("参照"));
        ShowFields(*this, QStringLiteral("Nou"), [&](const QString& c) { return Col(*row, c); },
                   {QStringLiteral("TorCode"), QStringLiteral("Code")});
    }
    box->setText(FormatRight(double(code), kCodePicture));
    bu_.CurCode = code;
}

void Nou_frm::eboxLeft(int index)
{
    const QList<QLineEdit*> b = ebox();
    if (index == eYubin) {
        // Leaving the postal code, by any key, fills the first address line.
        if (!HasText(b[eYubin]->text())) return;
        const QString digits = DigitText(b[eYubin]->text());
        const QString address = digits == QLatin1String("0") ? QString() : ZipAddress(digits);
        if (!address.isEmpty()) b[eAddr1]->setText(CutToBytes(address, b[eAddr1]->maxLength()));
        return;
    }
    if (index != eTor) return;
    const std::optional<QString> name = torNamae(session().MasterDb, torCode());
    if (!name) {
        bu_.Action(QStringLiteral("CLEAR"));
        return;
    }
    if (QLabel* l = TorLabel()) l->setText(name->trimmed());
}

void Nou_frm::clearDisplay()
{
    if (QLabel* l = TorLabel()) l->clear();
}

void Nou_frm::Register(const QString& mode)
{
    ColumnValues values;
    if (!ReadFields(*this, QStringLiteral("Nou"), values, {QStringLiteral("TorCode"), QStringLiteral("Code")})) return;
    qint64 code = CodeNumber(ebox()[eCode]->text());
    if (code == 0) code = nextFreeNouCode();
    const NouSaveOutcome out = registerNou(session().MasterDb, mode, torCode(), code, values);
    if (out.saved) ebox()[eCode]->setText(FormatRight(double(out.code), kCodePicture));
}

bool Nou_frm::deleteRec()
{
    const qint64 tor = torCode();
    const qint64 code = CodeNumber(ebox()[eCode]->text());
    if (!nouRow(session().MasterDb, tor, code)) return false;
    const QString refusal = nouSlipRefusal(session().MasterDb, tor, code);
    if (!refusal.isEmpty()) {
        Tell(refusal);
        return false;
    }
    if (!Ask(QStringLiteral("この納入先を削除しますか？"), QStringLiteral("はい"), QStringLiteral("いいえ"))) return false;
    QSqlError err;
    if (deleteNou(session().MasterDb, tor, code, &err) == ErrorClass::None) return true;
    Tell(StoreErrorText(err));
    return false;
}
