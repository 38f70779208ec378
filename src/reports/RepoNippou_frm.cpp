#include "reports/RepoNippou_frm.h"
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include "entry/QtBureaucrat.h"
#include "entry/Utility.h"
#include "masters/QtMasterFields.h"
#include "pageout/Grd.h"
#include "pageout/QtGrd.h"
#include "pageout/QtPageOutputs.h"
#include "reports/RepoNippou.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {
constexpr int ePartner = 6;   // after the two dates
}

RepoNippou_frm::RepoNippou_frm()
    : SummaryForm(RepoNippou(session().MenuKey).title()), report_(std::make_unique<RepoNippou>(session().MenuKey))
{
    setObjectName(QStringLiteral("RepoNippou_frm"));
    // One window for both modes; the title inside says which.
    setWindowTitle(QStringLiteral("商品別集計"));
    QHBoxLayout* start = newRow();
    addLabel(start, QStringLiteral("日付"), 6);
    addDateBoxes(start, {QStringLiteral("年"), QStringLiteral("月"), QStringLiteral("日")}, &weekDayS_);
    addLabel(start, QStringLiteral("より"));
    start->addStretch(1);
    QHBoxLayout* end = newRow();
    addLabel(end, QString(), 6);
    addDateBoxes(end, {QStringLiteral("年"), QStringLiteral("月"), QStringLiteral("日")}, &weekDayE_);
    addLabel(end, QStringLiteral("まで"));
    end->addStretch(1);
    QHBoxLayout* partner = newRow();
    partnerCaption_ = addLabel(partner, report_->partnerLabel(), 6);
    addBox(partner, 8);
    addLabel(partner, QStringLiteral("０：全て"));
    sTorNamae_ = addLabel(partner, QString(), 24);
    sTorNamae_->setObjectName(QStringLiteral("sTorNamae"));
    partner->addStretch(1);
    finish(QStringLiteral("最新の情報に更新する"), {QStringLiteral("ESC：戻る　Ｆ９：印刷　Ｆ１０：エクセル")});
    grd_ = std::make_unique<Grd>(&cells());
    clearForm();
}

RepoNippou_frm::~RepoNippou_frm() = default;

void RepoNippou_frm::clearForm()
{
    setDates(QDate::currentDate());
    ebox()[ePartner]->clear();
    sTorNamae_->clear();
    RepoNippou::setUp(*grd_);
    fitGrid();
    focusField(0);
}

void RepoNippou_frm::runCommand()
{
    QString error;
    if (!report_->load(dateOf(0), dateOf(1), CodeNumber(ebox()[ePartner]->text()), &error)) {
        Tell(error);
        return;
    }
    if (report_->count() == 0) {
        Tell(QStringLiteral("対象がありません。"));
        clearForm();
        return;
    }
    report_->fill(*grd_);
}

std::optional<QString> RepoNippou_frm::lookup(QLineEdit* box)
{
    if (box != ebox()[ePartner]) return std::nullopt;
    return LookUp(this, report_->partnerTable(), QStringLiteral("ALL"));
}

void RepoNippou_frm::boxLeft(QLineEdit* box)
{
    if (box != ebox()[ePartner]) return;
    const qint64 code = CodeNumber(box->text());
    sTorNamae_->setText(code == 0 ? QString() : CodeName(report_->partnerTable(), code));
}

void RepoNippou_frm::printReport()
{
    std::unique_ptr<PageOutput> out = makeReportOutput(this);
    if (!out) return;
    printTo(*out, [this] { return report_->print(*grd_); });
}

void RepoNippou_frm::exportSheet()
{
    grd_->GrdExport(report_->title());
}
