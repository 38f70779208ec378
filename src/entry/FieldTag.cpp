#include "entry/FieldTag.h"

namespace {

bool isDigit(QChar c) { return c.unicode() >= u'0' && c.unicode() <= u'9'; }

bool isPictureChar(QChar c)
{
    return c == QLatin1Char('#') || c == QLatin1Char('0') || c == QLatin1Char(',')
           || c == QLatin1Char('.');
}

}  // namespace

FieldTag parseTag(const QString& text)
{
    // Stray blanks around a tag typed in the designer are not part of it.
    const QString tag = text.trimmed();
    FieldTag f;
    if (tag.size() < 5 || !isDigit(tag[0]) || !isDigit(tag[1]) || tag[2] != QLatin1Char('_'))
        return f;
    const int item = (tag[0].unicode() - u'0') * 10 + (tag[1].unicode() - u'0');
    if (item > FieldTag::MaxItem) return f;
    const QString rest = tag.mid(4);

    if (tag[3] == QLatin1Char('S')) {
        if (rest.size() > 5) return f;
        int bytes = 0;
        for (QChar c : rest) {
            if (!isDigit(c)) return f;
            bytes = bytes * 10 + (c.unicode() - u'0');
        }
        if (bytes == 0) return f;
        f.maxBytes = bytes;
    } else if (tag[3] == QLatin1Char('N')) {
        bool hasDigit = false;
        for (QChar c : rest) {
            if (!isPictureChar(c)) return f;
            if (c == QLatin1Char('#') || c == QLatin1Char('0')) hasDigit = true;
        }
        if (!hasDigit) return f;
        f.format = rest;
    } else {
        return f;
    }
    f.kind = char(tag[3].unicode());
    f.item = item;
    f.valid = true;
    return f;
}
