#include "reports/Chouha_frm.h"
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include "pageout/QtPageOutputs.h"
#include "reports/Chouha.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

Chouha_frm::Chouha_frm() : SummaryForm(Chouha(session().MenuKey).title()), report_(std::make_unique<Chouha>(session().MenuKey))
{
    setObjectName(QStringLiteral("Chouha_frm"));
    setWindowTitle(QStringLiteral("帳端"));
    QHBoxLayout* start = newRow();
    addDateBoxes(start, {QStringLiteral("年"), QStringLiteral("月"), QStringLiteral("日より")}, &weekdays_);
    start->addStretch(1);
    QHBoxLayout* end = newRow();
    addDateBoxes(end, {QStringLiteral("年"), QStringLiteral("月"), QStringLiteral("日まで")}, &weekdaye_);
    end->addStretch(1);
    QHBoxLayout* order = newRow();
    cbox_ = addList(order, report_->orderTexts());
    order->addStretch(1);
    finish(QStringLiteral("最新の情報に更新する"), {QStringLiteral("ESC:戻る F-1:画面ｸﾘｱ F-9:印刷 F-10:エクセル")});
    clearForm();
}

Chouha_frm::~Chouha_frm() = default;

void Chouha_frm::clearForm()
{
    setDates(QDate::currentDate());
    cbox_->setCurrentIndex(0);
    showGrid(Chouha(report_->code()).grid());
    focusField(0);
}

void Chouha_frm::runCommand()
{
    QString error;
    switch (report_->run(dateOf(0), dateOf(1), cbox_->currentIndex() + 1, &error)) {
    case MeiTResult::Failed:
        Tell(error);
        break;
    case MeiTResult::NoSlips:
        Tell(QStringLiteral("対象の伝票がありません。"));
        showGrid(report_->grid());
        break;
    case MeiTResult::Done:
        showGrid(report_->grid());
        break;
    }
}

bool Chouha_frm::haveRows()
{
    // Straight after typing the range, F9 and F10 run the list first.
    if (report_->rows().isEmpty()) runCommand();
    return !report_->rows().isEmpty();
}

void Chouha_frm::printReport()
{
    if (!haveRows()) return;
    std::unique_ptr<PageOutput> out = makeReportOutput(this);
    if (!out) return;
    printTo(*out, [this] { return report_->print(); });
}

void Chouha_frm::exportSheet()
{
    if (haveRows()) report_->exportSheet();
}
