// The layout of Slip_frm: head fields, the grid of six rows with its scroll bar, totals and buttons.
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "entry/KeyCodes.h"
#include "entry/QtFormBuilder.h"
#include "shell/Session.h"
#include "slips/QtSlipScreens.h"
#include "slips/Slip_frm.h"

using SlipScreens::framed;

void Slip_frm::build()
{
    QVBoxLayout* outer = buildFrame();
    title_->setText(ed_.title());
    office_->installEventFilter(this);
    outer->addWidget(buildHead());
    outer->addWidget(buildGrid());
    outer->addWidget(buildFoot());

    tip_ = new QLabel(this);
    tip_->setObjectName(QStringLiteral("ToolTipTextBox"));
    tip_->setStyleSheet(QStringLiteral("background:#ffffe1; border:1px solid #808080; padding:2px;"));
    tip_->hide();
}

QWidget* Slip_frm::buildHead()
{
    auto* w = new QWidget(this);
    auto* g = new QGridLayout(w);
    g->setContentsMargins(0, 0, 0, 0);
    g->setHorizontalSpacing(8);
    g->setVerticalSpacing(6);
    const int half = halfWidth();
    QHBoxLayout* date = buildHeadFields(w, {"00_N#####0", "01_N####", "02_N##", "03_N##", "09_N#####0", "10_S32"},
                                        {8, 6, 4, 4, 8, 34}, {16, 30, 20, 8, 14});
    auto caption = [&](const QString& t) { return new QLabel(t, w); };

    g->addWidget(caption(QStringLiteral("伝票No.")), 0, 0);
    g->addWidget(ebox_[DnoBox], 0, 1);
    g->addWidget(caption(QStringLiteral("日付")), 0, 2);
    g->addLayout(date, 0, 3, 1, 3);

    g->addWidget(caption(ed_.classCaption()), 1, 0);
    g->addWidget(cbox_[ClassList], 1, 1);
    g->addWidget(caption(ed_.partnerCaption()), 1, 2);
    g->addWidget(cbox_[PartnerList], 1, 3);
    // Captions keep clear of their boxes.
    auto* simeBox = new QHBoxLayout;
    simeBox->setSpacing(6);
    sime_ = framed(w, Qt::AlignCenter);
    sime_->setMinimumWidth(half * 4);
    zei_ = framed(w, Qt::AlignCenter);
    zei_->setMinimumWidth(half * 10);
    simeBox->addWidget(caption(QStringLiteral("締日")));
    simeBox->addWidget(sime_);
    simeBox->addSpacing(10);
    simeBox->addWidget(caption(QStringLiteral("税通知")));
    simeBox->addWidget(zei_);
    simeBox->addStretch(1);
    g->addLayout(simeBox, 1, 4, 1, 2);

    nouCaption_ = caption(QStringLiteral("納入先"));
    g->addWidget(nouCaption_, 2, 0);
    g->addWidget(cbox_[NouList], 2, 1);
    g->addWidget(caption(QStringLiteral("取引")), 2, 2);
    auto* deal = new QHBoxLayout;
    deal->setSpacing(6);
    deal->addWidget(cbox_[KubunList]);
    deal->addSpacing(10);
    deal->addWidget(caption(QStringLiteral("担当者")));
    deal->addWidget(cbox_[TanList]);
    deal->addStretch(1);
    g->addLayout(deal, 2, 3, 1, 3);

    g->addWidget(caption(QStringLiteral("請求No.")), 3, 0);
    g->addWidget(ebox_[SNoBox], 3, 1);
    g->addWidget(caption(QStringLiteral("摘要")), 3, 2);
    g->addWidget(ebox_[TekiyoBox], 3, 3, 1, 3);
    g->setColumnStretch(5, 1);
    return w;
}

QWidget* Slip_frm::buildGrid()
{
    auto* w = new QWidget(this);
    auto* g = new QGridLayout(w);
    g->setContentsMargins(0, 6, 0, 0);
    g->setHorizontalSpacing(2);
    g->setVerticalSpacing(2);
    const int half = halfWidth();
    const QString heads[] = {QStringLiteral("行"), QStringLiteral("区分"), QStringLiteral("商品コード"),
                             QStringLiteral("商品名"), QStringLiteral("数量"),
                             ed_.sales() ? QStringLiteral("原単価") : QStringLiteral("売単価"), QStringLiteral("単価"),
                             ed_.sales() ? QStringLiteral("原価金額") : QStringLiteral("売価金額"),
                             QStringLiteral("金額"), QStringLiteral("消費税"), QStringLiteral("税区分")};
    for (int c = 0; c < 11; ++c) g->addWidget(SlipScreens::raised(w, heads[c]), 0, c);
    const int widths[GridFieldCount] = {7, 14, 23, 6, 11, 11, 11, 11, 8};
    for (int r = 0; r < SlipEditor::RowCount; ++r) {
        lineNo_[r] = framed(w, Qt::AlignCenter);
        lineNo_[r]->setFixedWidth(half * 3 + 8);
        g->addWidget(lineNo_[r], r + 1, 0);
        for (int f = 0; f < GridFieldCount; ++f) {
            QWidget* cell;
            if (f == fKubun) {
                auto* c = new QComboBox(w);
                c->addItems(ed_.lineKinds());
                c->setCurrentIndex(-1);
                connect(c, &QComboBox::activated, this, [this, r](int) {
                    pushRows();
                    showTip(ed_.tipText(SlipEditor::TipField::KindChosen, r), cells_[r][fKubun]);
                });
                cell = c;
            } else {
                auto* b = new QLineEdit(w);
                if (f >= fSuu) b->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
                if (f == fHinNamae) b->setMaxLength(30);
                cell = b;
            }
            cell->setFixedWidth(half * widths[f] + (f == fKubun ? 28 : 8));
            cell->installEventFilter(this);
            cells_[r][f] = cell;
            gridOf_.insert(cell, {GridField(f), r});
            g->addWidget(cell, r + 1, f + 1);
        }
        zeiInfo_[r] = framed(w, Qt::AlignCenter);
        zeiInfo_[r]->setFixedWidth(half * 6 + 8);
        g->addWidget(zeiInfo_[r], r + 1, 10);
    }
    bar_ = new QScrollBar(Qt::Vertical, w);
    bar_->setObjectName(QStringLiteral("Bar"));
    bar_->setRange(0, SlipEditor::MaxBar);
    bar_->setPageStep(1);
    bar_->setFocusPolicy(Qt::NoFocus);
    connect(bar_, &QScrollBar::valueChanged, this, [this](int v) {
        if (pulling_) return;
        onEditor([&] { ed_.scrollTo(v); });
    });
    g->addWidget(bar_, 1, 11, SlipEditor::RowCount, 1);
    return w;
}

QWidget* Slip_frm::buildFoot()
{
    auto* w = new QWidget(this);
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(0, 4, 0, 0);
    auto* sums = new QHBoxLayout;
    const QString captions[] = {QStringLiteral("税抜合計額"), QStringLiteral("消費税額"), QStringLiteral("総合計額"),
                                QStringLiteral("粗利益"), QStringLiteral("粗利率")};
    const int half = halfWidth();
    sums->addStretch(1);
    for (int i = 0; i < 5; ++i) {
        sums->addWidget(new QLabel(captions[i], w));
        totals_[i] = framed(w, Qt::AlignRight | Qt::AlignVCenter);
        totals_[i]->setFixedWidth(half * (i == 4 ? 8 : 12) + 10);
        sums->addWidget(totals_[i]);
        sums->addSpacing(8);
    }
    v->addLayout(sums);

    addButtons(v, w,
               {QStringLiteral("画面消去(F1)"), QStringLiteral("伝票削除(F2)"), QStringLiteral("行削除(F3)"),
                QStringLiteral("行挿入(F4)"), QStringLiteral("一覧(F6)"), QStringLiteral("保存(F10)"),
                QStringLiteral("ﾒﾆｭｰに戻る(Esc)")},
               commands_);
    commands_[LineDelCmd]->setObjectName(QStringLiteral("lineDel"));
    commands_[LineInsCmd]->setObjectName(QStringLiteral("lineIns"));
    connect(commands_[ClearCmd], &QPushButton::clicked, this, [this] { doFunctionKey(vbKeyF1); });
    connect(commands_[DeleteCmd], &QPushButton::clicked, this, [this] { deleteByButton(); });
    connect(commands_[LineDelCmd], &QPushButton::clicked, this, [this] { lineDelete(lastRow_); });
    connect(commands_[LineInsCmd], &QPushButton::clicked, this, [this] { lineInsert(lastRow_); });
    connect(commands_[SaveCmd], &QPushButton::clicked, this, [this] { doFunctionKey(vbKeyF10); });
    connect(commands_[CloseCmd], &QPushButton::clicked, this, [this] { close(); });
    return w;
}

