#pragma once
// Spreadsheet export: real .xlsx files written with libxlsxwriter. Cells are set one at a time
// (row and column from 1) on the first sheet, as the reports write them; nothing is formatted
// but what a caller asks for. The file is written under a temporary name and renamed when
// complete, so a failure never leaves a half file.
#include <QString>
#include <QVariant>
#include <memory>

class ExcelBook {
public:
    ExcelBook();
    ~ExcelBook();
    // ExcelOpen: shows the progress window "エクセルファイルを作成しています。". False: failed.
    bool open();
    void setCell(int row, int column, const QVariant& value);       // Null leaves the cell empty
    void setFormat(int row, int column, const QString& format);     // "yyyy/mm/dd" and the like
    // ExcelSave: the PathExcel folder + name + 14-digit time stamp + ".xlsx". On success *path
    // is the file written; on failure *error says why in the system's wording.
    bool save(const QString& name, QString* path, QString* error);
    // Headless export: the exact file asked for.
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
