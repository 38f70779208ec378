#pragma once
// Conversion of what comes out of a box or a column. None of these fails on bad input:
// what is not understood is dropped. Only ZeroPad13 and ZeroStrip change their argument.
#include <concepts>
#include <QString>
#include <QVariant>
#include "store/Money.h"

// A column value as text; null gives "".
QString NullToEmpty(const QVariant& value);
// A column value; null gives 0.
QVariant NullToZero(const QVariant& value);
// Every text written to a non-null column goes through here: "" becomes one blank.
QString EmptyToSpace(const QString& value);
// False for null and for text that is empty once blanks (half and full width) are trimmed.
bool HasText(const QVariant& value);
bool HasText(const QString& value);
inline bool HasText(const char* value) { return HasText(QString::fromUtf8(value)); }

// Decimal text of a number, no blanks around it.
template <std::integral T>
QString ToText(T value) { return QString::number(static_cast<qint64>(value)); }
QString ToText(double value);
QString ToText(Money value);

// Only the characters "0".."9", "." and "-", in their order; "0" when none is left.
// Full-width digits are not digits here.
QString NumText(const QString& text);
// Only "0".."9"; "0" when none is left.
QString DigitText(const QString& text);
// The value of what NumText keeps, read up to a second point or a minus past the start.
double ToNum(const QString& text);
// Currency: 0 when ToNum is 0, else the kept number rounded to four decimals, a tie to even.
// Out of the money range the result is 0 and *ok false.
Money ToCur(const QString& text, bool* ok = nullptr);
// 0 when ToNum is 0, else the number rounded to an integer, a tie to even.
// The old program stopped with an overflow on a number out of range. We never stop, and a
// clamped figure would look like a real one, so out of range gives 0 (the value every
// screen already reads as "nothing typed") and *ok false; the caller may say so.
qint16 ToInt16(const QString& text, bool* ok = nullptr);
qint32 ToInt32(const QString& text, bool* ok = nullptr);

// The number in a picture of "#", "0", "," and ".", right-aligned to the picture's length.
// The text is the right end of 20 blanks and the result, so a number too wide for the
// picture loses its left part. Decimals round half away from zero.
QString FormatRight(double value, const QString& format);
QString FormatRight(Money value, const QString& format);
// The number in the picture at its full width: no padding, nothing cut (totals, rates).
QString FormatNumber(double value, const QString& format);
QString FormatNumber(Money value, const QString& format);

// Product code to its 13-digit stored form. "" becomes "0" in the argument too; a code
// with anything but digits and blanks comes back as it is.
QString ZeroPad13(QString& text);
// Stored 13-digit code back to display: leading "0"s are cut off the argument itself.
QString ZeroStrip(QString& text);

// Length in Shift JIS bytes: ASCII, half-width katakana, yen sign and overline take one
// byte, everything else two.
int SjisLength(const QString& text);
// The longest head of the text within maxBytes; a two-byte character never gets split.
QString CutToBytes(const QString& text, int maxBytes);
// Target text, or the source when the target has none; cut to maxBytes either way.
QString CopyIfEmpty(const QString& source, const QString& target, int maxBytes);
