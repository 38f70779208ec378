#pragma once
// What `velmora print products | monthly | cutoff` run: the options read, the report made by
// the class its screen uses, then the PDF (the output the command made current) or the
// spreadsheet named by --xlsx. False with *error in the system's wording, or with *error
// empty when a page failed and has been told.
#include <QString>

struct PrintRequest;

bool printProducts(const PrintRequest& r, QString* error);
bool printMonthly(const PrintRequest& r, QString* error);
bool printCutoff(const PrintRequest& r, QString* error);
