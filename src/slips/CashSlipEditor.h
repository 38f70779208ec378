#pragma once
// The deposit and payment screen without its widgets: the nine head fields, the six money
// rows, their sum, and the panel of the partner's twelve months with the balance. The form
// copies its widgets into `head` and `rows`, calls one operation, and shows what it left.
#include <array>
#include <QString>
#include <QStringList>
#include "slips/SlipHeadEditor.h"
#include "store/Money.h"

struct LedgerAmounts;

// NouCode is for deposits only; 0 there is the customer itself.
struct CashHead : PartnerHead {
    QString NNo;                        // "請求No."
};

struct CashRow {
    int Kubun = -1;    // list position 0..5 (stored as 1..6), -1 none
    QString Naiyou;
    QString Gaku;      // as shown
    bool isBlank() const { return Kubun < 0 && Naiyou.isEmpty() && Gaku.trimmed().isEmpty(); }
};

// The partner's months: what was sold (bought) with tax and what came in (went out).
struct CashPanel {
    static constexpr int MonthCount = 12;
    QString Kurikoshi, Zandaka;
    std::array<QString, MonthCount> Captions, Refers, Results;
};

namespace CashFormat {
inline const QString Dno = QStringLiteral("#####0");
inline const QString Gaku = QStringLiteral("##,###,##0");
inline const QString Gakukei = QStringLiteral("###,###,###");
inline const QString Panel = QStringLiteral("###,###,##0");
}

class CashSlipEditor : public SlipHeadEditor {
public:
    static constexpr int RowCount = 6;
    // The panel of a partner without a ledger yet.
    static inline const QString NoLedger = QStringLiteral("          -");

    // "Dny" or "Dsh"; any other word is taken as "Dny".
    explicit CashSlipEditor(const QString& kind);
    // Another kind on the same screen: captions, lists and everything shown start afresh.
    void setKind(const QString& kind);

    bool deposit() const { return customers(); }
    QString title() const;
    QString dateCaption() const;
    QString refersCaption() const;
    QString resultsCaption() const;
    // Column names of the rows: partner class, partner, text, amount, invoice number.
    QString classColumn() const;
    QString partnerColumn() const;
    QString textColumn() const;
    QString amountColumn() const;
    QString invoiceColumn() const;
    static QStringList kubunTexts();

    CashHead head;
    std::array<CashRow, RowCount> rows;
    QString Gakukei;                    // "合計", the sum of the six amounts
    short sime = 0;                     // closing day of the partner on the screen
    short Shicode = 0;                  // the partner's usual way of paying, 1..6
    CashPanel panel;

    // Head.
    // Empties the grid, the sum and the panel; the head stays.
    void clearDisplay();
    // Empties the head but for the number, which shows the counter.
    void clearHead();
    void InputZero();
    // A new slip shows the last deposit's date; a stored one its partner's months too.
    NumberOutcome enterNumber() override;
    // Leaving the partner list with a choice: staff and class when none, the destinations
    // billed on their own, the panel.
    void partnerChosen();
    void fillPayingDestinations();
    // The closing month of the date for the partner on the head, by its closing day as stored
    // now; tells the refusal and returns false.
    bool checkCashPeriod();
    bool showCashSlip(long dno);
    void showPartnerMonths();
    // Number, date and partner before saving; None lets the saving go on.
    SlipFocus checkSlip();

    // Grid.
    void SumGaku();
    // Enter on a kind with none chosen takes the partner's usual way of paying.
    void takeUsualKind(int row);
    void blankRow(int row);
    void deleteCashRow(int row);
    // The rows from `row` down move one lower and `row` is left blank; what stood in the
    // last row is pushed off.
    void insertCashRow(int row);
    static QString formatGaku(const QString& text);
    // The first month of the fiscal year, where the panel and a carried balance start.
    static short firstMonth();
    // Amounts are whole yen: what the field shows is what is written.
    static Money amountOf(const QString& text);
    // The rows that are written: from the top up to the first with no kind or no amount.
    int rowsToWrite() const;
    // Those rows added by kind into Genkin .. Chousei, NTotal left to the posting.
    LedgerAmounts amounts() const;
    // SeiFlag of a deposit's destination, 1 for the customer itself and for payments.
    short seiFlag() const;

    using SlipHeadEditor::partnerHead;
    PartnerHead& partnerHead() override { return head; }

private:
    bool readPartner(qint64 code, bool displaying);
    void buildMonthCaptions(const QString& day);
};

// Adds `amount` to the field of the money kind 1..6 (Genkin .. Chousei); others are ignored.
void addByKubun(LedgerAmounts& a, int kubun, Money amount);
