#pragma once
// What the choice lists hold. A fixed list keeps a number in the store, never the text: the
// entry at position i has the code i + 1. Lists from tables carry the row's code.
#include <optional>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariantList>

struct ListEntry {
    QString text;
    qint64 code = 0;
    bool operator==(const ListEntry&) const = default;
};

enum class FixedList {
    Atukai, Furikomi, HsuType, Hsu, Keisho, KaisyuTuki, Torihiki, Kingaku, Zei, Hanei,
    Yokin, Tesuryo, Zeituuchi, Seikyu, Hiz
};

QStringList fixedListTexts(FixedList list);
// The sort choice of the ledger lists: "URI"/"TAN" add the sales orders, "KAI" the purchase ones.
QStringList orderListTexts(const QString& key);
// Texts numbered from 1.
QList<ListEntry> NumberedEntries(const QStringList& texts);

// The settlement of a slip head is stored as the list position from 0 ("売掛" 0, "現金" 1),
// though the list's own codes start at 1 like every fixed list.
int TorihikiKubun(int listIndex);
int TorihikiListIndex(int kubun);

// Rows of a statement as list entries: `textField` (null as ""), `codeField` as the code.
QList<ListEntry> FillEntries(const QSqlDatabase& db, const QString& sql, const QVariantList& binds,
                             const QString& textField, const QString& codeField);
// ListTbn, ListSbn, ListTan, ListCku, ListChi: every row of the table by code.
QList<ListEntry> CodeTableEntries(const QString& table);
// Customers (suppliers) by reading, of one class when one is given.
QList<ListEntry> TorEntries(std::optional<int> tbn);
QList<ListEntry> SirEntries(std::optional<int> sbn);
// Customers with their shop name: "name･shop".
QList<ListEntry> TorShopEntries(std::optional<int> tbn);
// Destinations of a customer: the short name, or the shop name when that is empty.
QList<ListEntry> NouEntries(qint64 tor);
