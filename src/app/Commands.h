#pragma once
#include <QStringList>

bool isCommand(const QString& word);
int runCommand(const QStringList& args);
int runGui();
