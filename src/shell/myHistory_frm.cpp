#include "shell/myHistory_frm.h"
#include <QHBoxLayout>
#include <QListWidget>
#include <QPlainTextEdit>

const QList<HistoryNote>& historyNotes()
{
    // Newest first.
    static const QList<HistoryNote> notes = {
        {QStringLiteral("2026-11-21"), QStringLiteral("起動と業務メニュー"),
         QStringLiteral("起動処理を決まった順序で行うようにしました（二重起動の防止、会社情報・営業所・"
                        "システム機能の読込み、パスワード確認）。\n"
                        "業務メニューを二列のボタンで表示し、キーボードだけで操作できます。"
                        "スペースキーで営業所を切り替えます。\n"
                        "確認・通知・入力の共通画面、対象年度の変更、画面スケールを加えました。\n"
                        "日本語の画面表示に IPAex フォントを使います。")},
        {QStringLiteral("2026-11-21"), QStringLiteral("伝票番号の採番"),
         QStringLiteral("伝票番号を営業所ごとの番号から採番するようにしました。"
                        "売上・仕入・入金・支払・請求の各番号を営業所マスターに持ちます。")},
        {QStringLiteral("2026-11-21"), QStringLiteral("メニューからの画面呼出し"),
         QStringLiteral("メニューの項目名から画面を呼び出す仕組みを作りました。"
                        "まだ用意されていない画面の項目は選んでも何もしません。")},
        {QStringLiteral("2026-11-21"), QStringLiteral("データの保存と新規会社"),
         QStringLiteral("マスターファイルと年度ごとの伝票ファイルを一つの接続で扱うようにしました。"
                        "壊れたファイルは開くときに一度だけ修復を試みます。\n"
                        "新しい会社のデータ（会社情報、本社、メニュー）を作成できます。\n"
                        "金額は一万分の一円単位で保存し、消費税を得意先ごとの端数処理で計算します。")},
    };
    return notes;
}

myHistory_frm::myHistory_frm()
{
    setObjectName(QStringLiteral("myHistory_frm"));
    setWindowTitle(QStringLiteral("変更履歴"));
    auto* lay = new QHBoxLayout(this);
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("List"));
    list_->setMinimumWidth(330);
    text_ = new QPlainTextEdit(this);
    text_->setObjectName(QStringLiteral("Text"));
    text_->setReadOnly(true);
    text_->setMinimumSize(380, 240);
    for (const HistoryNote& n : historyNotes()) list_->addItem(n.date + QStringLiteral("  ") + n.title);
    lay->addWidget(list_);
    lay->addWidget(text_, 1);
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
        const QList<HistoryNote>& notes = historyNotes();
        text_->setPlainText(row >= 0 && row < notes.size() ? notes[row].text : QString());
    });
    list_->setCurrentRow(0);
}
