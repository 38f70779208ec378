#include "reports/RepoGeppou_frm.h"
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include "entry/Convert.h"
#include "entry/QtBureaucrat.h"
#include "entry/Utility.h"
#include "masters/QtMasterFields.h"
#include "pageout/Grd.h"
#include "pageout/QtGrd.h"
#include "pageout/QtPageOutputs.h"
#include "reports/RepoGeppou.h"
#include "reports/RepoGeppouCopy.h"
#include "shell/Dialogs.h"

namespace {
enum Box { eMonth, eSime, eCustomer, eDest, eSplit };
}

RepoGeppou_frm::RepoGeppou_frm() : SummaryForm(QStringLiteral("販売商品月次控")), report_(std::make_unique<RepoGeppou>())
{
    setObjectName(QStringLiteral("RepoGeppou_frm"));
    QHBoxLayout* month = newRow();
    addBox(month, 2);
    addLabel(month, QStringLiteral("月"));
    addBox(month, 2);
    addLabel(month, QStringLiteral("日 締分"));
    month->addStretch(1);
    QHBoxLayout* customer = newRow();
    addLabel(customer, QStringLiteral("得意先"), 8);
    addBox(customer, 8);
    addLabel(customer, QStringLiteral("０：全て"));
    sTorNamae_ = addLabel(customer, QString(), 24);
    sTorNamae_->setObjectName(QStringLiteral("sTorNamae"));
    customer->addStretch(1);
    QHBoxLayout* dest = newRow();
    addLabel(dest, QStringLiteral("納入先"), 8);
    addBox(dest, 6);
    sNouNamae_ = addLabel(dest, QString(), 16);
    sNouNamae_->setObjectName(QStringLiteral("sNouNamae"));
    addLabel(dest, QStringLiteral("全ての得意先を印刷する時に-１で、納入先ごとに印刷。"));
    dest->addStretch(1);
    QHBoxLayout* split = newRow();
    addLabel(split, QStringLiteral("商品分解"), 8);
    addBox(split, 1);
    addLabel(split, QStringLiteral("０：しない　１：する"));
    split->addStretch(1);
    finish(QStringLiteral("表示"), {QStringLiteral("ESC：戻る　Ｆ９：印刷　Ｆ１０：エクセル"),
                                   QStringLiteral("得意先コードに０を入れて印刷すればそれぞれの得意先で印刷されます。")});
    showGrid(RepoGeppou::emptyGrid());
}

RepoGeppou_frm::~RepoGeppou_frm() = default;

void RepoGeppou_frm::clearForm()
{
    for (QLineEdit* b : ebox()) b->clear();
    sTorNamae_->clear();
    sNouNamae_->clear();
    *report_ = RepoGeppou();
    showGrid(RepoGeppou::emptyGrid());
    focusField(0);
}

bool RepoGeppou_frm::request(GeppouRequest* r)
{
    const QList<QLineEdit*> b = ebox();
    const QString missing = RepoGeppou::checkFields(b[eMonth]->text(), b[eSime]->text());
    if (!missing.isEmpty()) {
        Tell(missing);
        focusField(HasText(b[eMonth]->text()) ? eSime : eMonth);
        return false;
    }
    r->month = ToInt32(b[eMonth]->text());
    r->sime = ToInt32(b[eSime]->text());
    r->customer = CodeNumber(b[eCustomer]->text());
    r->dest = ToInt32(b[eDest]->text());
    r->split = ToInt32(b[eSplit]->text()) == 1;
    return true;
}

void RepoGeppou_frm::runCommand()
{
    GeppouRequest r;
    if (!request(&r)) return;
    QString error;
    if (!report_->load(r, &error)) {
        Tell(error);
        return;
    }
    if (report_->rows().isEmpty()) {
        Tell(QStringLiteral("対象がありません。"));
        showGrid(RepoGeppou::emptyGrid());
        return;
    }
    showGrid(report_->grid());
}

std::optional<QString> RepoGeppou_frm::lookup(QLineEdit* box)
{
    const QList<QLineEdit*> b = ebox();
    if (box == b[eCustomer]) return LookUp(this, QStringLiteral("Tor"), QStringLiteral("ALL"));
    if (box == b[eDest]) return LookUp(this, QStringLiteral("Nou"), QString::number(CodeNumber(b[eCustomer]->text())));
    return std::nullopt;
}

void RepoGeppou_frm::boxLeft(QLineEdit* box)
{
    const QList<QLineEdit*> b = ebox();
    const qint64 customer = CodeNumber(b[eCustomer]->text());
    if (box == b[eCustomer]) sTorNamae_->setText(customer == 0 ? QString() : CodeName(QStringLiteral("Tor"), customer));
    else if (box == b[eDest]) {
        const qint64 dest = ToInt32(b[eDest]->text());
        sNouNamae_->setText(dest <= 0 || customer == 0 ? QString() : NouName(customer, dest));
    }
}

void RepoGeppou_frm::printReport()
{
    GeppouRequest r;
    if (!request(&r)) return;
    std::unique_ptr<PageOutput> out = makeReportOutput(this);
    if (!out) return;
    QString error;
    int sheets = 0;
    // A customer without sales in the month simply gets no sheet, without a word.
    printTo(*out, [&] { return MonthlyCopy::printAll(r, &sheets, &error); });
    if (!error.isEmpty()) Tell(error);
}

void RepoGeppou_frm::exportSheet()
{
    Grd grd(&cells());
    grd.GrdExport(QStringLiteral("販売商品月次控え"));
}
