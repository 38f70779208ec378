#pragma once
// The headless subcommands "batch" and "rebuild": the program's own start-up on the company in
// the working directory, without a screen, then ledger processing or the rebuild of a range of
// months. For users and scripts.
#include <functional>
#include <QString>
#include <QStringList>

// Where a command writes and reads.
struct CommandConsole {
    std::function<void(const QString&)> out;   // one line on standard output
    std::function<void(const QString&)> err;   // one line on standard error
    std::function<bool(QString*)> readLine;    // one line of standard input; false at its end
};
// The process's stdout, stderr and stdin.
CommandConsole processConsole();

// "batch" and "rebuild".
bool isLedgerCommand(const QString& word);
// The lines of these commands in the program's usage text.
QString ledgerCommandsUsage();

// args[0] is the command:
//   batch [--office N]
//   rebuild --from M --to M [--kind ALL|THI|TTO|TSI] [--office N]
// 0 on success, 1 when the start-up or the run failed, 2 for bad arguments (an office that does
// not exist included). Progress texts go to `out`, every message to `err`.
int runLedgerCommand(const QStringList& args, const CommandConsole& console = processConsole());

// The start-up of the program without a screen: office `office` (0: the first one), the
// password set in the store from VELMORA_PASSWORD or else one line of input. On failure the
// reason has gone to `err`, the store is closed and the result is 1 or 2 as above; 0 when the
// session is ready. endHeadless() closes it again.
int startHeadless(short office, const CommandConsole& console);
void endHeadless();
