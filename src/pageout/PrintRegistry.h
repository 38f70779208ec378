#pragma once
// The reports that `velmora print REPORT ... (--pdf FILE | --xlsx FILE)` knows. Each report
// registers one entry (from app/PrintReports.cpp); the command does the start-up of
// `velmora batch`, then runs the entry, which draws the same pages through the same report
// class as the screen's print.
#include <QList>
#include <QMap>
#include <QString>
#include <functional>

struct PrintRequest {
    QMap<QString, QString> options;   // "--month 4" -> options["month"] = "4"
    QString pdf;                      // --pdf FILE, or empty
    QString xlsx;                     // --xlsx FILE, or empty
    // Only the option values are checked, before the start-up: no store is open. A report
    // returns false with *error for a value it refuses, true when the values are well formed.
    bool checkOnly = false;
};

struct PrintReportEntry {
    QString name;                     // "invoices", "ledger", ...
    QString usage;                    // one line for `velmora print --help`
    QStringList options;              // the options it accepts (without "--"); others are refused
    QStringList required;             // those of them that must be given
    bool needsCompany = true;         // false for `vtml`, which reads only its input file
    bool pdf = true;                  // the outputs it can make; the command refuses the others
    bool xlsx = false;
    // Runs the report (or only checks its option values, see PrintRequest::checkOnly). With --pdf the command has made the PDF output current (PageOutput.h)
    // and finishes it afterwards; the report only draws its documents. With --xlsx the report
    // writes request.xlsx itself (ExcelBook::saveAs). False with *error (the message for
    // standard error), or with *error left empty when the failure was already told (VtmlPrint
    // tells through the dialogs, which the command sends to standard error).
    std::function<bool(const PrintRequest&, QString* error)> run;
};

void registerPrintReport(const PrintReportEntry& e);
const QList<PrintReportEntry>& printReports();
const PrintReportEntry* findPrintReport(const QString& name);
