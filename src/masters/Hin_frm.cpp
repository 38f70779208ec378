#include "masters/Hin_frm.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "entry/Convert.h"
#include "entry/KeyCodes.h"
#include "entry/QtChoiceLists.h"
#include "entry/QtListFields.h"
#include "entry/Recordset.h"
#include "masters/HinRules.h"
#include "masters/QtMasterFields.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {
enum Box { eCode = 0 };
enum List { cHbn = 0, cZei = 1 };
const QString kHin = QStringLiteral("Hin");

QList<FieldDecl> hinFields()
{
    return {
        {"商品コード", "00_S13", "Code"},
        {"商品分類", "01", "HbnCode"},
        {"ﾌﾘｶﾞﾅ", "02_S10", "Kana"},
        {"商品名", "03_S30", "Namae"},
        {"略称", "04_S10", "Ryaku"},
        {"販売単価", "05_N##,##0.00", "UTanka"},
        {"仕入単価", "06_N##,##0.00", "STanka"},
        {"消費税分類", "07*", "ZeiFlag"},
    };
}
}  // namespace

Hin_frm::Hin_frm(QWidget* parent) : EntryForm(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    buildForm(QStringLiteral("商品マスター"), hinFields(), false, true);
    FillList(cbox()[cHbn], session().MasterDb, QStringLiteral("SELECT * FROM Hbn ORDER BY Code"), {},
             QStringLiteral("Namae"), QStringLiteral("Code"));
    cbox()[cHbn]->setCurrentIndex(-1);
    SetListZei(cbox()[cZei]);
    FitHelpLine(*this);
    bu_.clearDisplay();
}

void Hin_frm::formKeyDown(bool list, int index, int& keyCode, int shift)
{
    if (keyCode == vbKeyTab) keyCode = shift == vbShiftMask ? vbKeyUp : vbKeyReturn;
    // F10 saves and clears, whatever field it comes from.
    if (keyCode == vbKeyF10) {
        bu_.Action(QStringLiteral("REGISTER"));
        bu_.Action(QStringLiteral("CLEAR"));
        keyCode = 0;
        return;
    }
    if (list) {
        if (keyCode == vbKeyF6 && index == cHbn) {
            keyCode = 0;
            if (const std::optional<QString> hit = LookUp(this, QStringLiteral("Hbn")))
                FindListCode(cbox()[cHbn], int(ToNum(*hit)));
        }
        return;
    }
    if (index != eCode) return;
    if (keyCode == vbKeyF6 && shift == 0) {
        keyCode = 0;
        const std::optional<QString> hit = LookUp(this, kHin);
        if (!hit) return;
        ebox()[eCode]->setText(*hit);
        keyCode = vbKeyReturn;
    }
    if (keyCode == vbKeyReturn) findProduct();
}

void Hin_frm::findProduct()
{
    const std::optional<QVariantMap> row = hinRow(session().MasterDb, hinStoreCode(ebox()[eCode]->text()));
    if (!row) {
        ClearFieldsFrom(*this, 1);
        mode()->setText(QStringLiteral("新規"));
        bu_.State = QStringLiteral("NEW");
        return;
    }
    mode()->setText(QStringLiteral("修正"));
    bu_.State = QStringLiteral("EDIT");
    Display(*row);
}

void Hin_frm::Display(const QVariantMap& row)
{
    ShowFields(*this, kHin, [&](const QString& c) { return Col(row, c); }, {QStringLiteral("Code")});
    ebox()[eCode]->setText(hinScreenCode(NullToEmpty(Col(row, QStringLiteral("Code")))));
}

void Hin_frm::commandClick(int index)
{
    EntryForm::commandClick(index);
    if (index == 2) bu_.Action(QStringLiteral("CLEAR"));
}

void Hin_frm::Register(const QString&)
{
    ColumnValues values;
    if (!ReadFields(*this, kHin, values, {QStringLiteral("Code")})) return;
    QSqlError err;
    if (registerHin(session().MasterDb, hinStoreCode(ebox()[eCode]->text()), values, &err) != ErrorClass::None)
        Tell(StoreErrorText(err));
}

bool Hin_frm::deleteRec()
{
    if (!Ask(QStringLiteral("このマスターを削除しますか？"), QStringLiteral("削除"), QStringLiteral("取消"))) return false;
    const QString code = hinStoreCode(ebox()[eCode]->text());
    const QString refusal = hinSlipRefusal(session().MasterDb, code);
    if (!refusal.isEmpty()) {
        Tell(refusal);
        return false;
    }
    QSqlError err;
    if (deleteHin(session().MasterDb, code, &err) == ErrorClass::None) return true;
    Tell(StoreErrorText(err));
    return false;
}
