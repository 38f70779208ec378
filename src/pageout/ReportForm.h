#pragma once
// The callbacks a report offers the data driver and the grid print. A report class (core,
// next to its form) implements them; the same object serves the screen's print, the preview,
// the PDF and the spreadsheet.
#include <QString>
#include <QVariant>

class ReportForm {
public:
    virtual ~ReportForm() = default;
    // The value of a cell of a field named "@n", with the rows at the current row: a text for
    // kind S, a number (or numeric text) for kind N. n may be changed by the report.
    virtual QVariant alpha(short& n) { return {}; }
    // At the end of every page when NoTotals is set. May draw with PbSetX, PbSetY, PbText.
    virtual void NoTotalAction() {}
    // When the tag BKGRD runs.
    virtual void BKGRD() {}
    // Grid print: the last row's cell of a column marked SumOp.
    virtual QVariant SumOP(int index) { return {}; }
};
