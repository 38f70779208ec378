#pragma once
// The field record of a report's data table (at most 21 per document).
#include <QString>

struct VtmlField {
    QString Caption;       // heading of the column
    QString Name;          // column of the rows, or "@n" for the report's alpha(n)
    QString Kind;          // "S", "N" or "P"
    QString Format;        // S: width as a count of blanks; N: pattern "#,###,##0"; P: digit cells
    short Pitch = 0;       // P: extra space between digit cells
    short Gap = 0;         // space after the column
    short Total = 0;       // non-zero: summed into the page and running totals
    short Width = 0;       // measured by the driver on every page
    QString FontName;      // empty: keep the current font
    short FontSize = 0;    // 0: keep the current size
    short X = 0, Y = 0;    // either non-zero: absolute left edge and offset from the row top
};

// Clears Caption, Name, Kind, Format and FontName and nothing else: the numbers stay as the
// previous column left them, as reports rely on.
void VtmlFieldClear(VtmlField& f);
