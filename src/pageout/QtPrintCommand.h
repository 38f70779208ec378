#pragma once
// `velmora print REPORT [options] (--pdf FILE | --xlsx FILE) [--office N]`: the program's
// start-up on the company in the working folder, without a screen, then the report's entry
// (PrintRegistry.h) on a PDF output or a spreadsheet file. Needs a QGuiApplication (fonts).
#include <QStringList>

struct CommandConsole;

// args[0] is "print". 0 on success; 1 when the start-up or the report failed; 2 for bad
// arguments. Messages go to the console's err, the file written to its out.
int runPrintCommand(const QStringList& args, const CommandConsole& console);

// The engine alone: `vtml --in FILE --pdf OUT` renders a text file of page-language lines.
void registerVtmlPrintReport();
