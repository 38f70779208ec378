#pragma once
// Codes between the store, the screens' lists and the editors of both slip screens.
#include <optional>
#include <QList>
#include <QVariant>
#include "entry/ChoiceLists.h"

// A code column: nothing for NULL.
inline std::optional<qint64> codeOf(const QVariant& v)
{
    if (v.isNull()) return std::nullopt;
    return v.toLongLong();
}

// The class filter of a partner list: none means every partner.
inline std::optional<int> classFilter(const std::optional<qint64>& c)
{
    return c ? std::optional<int>(int(*c)) : std::nullopt;
}

inline bool containsCode(const QList<ListEntry>& entries, qint64 code)
{
    for (const ListEntry& e : entries)
        if (e.code == code) return true;
    return false;
}
