#pragma once
// Spreadsheet export: real .xlsx files written with libxlsxwriter. Cells are set one at a time
// (row and column from 1) on the first sheet, as the reports write them; nothing is formatted
// but what a caller asks for. The file is written under a temporary name and renamed when
// complete, so a failure never leaves a half file.
#include <QString>
#include <QVariant>
#include <functional>
#include <memory>

class ExcelBook {
public:
    ExcelBook();
    ~ExcelBook();
    // ExcelOpen: shows the progress window "エクセルファイルを作成しています。". False: failed.
    bool open();
    // Null leaves the cell empty. Numbers (and Money, see ReportRows.h) are numbers, QDate a
    // date; a text is a text, except a date text ("2026-04-01", "2026/04/01") in a cell given a
    // date format, which becomes that date.
    void setCell(int row, int column, const QVariant& value);
    void setFormat(int row, int column, const QString& format);     // "yyyy/mm/dd" and the like
    // ExcelSave, the screens' export: the PathExcel folder + name + 14-digit time stamp +
    // ".xlsx". Closes the progress window, then tells the clerk: on success the file is opened
    // with the desktop's spreadsheet program when there is one, else its path is told; on
    // failure why it was not written. *path and *error (either may be null) for callers that
    // want them; a caller never tells them again.
    bool save(const QString& name, QString* path, QString* error);
    // Headless export: the exact file asked for (an existing one is replaced). Tells nothing;
    // false with *error in the system's wording.
    bool saveAs(const QString& path, QString* error);
    ExcelBook(const ExcelBook&) = delete;
    ExcelBook& operator=(const ExcelBook&) = delete;
private:
    struct Impl;
    std::unique_ptr<Impl> d;
};

// The file name ExcelSave would give `name` now: PathExcel folder (first line of the file
// PathExcel in the working folder, or ""), name, yyyyMMddhhmmss, ".xlsx".
QString excelFileName(const QString& name);

// How a saved file is opened: the desktop's program for .xlsx when one is installed; false
// when there is none (the path is then told). Tests put their own in.
void setSpreadsheetOpener(std::function<bool(const QString& path)> opener);
