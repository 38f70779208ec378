#include "entry/QtChoiceLists.h"

#include <QComboBox>

#include "entry/QtListFields.h"
#include "entry/Utility.h"

namespace {
void setFixed(QComboBox* list, const QStringList& texts)
{
    if (!list) return;
    ClearList(list);
    list->addItems(texts);
    NumberList(list);
    list->setCurrentIndex(list->count() > 0 ? 0 : -1);
}
}  // namespace

void NumberList(QComboBox* list)
{
    if (!list) return;
    for (int i = 0; i < list->count(); ++i) list->setItemData(i, QVariant(qint64(i + 1)));
}

void setListEntries(QComboBox* list, const QList<ListEntry>& entries)
{
    if (!list) return;
    ClearList(list);
    for (const ListEntry& e : entries) list->addItem(e.text, QVariant(e.code));
    list->setCurrentIndex(-1);
}

void FillList(QComboBox* list, const QSqlDatabase& db, const QString& sql, const QVariantList& binds,
              const QString& textField, const QString& codeField)
{
    setListEntries(list, FillEntries(db, sql, binds, textField, codeField));
}

void SetListAtukai(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Atukai)); }
void SetListFurikomi(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Furikomi)); }
void SetListHsuType(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::HsuType)); }
void SetListHsu(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Hsu)); }
void SetListKeisho(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Keisho)); }
void SetListKaisyuTuki(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::KaisyuTuki)); }
void SetListTorihiki(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Torihiki)); }
void SetListKingaku(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Kingaku)); }
void SetListZei(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Zei)); }
void SetListHanei(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Hanei)); }
void SetListYokin(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Yokin)); }
void SetListTesuryo(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Tesuryo)); }
void SetListZeituuchi(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Zeituuchi)); }
void SetListSeikyu(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Seikyu)); }
void SetListHiz(QComboBox* l) { setFixed(l, fixedListTexts(FixedList::Hiz)); }
void SetListOrder(QComboBox* l, const QString& key) { setFixed(l, orderListTexts(key)); }

void ListTbn(QComboBox* l) { setListEntries(l, CodeTableEntries(QStringLiteral("Tbn"))); }
void ListSbn(QComboBox* l) { setListEntries(l, CodeTableEntries(QStringLiteral("Sbn"))); }
void ListTan(QComboBox* l) { setListEntries(l, CodeTableEntries(QStringLiteral("Tan"))); }
void ListCku(QComboBox* l) { setListEntries(l, CodeTableEntries(QStringLiteral("Cku"))); }
void ListChi(QComboBox* l) { setListEntries(l, CodeTableEntries(QStringLiteral("Chi"))); }
void ListTor(QComboBox* l, std::optional<int> tbn) { setListEntries(l, TorEntries(tbn)); }
void ListSir(QComboBox* l, std::optional<int> sbn) { setListEntries(l, SirEntries(sbn)); }
void ListTorShop(QComboBox* l, std::optional<int> tbn) { setListEntries(l, TorShopEntries(tbn)); }
void ListNou(QComboBox* l, qint64 tor) { setListEntries(l, NouEntries(tor)); }

void TableName(QComboBox* list, const QString& table, qint64 code)
{
    setListEntries(list, TableName(table, code));
    if (list && list->count() > 0) list->setCurrentIndex(0);
}

void TorNameList(QComboBox* list, qint64 code)
{
    setListEntries(list, TorNameList(code));
    if (list && list->count() > 0) list->setCurrentIndex(0);
}

void SideCaption(QComboBox* list, const QString& side, qint64 code)
{
    const QStringList texts = SideCaption(side, code);
    if (!list || texts.isEmpty()) return;
    setFixed(list, texts);
}
