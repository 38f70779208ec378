#pragma once
// comboSetting: every fixed choice list of the system, and the lists filled from tables.
// A fixed list's entry at position i carries the code i + 1 and the first entry is selected
// after filling; a table list carries the row's code and has nothing selected.
#include <optional>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QVariantList>
#include "entry/ChoiceLists.h"

class QComboBox;

void NumberList(QComboBox* list);
void FillList(QComboBox* list, const QSqlDatabase& db, const QString& sql, const QVariantList& binds,
              const QString& textField, const QString& codeField);
// Replaces the entries by `entries`; nothing selected.
void setListEntries(QComboBox* list, const QList<ListEntry>& entries);

void SetListAtukai(QComboBox* list);
void SetListFurikomi(QComboBox* list);
void SetListHsuType(QComboBox* list);
void SetListHsu(QComboBox* list);
void SetListKeisho(QComboBox* list);
void SetListKaisyuTuki(QComboBox* list);
void SetListTorihiki(QComboBox* list);
void SetListKingaku(QComboBox* list);
void SetListZei(QComboBox* list);
void SetListHanei(QComboBox* list);
void SetListYokin(QComboBox* list);
void SetListTesuryo(QComboBox* list);
void SetListZeituuchi(QComboBox* list);
void SetListSeikyu(QComboBox* list);
void SetListHiz(QComboBox* list);
void SetListOrder(QComboBox* list, const QString& key);

void ListTbn(QComboBox* list);
void ListSbn(QComboBox* list);
void ListTan(QComboBox* list);
void ListCku(QComboBox* list);
void ListChi(QComboBox* list);
// Of one class when it is given; the caller's own "all" entry decides.
void ListTor(QComboBox* list, std::optional<int> tbn = std::nullopt);
void ListSir(QComboBox* list, std::optional<int> sbn = std::nullopt);
void ListTorShop(QComboBox* list, std::optional<int> tbn = std::nullopt);
void ListNou(QComboBox* list, qint64 tor);

// The lookups that answer with a list (see Utility.h); the one entry is selected.
void TableName(QComboBox* list, const QString& table, qint64 code);
void TorNameList(QComboBox* list, qint64 code);
void SideCaption(QComboBox* list, const QString& side, qint64 code);
