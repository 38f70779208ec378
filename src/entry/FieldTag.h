#pragma once
// The field declaration in a text box's Tag: "03_S20" is item 3, text of 20 bytes;
// "24_N###,###,##0" is item 24, a number shown in that picture.
#include <QString>

struct FieldTag {
    static constexpr int MaxItem = 50;  // the controller holds items 0..50

    bool valid = false;
    int item = -1;      // position in the keyboard order
    char kind = 0;      // 'S' text, 'N' number
    int maxBytes = 0;   // for 'S': Shift JIS bytes
    QString format;     // for 'N': the number picture

    // The box's MaxLength: bytes for text, the picture's width for a number.
    int maxLength() const { return kind == 'N' ? int(format.size()) : maxBytes; }
};

// A tag that does not follow the grammar, or names an item past MaxItem, gives valid false.
FieldTag parseTag(const QString& tag);
