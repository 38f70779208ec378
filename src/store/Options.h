#pragma once
// The user's options: rows of UserOP, a code and a text.
#include <optional>
#include <QString>

constexpr int kOptBackupPath = 5;
constexpr int kOptBackupAtExit = 15;

// The stored text of an option, trimmed; nothing when the row is missing.
std::optional<QString> readOption(int code);
