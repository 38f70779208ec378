#include "masters/Opt_frm.h"

#include <QLineEdit>

#include "entry/KeyCodes.h"
#include "masters/SystemRows.h"

Opt_frm::Opt_frm(QWidget* parent) : EntryForm(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    buildForm(QStringLiteral("オプション"),
              {{QStringLiteral("バックアップパス"), QStringLiteral("00_S30"), QStringLiteral("contents")},
               {QStringLiteral("終了時にバックアップ"), QStringLiteral("01_N0"), QStringLiteral("contents"),
                QStringLiteral("０：しない　１：する")}},
              false, false);
    // Missing rows leave their fields empty; the defaults belong to the backup itself.
    ebox()[0]->setText(readOption(kOptBackupPath).value_or(QString()));
    ebox()[1]->setText(readOption(kOptBackupAtExit).value_or(QString()));
}

void Opt_frm::Register(const QString&)
{
    if (saveOptions(ebox()[0]->text(), ebox()[1]->text())) close();
}

void Opt_frm::recFieldKeyDown(int& keyCode, int)
{
    if (keyCode == vbKeyReturn) Register(bu_.State);
    else if (keyCode == vbKeyUp) bu_.moveLastItem();
    keyCode = 0;
}
