#pragma once
// Small helpers on the entry widgets: choice lists carry their codes as item data
// (Qt::UserRole), text boxes are limited in Shift JIS bytes.
#include <optional>
#include <QString>

class QComboBox;
class QLineEdit;

// Code of the selected entry; nothing when no entry is selected.
std::optional<int> ListCode(const QComboBox* list);
// Selects the first entry with that code, or none.
void FindListCode(QComboBox* list, int code);
void ClearList(QComboBox* list);

void SelectAll(QLineEdit* box);
// The box's text cut to its maxLength() in Shift JIS bytes; the box is left as it is.
QString CutToBytes(const QLineEdit* box);
// An empty target takes the source's text; the target is then cut to its byte length.
// Fills a short name from the full name.
QString CopyIfEmpty(const QLineEdit* source, QLineEdit* target);
