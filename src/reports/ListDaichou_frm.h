#pragma once
// "元帳": the viewer of a ledger range. Fifteen rows newest first under the month's figures;
// the bar and the keys scroll, F9 prints, the spreadsheet button exports, and a double click or
// Enter on a row's date opens the slip or the deposit behind it.
#include <QWidget>
#include "reports/ListDaichou.h"

class QLabel;
class QPushButton;
class QScrollBar;
class QVBoxLayout;

// The large centred title at the top of a report screen, added to the form's layout.
QLabel* addReportTitle(QWidget* form, QVBoxLayout* layout);

class ListDaichou_frm : public QWidget {
    Q_OBJECT
public:
    explicit ListDaichou_frm(QWidget* parent = nullptr);

    // Takes the range of the selection screen, reads the rows and shows the first fifteen.
    void Init(const LedgerRange& range);

    ListDaichou& view() { return view_; }
    QLabel* Title() const { return title_; }
    QLabel* TorName() const { return torName_; }
    QLabel* tukiBox() const { return tuki_; }
    QLabel* Range(int i) const { return range_[i]; }
    QLabel* LabelHeader(int i) const { return labelHeader_[i]; }
    QLabel* LabelHValue(int i) const { return labelHValue_[i]; }
    // Columns 0..5: Hizuke, Kubun, fHinNamae, fSuu, fTanka, fGaku.
    QLabel* cell(int row, int column) const { return cells_[row][column]; }
    QScrollBar* Bar() const { return bar_; }
    QPushButton* Command() const { return command_; }
    QPushButton* DoExcel() const { return excel_; }

    // Opens the slip or deposit of a screen line (the double click on its date).
    void openLine(int line);

    // Opens the slip or deposit screen of a kind on a number, as if the clerk had typed it;
    // closing that screen comes back to the ledger.
    static bool openSlipScreen(const LedgerSlipTarget& target);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showRows(int top);
    void print();
    void exportSheet();
    bool dateKey(int line, int key);

    ListDaichou view_;
    QLabel* title_ = nullptr;
    QLabel* torName_ = nullptr;
    QLabel* tuki_ = nullptr;
    QLabel* range_[2] = {};
    QLabel* tilde_ = nullptr;
    QLabel* labelHeader_[7] = {};
    QLabel* labelHValue_[7] = {};
    QLabel* cells_[ListDaichou::PageRows][6] = {};
    QScrollBar* bar_ = nullptr;
    QPushButton* command_ = nullptr;
    QPushButton* excel_ = nullptr;
};
