#pragma once
// The subcommands of the program. Each is one row of the table in Commands.cpp: its word,
// what runs it and its lines of the usage text. Anything else on the command line is refused
// with the usage and exit status 2; the screen starts only when there are no arguments.
#include <functional>
#include <QList>
#include <QString>
#include <QStringList>

struct Subcommand {
    QString word;
    // args[0] is the word. 0 done, 1 failed, 2 bad arguments (after a message or the usage).
    // Runs under a QCoreApplication.
    std::function<int(const QStringList& args)> run;
    QString usage;   // its lines of the usage text; empty when another row's lines cover it
    // In place of `run`, for a command that makes its own application object (printing needs
    // QtGui).
    std::function<int(int argc, char** argv, const QStringList& args)> runMain = {};
};
const QList<Subcommand>& subcommands();

// The whole command line without the program name (never empty); never starts the screen.
int runCommand(int argc, char** argv, const QStringList& args);
int runGui();

// Rows of the table that live in their own files.
int runDemo(const QStringList& args);
QString demoUsage();
