#pragma once
// The sales and purchase slip screen without its widgets: the head as the screen holds it,
// the fifteen lines and the six grid rows over them, prices, amounts, tax, totals and the
// checks before saving. The form copies its widgets into `head` and `rows`, calls one
// operation, and shows what the operation left there.
#include <array>
#include <QString>
#include <QStringList>
#include "slips/SlipHeadEditor.h"
#include "slips/SlipLine.h"

struct SlipHead : PartnerHead {
    int Kubun = 0;                      // settlement list position, -1 none
    QString SNo;
    QString Tekiyo;
};

struct SlipTotalTexts {
    QString net, zei, total, profit, rate;   // "税抜合計額" .. "粗利率"
};

class SlipEditor : public SlipHeadEditor {
public:
    static constexpr int LineCount = 15;
    static constexpr int RowCount = 6;
    static constexpr int MaxBar = LineCount - RowCount;

    // "Dur" or "Dsr"; any other word is taken as "Dur".
    explicit SlipEditor(const QString& kind);

    // What the kind decides at load.
    bool sales() const { return customers(); }
    QString lineTable() const;
    QString side() const;
    QString title() const;
    QStringList lineKinds() const;
    QStringList settlementTexts() const;

    // Screen state besides the fields.
    SlipHead head;
    short SlipHsuType = 0, SlipHsu = 0, SlipZeituuchi = 0;
    QString simeText;                   // "締日" label
    QString zeiNotice;                  // "税通知" label
    std::array<SlipLine, LineCount> lines;
    std::array<SlipRow, RowCount> rows;
    int Bar = 0;
    SlipTotalTexts totals;

    // Head.
    void clearDisplay();
    void clearLines();
    NumberOutcome enterNumber() override;
    // Leaving the partner list with a choice; false when checkPeriod refused the date.
    bool partnerChosen();
    static QString zeiNoticeText(short zeituuchi, bool displaying);
    // The date against the target year; sets Getudo, or tells the refusal and returns false.
    bool checkPeriod();
    bool showSlip(long dno);
    bool settlementIsCash() const { return head.Kubun == 1; }
    // The checks before saving; None lets the saving go on.
    SlipFocus checkSlip();
    // True when the clerk chose "修正" at a line whose amount is not quantity times price.
    bool checkLineAmounts();
    // The quantity on grid row `row` fits its column and its six places on the grid; otherwise
    // the clerk is told and the answer is false. One that did not fit would be written as 0
    // or without its left digits.
    bool quantityFits(int row);

    // Lookups of F6.
    SlipLookup productLookup() const;

    // Grid. `row` is 0..5, the line is Bar + row.
    void showLines();
    void readRowsToLines();
    bool loadProductToLine(int row);
    void calcLineAmounts(int row);
    void calcLineTax(int row);
    void calcSlipTax();
    void showTotals(int flag);
    // calcLineAmounts, readRowsToLines, calcLineTax, showTotals with a flag.
    void work(int row);
    // fZei: the typed tax of a line of its own kind 4.
    void typeLineTax(int row);
    void deleteLine(int row);
    // False with "行がいっぱいです。" when the last line is in use.
    bool insertLine(int row);
    bool lineHasKubun(int row) const;
    // Moves the grid, keeping what the rows hold.
    void scrollTo(int bar);
    // The text of the tip box on entering a field or choosing a kind; empty closes it.
    enum class TipField { Suu, Tanka, KindChosen };
    QString tipText(TipField field, int row) const;
    // A cell reformatted on leaving it.
    static QString formatCell(const QString& text, const QString& format);

    using SlipHeadEditor::partnerHead;
    PartnerHead& partnerHead() override { return head; }

private:
    void resetHeadFields();
    bool readPartner(qint64 code, bool displaying);
    void showLine(int row);
    void readProductPrices(int row, const QString& storedCode);
};
