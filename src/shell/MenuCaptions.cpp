#include "shell/MenuCaptions.h"
#include <QStringList>

const QList<MenuCaption>& menuCaptions()
{
    static const QList<MenuCaption> list = {
        {0, QStringLiteral("仕入伝票処理"), false, QStringLiteral("Dsr"), QStringLiteral("Slip_frm")},
        {0, QStringLiteral("売上伝票処理"), false, QStringLiteral("Dur"), QStringLiteral("Slip_frm")},
        {0, QStringLiteral("支払伝票処理"), false, QStringLiteral("Dsh"), QStringLiteral("Cashier_frm")},
        {0, QStringLiteral("入金伝票処理"), false, QStringLiteral("Dny"), QStringLiteral("Cashier_frm")},
        {0, QStringLiteral("商品別売上集計"), false, QStringLiteral("Uri"), QStringLiteral("RepoNippou_frm")},
        {0, QStringLiteral("商品別仕入集計"), false, QStringLiteral("Kai"), QStringLiteral("RepoNippou_frm")},
        {1, QStringLiteral("請求書 発行"), true, QString(), QStringLiteral("Seikyu_frm")},
        {1, QStringLiteral("得意先元帳"), true, QStringLiteral("Tdc"), QStringLiteral("Daichou_frm")},
        {1, QStringLiteral("売掛残高一覧"), true, QStringLiteral("Uza"), QStringLiteral("Zandaka_frm")},
        {1, QStringLiteral("仕入先元帳"), true, QStringLiteral("Sdc"), QStringLiteral("Daichou_frm")},
        {1, QStringLiteral("買掛残高一覧"), true, QStringLiteral("Kza"), QStringLiteral("Zandaka_frm")},
        {1, QStringLiteral("担当者別売上"), false, QStringLiteral("TAN"), QStringLiteral("Chouha_frm")},
        {1, QStringLiteral("販売商品月次控"), true, QString(), QStringLiteral("RepoGeppou_frm")},
        {1, QStringLiteral("売上一覧表"), true, QStringLiteral("Uza"), QStringLiteral("RepoSales_frm")},
        {1, QStringLiteral("仕入一覧表"), true, QStringLiteral("Kza"), QStringLiteral("RepoSales_frm")},
        {2, QStringLiteral("データ最適化"), false, QString(), QStringLiteral("Compact")},
        {2, QStringLiteral("データ復旧"), true, QString(), QStringLiteral("TipsMenu_frm")},
        {2, QStringLiteral("年次更新"), false, QString(), QStringLiteral("NenjiKosin_frm")},
        {2, QStringLiteral("対象年度変更"), true, QString(), QStringLiteral("Nendo_frm")},
        {3, QStringLiteral("商品分類"), false, QStringLiteral("Hbn"), QStringLiteral("ms_frm")},
        {3, QStringLiteral("商品"), false, QStringLiteral("Hin"), QStringLiteral("Hin_frm")},
        {3, QStringLiteral("地区"), false, QStringLiteral("Cku"), QStringLiteral("ms_frm")},
        {3, QStringLiteral("担当者"), false, QString(), QStringLiteral("Tan_frm")},
        {3, QStringLiteral("地位"), false, QStringLiteral("Chi"), QStringLiteral("ms_frm")},
        {4, QStringLiteral("得意先分類"), false, QStringLiteral("Tbn"), QStringLiteral("ms_frm")},
        {4, QStringLiteral("得意先"), false, QStringLiteral("Tor"), QStringLiteral("Deal_frm")},
        {4, QStringLiteral("納入先"), false, QStringLiteral("Nou"), QStringLiteral("Nou_frm")},
        {4, QStringLiteral("得意先別単価"), false, QStringLiteral("Tka"), QStringLiteral("Price_frm")},
        {4, QStringLiteral("納入先別単価"), false, QString(), QStringLiteral("PriceNka_frm")},
        {5, QStringLiteral("仕入先分類"), false, QStringLiteral("Sbn"), QStringLiteral("ms_frm")},
        {5, QStringLiteral("仕入先"), false, QStringLiteral("Sir"), QStringLiteral("Deal_frm")},
        {5, QStringLiteral("仕入先別単価"), false, QStringLiteral("Ska"), QStringLiteral("Price_frm")},
        {6, QStringLiteral("会社"), false, QStringLiteral("Com"), QStringLiteral("Kaisya_frm")},
        {6, QStringLiteral("摘要"), false, QString(), QStringLiteral("Memo")},
        {6, QStringLiteral("画面スケール"), false, QString(), QStringLiteral("Scale")},
        {6, QStringLiteral("パスワード"), false, QString(), QStringLiteral("Password")},
        {6, QStringLiteral("オプション"), false, QString(), QStringLiteral("Opt_frm")},
        {6, QStringLiteral("バックアップ"), false, QString(), QStringLiteral("Backup_frm")},
        {6, QStringLiteral("伝票番号"), false, QString(), QStringLiteral("SlipDno_frm")},
    };
    return list;
}

const MenuCaption* findMenuCaption(const QString& caption)
{
    for (const MenuCaption& m : menuCaptions())
        if (m.caption == caption) return &m;
    return nullptr;
}

const QStringList& menuGroupCaptions()
{
    static const QStringList groups = {
        QStringLiteral("日次業務"), QStringLiteral("月次業務"), QStringLiteral("事後処理"),
        QStringLiteral("マスター"), QStringLiteral("得意先"), QStringLiteral("仕入先"), QStringLiteral("その他")};
    return groups;
}

QList<QPair<int, QString>> standardMenuRows()
{
    QList<QPair<int, QString>> rows;
    for (const MenuCaption& m : menuCaptions()) rows << qMakePair(m.group, m.caption);
    return rows;
}
