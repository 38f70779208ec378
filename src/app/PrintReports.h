#pragma once
#include <QStringList>
// Fills the list of reports that `velmora print` knows: one registration call per report file.
void registerPrintReports();

// `velmora print ...`: a screenless application (the offscreen platform unless another is
// set), the reports registered, then the command. Returns the exit status.
int runPrintMain(int argc, char** argv, const QStringList& args);
