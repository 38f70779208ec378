#pragma once
// The screen of a month's list by partner (balances, sales): month and closing day, the read
// button, fifteen rows under the bar, the line "合計"; F1 clears, F9 prints, F10 exports.
#include <functional>
#include <memory>
#include <QList>
#include <QWidget>
#include "reports/LedgerReportList.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;

class LedgerReportList_frm : public QWidget {
    Q_OBJECT
public:
    // `makeList` makes the list of a menu word; `codes` are the words this screen serves. The
    // window's caption is `caption`, or the list's name when it is empty.
    LedgerReportList_frm(std::function<PartnerMonthList*(const QString&)> makeList, const QStringList& codes,
                         const QString& hint, const QString& caption, QWidget* parent = nullptr);
    ~LedgerReportList_frm() override;

    PartnerMonthList& list() { return *list_; }
    QLabel* Title() const { return title_; }
    QLineEdit* ebox(int i) const { return ebox_[i]; }
    QPushButton* Command() const { return command_; }
    QPushButton* ScrClr() const { return clear_; }
    QPushButton* PrintBtn() const { return print_; }
    QPushButton* DoExcel() const { return excel_; }
    QScrollBar* Bar() const { return bar_; }
    QLabel* head(int column) const { return heads_[column]; }
    QLabel* cell(int row, int column) const { return cells_[row][column]; }
    QLabel* Total(int i) const { return totals_[i]; }
    int columns() const { return int(heads_.size()); }

    void Command_Click();
    void ScrClr_Click();
    void PrintBtn_Click();
    void DoExcel_Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void loadList(const QString& code);
    void showRows(int top);
    void showTotals();
    bool functionKey(int key);

    std::function<PartnerMonthList*(const QString&)> makeList_;
    QStringList codes_;
    QString caption_;
    std::unique_ptr<PartnerMonthList> list_;
    QLabel* title_ = nullptr;
    QLineEdit* ebox_[2] = {};
    QPushButton *command_ = nullptr, *clear_ = nullptr, *print_ = nullptr, *excel_ = nullptr;
    QScrollBar* bar_ = nullptr;
    QList<QLabel*> heads_;
    QList<QList<QLabel*>> cells_;
    QList<QLabel*> totals_;
};
