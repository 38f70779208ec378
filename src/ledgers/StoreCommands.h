#pragma once
// The headless subcommands "yearend", "backup" and "optimize": the start-up of `velmora batch`
// on the company in the working directory, then the year-end update, a backup or the
// compaction. 0 on success, 1 when the start-up or the work failed (the message on standard
// error), 2 for bad arguments.
#include <QStringList>
#include "ledgers/LedgerCommands.h"

bool isStoreCommand(const QString& word);
// The lines of these commands in the program's usage text.
QString storeCommandsUsage();
// args[0] is the command:
//   yearend [--office N]
//   backup [--to DIR]
//   optimize
int runStoreCommand(const QStringList& args, const CommandConsole& console = processConsole());
