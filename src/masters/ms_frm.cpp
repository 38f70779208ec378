#include "masters/ms_frm.h"

#include <QLabel>
#include <QLineEdit>

#include "entry/Convert.h"
#include "entry/Help_frm.h"
#include "entry/KeyCodes.h"
#include "entry/QtListFields.h"
#include "masters/SimpleMaster.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

ms_frm::ms_frm(QWidget* parent) : ms_frm(session().MenuKey, parent) {}

ms_frm::ms_frm(const QString& menuKey, QWidget* parent) : EntryForm(parent)
{
    // A fresh form for every opening, so the next one reads its own MenuKey.
    setAttribute(Qt::WA_DeleteOnClose);
    load(menuKey);
}

void ms_frm::load(const QString& menuKey)
{
    menuKey_ = menuKey;
    kind_ = simpleMasterKind(menuKey);
    static const SimpleMasterKind none;
    const SimpleMasterKind& k = kind_ ? *kind_ : none;
    auto label = [&](int i) { return i < k.labels.size() ? k.labels[i] : QString(); };
    QList<FieldDecl> fields = {
        {label(0), QStringLiteral("00_N####0"), QStringLiteral("Code")},
        {label(1), QStringLiteral("01_S10"), QStringLiteral("kana")},
        {label(2), QStringLiteral("02_S20"), QStringLiteral("Namae")},
        {label(3), QStringLiteral("03_S10"), QStringLiteral("Ryaku")},
    };
    if (k.hasLevel) fields << FieldDecl{label(4), QStringLiteral("04_N###"), QStringLiteral("TanLevel")};
    buildForm(k.title, fields, true, true);
    if (kind_) myrs_.open(session().MasterDb, kind_->table);
    if (kind_ && !kind_->hasKanaRyaku) {
        for (int i : {1, 3}) {
            bu_.setVisibleFalse(QStringLiteral("E"), i);
            caption(i)->setVisible(false);
        }
    }
}

void ms_frm::formKeyDown(bool list, int index, int& keyCode, int shift)
{
    if (list) return;
    if (keyCode == vbKeyTab) keyCode = shift == vbShiftMask ? vbKeyUp : vbKeyReturn;
    if (keyCode != vbKeyF6 || bu_.CurItem != 0 || index != 0 || !kind_) return;
    Help_frm* help = HelpForm();
    help->Init(kind_->table, QString(), QString());
    help->exec();
    activateWindow();   // the list has no owner; the keyboard comes back here
    if (!help->Hit()) return;
    ebox()[0]->setText(help->HitCode());
    keyCode = vbKeyReturn;
}

void ms_frm::eboxLeft(int index)
{
    QLineEdit* code = ebox()[0];
    if (index == 0 && ToNum(code->text()) > kMaxMasterCode) {
        Tell(codeLimitMessage());
        SelectAll(code);
    } else if (index == 2 && kind_ && kind_->hasKanaRyaku) {
        CopyIfEmpty(ebox()[2], ebox()[3]);
    }
}

void ms_frm::Display()
{
    if (!kind_) return;
    const QList<QLineEdit*> b = ebox();
    b[0]->setText(NullToEmpty(myrs_.value(QStringLiteral("Code"))));
    b[2]->setText(NullToEmpty(myrs_.value(QStringLiteral("Namae"))));
    if (kind_->hasKanaRyaku) {
        b[1]->setText(NullToEmpty(myrs_.value(QStringLiteral("kana"))));
        b[3]->setText(NullToEmpty(myrs_.value(QStringLiteral("Ryaku"))));
    }
    if (kind_->hasLevel)
        b[4]->setText(FormatRight(myrs_.value(QStringLiteral("TanLevel")).toDouble(), QStringLiteral("###")));
}

void ms_frm::Register(const QString& mode)
{
    if (!kind_) return;
    const QList<QLineEdit*> b = ebox();
    SimpleRow row;
    row.code = b[0]->text();
    row.kana = CutToBytes(b[1]);
    row.namae = CutToBytes(b[2]);
    row.ryaku = CutToBytes(b[3]);
    if (kind_->hasLevel) row.level = b[4]->text();
    const RegisterOutcome out = registerSimpleRow(myrs_, *kind_, mode, row);
    if (out.codeChanged) b[0]->setText(out.code);
}

bool ms_frm::deleteRec()
{
    if (!kind_) return false;
    const QString question = deleteQuestion(myrs_, *kind_);
    if (question.isEmpty()) return false;
    if (!Ask(question, QStringLiteral("削除"), QStringLiteral("いいえ"))) return false;
    const ErrorClass e = myrs_.Delete();
    if (e == ErrorClass::None) return true;
    Tell(StoreErrorText(myrs_.lastError()));
    return false;
}
