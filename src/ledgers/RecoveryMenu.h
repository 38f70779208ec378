#pragma once
// The rules of the data recovery menu's two month boxes, apart from its screen.
#include <QString>

// The numeric value of a month box; 0 when it holds no number.
int monthBoxValue(const QString& text);

enum class MonthBoxes { Ok, BadFirst, BadLast };
// Both boxes must hold a month 1..12; the first bad one is named, the first box first.
MonthBoxes checkMonthBoxes(const QString& first, const QString& last);

// "~" typed into the first box asks for the null repair.
bool isRepairNullsKey(const QString& text);
