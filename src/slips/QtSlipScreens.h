#pragma once
// What the slip screen and the deposit screen share: their lookup and plain-question calls
// (replaceable by tests), the code of a list entry, the sunken labels, the date row and the
// way back when they close.
#include <functional>
#include <optional>
#include <QString>
#include "slips/SlipHeadEditor.h"

class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QWidget;

namespace SlipScreens {

// A lookup list call answering the picked code, or "" (the lookup window by default).
using Lookup = std::function<QString(const SlipLookup&)>;
void setLookup(Lookup f);
QString runLookup(const SlipLookup& l);

// A plain message box: title, text; true for OK (or Yes). A message box by default, with OK
// and Cancel, or Yes and No.
using PlainQuestion = std::function<bool(const QString& title, const QString& text)>;
void setPlainQuestion(PlainQuestion f);
bool askPlain(const QString& title, const QString& text, bool okCancel);

// F6 in a class or partner list: the lookup list, then its pick selected in `list`; `beforePick`
// runs first (a partner list made whole when no class was chosen). False when nothing was picked.
bool pickIntoList(QComboBox* list, const SlipLookup& lookup, const std::function<void()>& beforePick);

std::optional<qint64> listCode(const QComboBox* list);
void selectCode(QComboBox* list, const std::optional<qint64>& code);
void setTextIfChanged(QLineEdit* box, const QString& text);

QLabel* framed(QWidget* parent, Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter);
// A column heading of a grid.
QLabel* raised(QWidget* parent, const QString& text);
// Year, month and day boxes with their captions (the era named first with era years) and
// the weekday label, which is returned.
QLabel* addDateRow(QHBoxLayout* row, QWidget* parent, QLineEdit* year, QLineEdit* month, QLineEdit* day);

// A slip screen closed goes back to where it was opened from: the ledger list when the
// session's caller word says so, else the menu.
void showCaller(QWidget* closing);

}  // namespace SlipScreens
